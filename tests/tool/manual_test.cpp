// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <set>

#include "tool/commands.h"

using namespace brackwell::tests;

namespace {

using Names = std::set<std::string>;

std::string sourceText(const std::string& name) {
    std::ifstream stream(std::string(BRACKWELL_SOURCE_DIR) + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool isNameCharacter(char c) { return (c >= 'a' && c <= 'z') || c == '-'; }

/// What of a text begins with a prefix and goes on with small letters and hyphens; without the prefix.
Names namesBehind(const std::string& prefix, const std::string& text) {
    Names names;
    for (std::size_t at = text.find(prefix); at != text.npos; at = text.find(prefix, at + 1)) {
        const std::size_t begin = at + prefix.size();
        const auto end =
            std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(), isNameCharacter);
        names.insert(std::string(text.begin() + static_cast<std::ptrdiff_t>(begin), end));
    }
    names.erase("");
    return names;
}

/// The commands that the program's help lists.
Names commandsInHelp() {
    const std::vector<std::string> names = allCommands();
    return {names.begin(), names.end()};
}

/// The long options that a help lists.
Names optionsInHelp(std::vector<std::string> arguments) {
    arguments.emplace_back("--help");
    Names options;
    for (const std::string& line : linesOf(tool(arguments).output)) {
        if (!line.starts_with("  -")) continue;
        const Names names = namesBehind("--", line.substr(0, 32));
        options.insert(names.begin(), names.end());
    }
    return options;
}

/// The options of the program and all of its commands.
Names allOptions() {
    Names all = optionsInHelp({});
    for (const std::string& command : commandsInHelp()) all.merge(optionsInHelp({command}));
    return all;
}

/// What bash offers for the last of these words.
Names completed(const std::vector<std::string>& words, const std::string& folder = "/") {
    std::vector<std::string> arguments{
        "/bin/bash",
        "-c",
        "source \"$1\" && shift && COMP_WORDS=(\"$@\") && COMP_CWORD=$(($# - 1)) && _brackwell && "
        "printf '%s\\n' \"${COMPREPLY[@]}\"",
        "bash",
        std::string(BRACKWELL_SOURCE_DIR) + "/tool/completion/brackwell.bash",
        "brackwell"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    const Finished finished = run({arguments, "", {}, folder});
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    const std::vector<std::string> lines = linesOf(finished.output);
    Names names(lines.begin(), lines.end());
    names.erase("");
    return names;
}

/// What zsh offers at the end of a command line.
Names offeredByZsh(const std::string& line, const std::string& folder = "/") {
    const std::string source = BRACKWELL_SOURCE_DIR;
    const Finished finished =
        run({{"/usr/bin/zsh", "-f", source + "/tests/tool/complete.zsh", source + "/tool/completion", line},
             "",
             {},
             folder});
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    const std::vector<std::string> lines = linesOf(finished.output);
    return {lines.begin(), lines.end()};
}

/// What fish offers at the end of a command line, without what it says of it.
Names offeredByFish(const std::string& line, const std::string& folder = "/") {
    const TemporaryFolder home;
    const std::string completion = std::string(BRACKWELL_SOURCE_DIR) + "/tool/completion/brackwell.fish";
    const Finished finished = run(
        {{"/usr/bin/fish", "--no-config", "-c", "source $argv[1]; complete -C $argv[2]", completion, line},
         "",
         {{"HOME", home.path()}},
         folder});
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    Names names;
    for (const std::string& offer : linesOf(finished.output)) {
        std::string name = offer.substr(0, offer.find('\t'));
        if (name.ends_with('=')) name.pop_back();
        names.insert(name);
    }
    return names;
}

/// False on a machine without this program; ctest shows the message.
bool hasProgram(const std::string& path) {
    if (std::filesystem::exists(path)) return true;
    MESSAGE("skipped: there is no ", path, " here");
    return false;
}

struct Complaint {
    std::vector<std::string> arguments;
    std::string input;
    std::string text;  ///< of the message; what differs from time to time is left out
};

const Complaint kComplaints[] = {
    {{"shoe"}, "", "unknown command"},
    {{"show"}, "", "FILE is required"},
    {{"show", "-", "-"}, "", "standard input can be read only once"},
    {{"show", "--encoding", "klingon", "-"}, "", "unknown encoding"},
    {{"show", "--since", "2024-13-01", "-"}, "", "not a date"},
    {{"show", "--since", "2024-02-01", "--until", "2024-01-31", "-"}, "", " is before "},
    {{"show", "--account", "", "-"}, "", "the number is empty"},
    {{"show", "--search", " ", "-"}, "", "the search text is empty"},
    {{"csv", "--date-format", "", "-"}, "", "the pattern is empty"},
    {{"csv", "--decimal-separator", "ab", "-"}, "", "not a single character"},
    {{"csv", "--decimal-separator", ",", "--grouping-separator", ",", "-"},
     "",
     "--grouping-separator: is the same as --decimal-separator"},
    {{"csv", "--output", examplePath("card.ofx"), examplePath("card.ofx")}, "", " is also an input file"},
    {{"csv", "--output", examplePath("card.ofx"), "-"}, "", " has the name of an OFX document"},
    {{"csv", "--output", "", "-"}, "", "the name is empty"},
    {{"csv", "--output", std::filesystem::temp_directory_path() / "not made", "-"},
     "text",
     "not written, since no document was read"},
    {{"csv", "--columns", "payee", "-"}, "", "no column of this table is called "},
    {{"csv", "--delimiter", "ab", "-"}, "", "neither a single character nor tab"},
    {{"csv", "--kind", "positions", "--unique", "-"},
     "",
     "--unique: is for tables of bank transactions only"},
    {{"convert", "--unless", "/no such file", "-"}, "", "The journal at "},
    {{"convert", "-"},
     statementWith("<BANKTRANLIST><DTSTART>20240101<DTEND>20240131</BANKTRANLIST><LEDGERBAL><BALAMT>1<DTASOF>"
                   "20240301</LEDGERBAL>"),
     ", is only a comment: "},
    {{"convert", "-"},
     transactionsWith("<STMTTRN><DTPOSTED>20240101<TRNAMT>1<FITID>1<CORRECTFITID>0</STMTTRN>"),
     "(correctionFITID in the journal), which stays as it is."},
    {{"request", "accounts", "--version", "x"}, "", "not a version"},
    {{"request", "accounts", "--routing", "service"},
     "",
     "--routing: is for profile requests only and has no effect here"},
    {{"csv", "--output", "/no such folder/file", "-"}, "<OFX></OFX>", "No such file or directory"},
    {{"show", "/no such file"}, "", " was not found."},
    {{"show", "/no such file", "-x.ofx"}, "", "was taken for an option, since it begins with a hyphen"},
    {{"show", std::string(BRACKWELL_SOURCE_DIR) + "/cmake"}, "", "There is no OFX document in this folder."},
    {{"show", std::string(BRACKWELL_SOURCE_DIR) + "/cmake"},
     "",
     " passed over (hidden, a link to a folder, or no OFX document): "},
    {{"show", "-"}, "", "no data to parse"},
    {{"show", "-"}, "\xE9", "Data is not OFX or unknown character encoding."},
    {{"show", "--as-is", "-"}, "<OFX></B></OFX>", "Found close tag <"},
    {{"show", "-"}, "text", "not an OFX document"},
    {{"show", "--as-is", "-"}, "OFXHEADER:100\n\n<ofx><a>1</a></ofx>", "tags are in lower case"},
    {{"show", "-"}, "<OFX></B></OFX>", "Repaired in "},
    {{"show", "-"}, "OFXHEADER:100\n\n<OFX>\xE9</OFX>", "read as windows-1252"},
    {{"repair", "-"}, "OFXHEADER:100\n\n<ofx></ofx>", " lower case changed to capitals"},
    {{"show", "-"}, transactionsWith("<STMTTRN><TRNAMT>1,50</STMTTRN>"), "not in OFX format"},
    {{"show", "--decimal-separator", ",", "-"},
     transactionsWith("<STMTTRN><TRNAMT>1.50</STMTTRN>"),
     "the given number format"},
    {{"show", "-"}, transactionsWith("<STMTTRN><DTPOSTED>soon</STMTTRN>"), "left out"},
};

}  // namespace

TEST_CASE("the manual page has the commands and options of the help, and no others") {
    const std::string manual = sourceText("docs/brackwell.1");
    CHECK(commandsInHelp().contains("show"));
    CHECK(namesBehind("\n.It Cm ", manual) == commandsInHelp());
    CHECK(namesBehind("\n.Nm\n.Cm ", manual) == commandsInHelp());
    CHECK(allOptions().contains("grouping-separator"));
    CHECK(namesBehind("Fl -", manual) == allOptions());
}

TEST_CASE("the page of errors has each message of the tool") {
    const std::string page = sourceText("docs/errors.md");
    for (const Complaint& complaint : kComplaints) {
        CAPTURE(complaint.text);
        CHECK(tool(complaint.arguments, complaint.input).error.find(complaint.text) != std::string::npos);
        CHECK(page.find(complaint.text) != std::string::npos);
    }
}

TEST_CASE("the completions are those that the script makes of the help") {
    if (!hasProgram("/bin/bash")) return;
    const std::string script = std::string(BRACKWELL_SOURCE_DIR) + "/script/completions";
    const Finished finished = run({{"/bin/bash", script, "--check", BRACKWELL_TOOL}});
    CHECK(finished.status == 0);
    CHECK(finished.output == "");
    CHECK(finished.error == "");
}

TEST_CASE("the script notices completions of another help") {
    if (!hasProgram("/bin/bash")) return;
    const TemporaryFolder folder;
    const std::string other =
        folder.file("tool", "#!/bin/sh\nexec \"$TOOL\" \"$@\" | sed s/--full/--whole/\n");
    std::filesystem::permissions(other, std::filesystem::perms::owner_all);
    const std::string script = std::string(BRACKWELL_SOURCE_DIR) + "/script/completions";
    const Finished finished = run({{"/bin/bash", script, "--check", other}, "", {{"TOOL", BRACKWELL_TOOL}}});
    CHECK(finished.status == 1);
    CHECK(contains(finished.output, "--whole"));
    CHECK(finished.error == "The completions are not as the tool's help is: script/completions\n");
}

TEST_CASE("bash completes commands, and the options of each command as its help has them") {
    if (!hasProgram("/bin/bash")) return;
    CHECK(completed({""}) == commandsInHelp());
    CHECK(completed({"ch"}) == Names{"check"});
    CHECK(completed({"re"}) == Names{"repair", "report", "request"});
    CHECK(completed({"--v"}) == Names{"--version"});
    for (const std::string& command : commandsInHelp()) {
        CAPTURE(command);
        Names wanted;
        for (const std::string& option : optionsInHelp({command})) wanted.insert("--" + option);
        CHECK(completed({command, "--"}) == wanted);
    }
}

TEST_CASE("bash completes values, files and kinds of requests") {
    if (!hasProgram("/bin/bash")) return;
    const TemporaryFolder folder;
    folder.file("july of 2024.ofx", "");
    folder.file("*.ofx", "");
    CHECK(completed({"show", "ju"}, folder.path()) == Names{"july of 2024.ofx"});
    CHECK(completed({"show", ""}, folder.path()) == Names{"july of 2024.ofx", "*.ofx"});
    CHECK(completed({"json", "--output", "ju"}, folder.path()) == Names{"july of 2024.ofx"});
    CHECK(completed({"show", "--sort", ""}, folder.path()) == Names{"date", "amount"});
    CHECK(completed({"show", "--sort", "="}) == Names{"date", "amount"});
    CHECK(completed({"show", "--sort", "=", "da"}) == Names{"date"});
    CHECK(completed({"json", "--output", "=", "ju"}, folder.path()) == Names{"july of 2024.ofx"});
    CHECK(completed({"show", "--search", "ju"}, folder.path()) == Names{});
    CHECK(completed({"tree", "--encoding", "UTF-32B"}) == Names{"UTF-32BE"});
    CHECK(completed({"request", ""}) == Names{"accounts", "profile"});
    CHECK(completed({"request", "--version", "21"}) == Names{"211"});
    CHECK(completed({"show", "--version", "ju"}, folder.path()) == Names{"july of 2024.ofx"});
    CHECK(completed({"anonymize", "--into", "ju"}, folder.path()) == Names{"july of 2024.ofx"});
}

TEST_CASE("bash completes files in the place of a command, and then what is for showing them") {
    if (!hasProgram("/bin/bash")) return;
    const TemporaryFolder folder;
    folder.file("july of 2024.ofx", "");
    folder.file("report.ofx", "");
    CHECK(completed({"ju"}, folder.path()) == Names{"july of 2024.ofx"});
    CHECK(completed({"rep"}, folder.path()) == Names{"repair", "report", "report.ofx"});
    CHECK(completed({""}, folder.path()) == commandsInHelp());
    CHECK(completed({"july.ofx", "ju"}, folder.path()) == Names{"july of 2024.ofx"});
    CHECK(completed({"july.ofx", "--"}) == completed({"show", "--"}));
    CHECK(completed({"july.ofx", "--sort", ""}) == Names{"date", "amount"});
}

TEST_CASE("zsh completes commands, and the options of each command as its help has them") {
    if (!hasProgram("/usr/bin/zsh")) return;
    CHECK(offeredByZsh("brackwell ") == commandsInHelp());
    CHECK(offeredByZsh("brackwell ch") == Names{"check"});
    CHECK(offeredByZsh("brackwell re") == Names{"repair", "report", "request"});
    CHECK(offeredByZsh("brackwell --v") == Names{"--version"});
    for (const std::string& command : commandsInHelp()) {
        CAPTURE(command);
        Names wanted;
        for (const std::string& option : optionsInHelp({command})) wanted.insert("--" + option);
        CHECK(offeredByZsh("brackwell " + command + " --") == wanted);
    }
}

TEST_CASE("zsh completes values, files and kinds of requests") {
    if (!hasProgram("/usr/bin/zsh")) return;
    const TemporaryFolder folder;
    folder.file("july of 2024.ofx", "");
    CHECK(offeredByZsh("brackwell show ju", folder.path()) == Names{"july\\ of\\ 2024.ofx"});
    CHECK(offeredByZsh("brackwell json --output ju", folder.path()) == Names{"july\\ of\\ 2024.ofx"});
    CHECK(offeredByZsh("brackwell show --sort ") == Names{"date", "amount"});
    CHECK(offeredByZsh("brackwell show --sort=da") == Names{"date"});
    CHECK(offeredByZsh("brackwell show --search ju", folder.path()) == Names{});
    CHECK(offeredByZsh("brackwell tree --encoding UTF-32B") == Names{"UTF-32BE"});
    CHECK(offeredByZsh("brackwell request ") == Names{"accounts", "profile"});
    CHECK(offeredByZsh("brackwell request --version=21") == Names{"211"});
}

TEST_CASE("zsh completes files in the place of a command, and then what is for showing them") {
    if (!hasProgram("/usr/bin/zsh")) return;
    const TemporaryFolder folder;
    folder.file("july of 2024.ofx", "");
    CHECK(offeredByZsh("brackwell ju", folder.path()) == Names{"july\\ of\\ 2024.ofx"});
    CHECK(offeredByZsh("brackwell ", folder.path()) == commandsInHelp());
    CHECK(offeredByZsh("brackwell july.ofx ju", folder.path()) == Names{"july\\ of\\ 2024.ofx"});
    CHECK(offeredByZsh("brackwell july.ofx --sort=da") == Names{"date"});
}

TEST_CASE("fish completes commands, and the options of each command as its help has them") {
    if (!hasProgram("/usr/bin/fish")) return;
    CHECK(offeredByFish("brackwell ") == commandsInHelp());
    CHECK(offeredByFish("brackwell re") == Names{"repair", "report", "request"});
    CHECK(offeredByFish("brackwell --v") == Names{"--version"});
    for (const std::string& command : commandsInHelp()) {
        CAPTURE(command);
        Names wanted;
        for (const std::string& option : optionsInHelp({command})) wanted.insert("--" + option);
        CHECK(offeredByFish("brackwell " + command + " --") == wanted);
    }
}

TEST_CASE("fish completes values, files, kinds of requests, and files in the place of a command") {
    if (!hasProgram("/usr/bin/fish")) return;
    const TemporaryFolder folder;
    folder.file("july.ofx", "");
    CHECK(offeredByFish("brackwell show ju", folder.path()) == Names{"july.ofx"});
    CHECK(offeredByFish("brackwell json --output ju", folder.path()) == Names{"july.ofx"});
    CHECK(offeredByFish("brackwell show --sort ") == Names{"date", "amount"});
    CHECK(offeredByFish("brackwell show --search ju", folder.path()) == Names{});
    CHECK(offeredByFish("brackwell tree --encoding UTF-32B") == Names{"UTF-32BE"});
    CHECK(offeredByFish("brackwell request ", folder.path()) == Names{"accounts", "profile"});
    CHECK(offeredByFish("brackwell ju", folder.path()) == Names{"july.ofx"});
    CHECK(offeredByFish("brackwell ", folder.path()) == commandsInHelp());
    CHECK(offeredByFish("brackwell july.ofx --sor") == Names{"--sort"});
}

TEST_CASE("values that are offered are values that are taken") {
    if (!hasProgram("/bin/bash")) return;
    for (const std::string& value : completed({"show", "--encoding", ""})) {
        CAPTURE(value);
        CHECK(tool({"tree", "--encoding", value, "-"}).error.find("unknown encoding") == std::string::npos);
    }
    for (const std::string& value : completed({"show", "--sort", ""}))
        CHECK(tool({"show", "--sort", value, examplePath("card.ofx")}).status == 0);
    for (const std::string& value : completed({"request", "--routing", ""}))
        CHECK(tool({"request", "profile", "--routing", value}).status == 0);
}

TEST_CASE("the manual page is formatted without a warning") {
    if (!hasProgram("/usr/bin/man") || !hasProgram("/usr/bin/groff")) return;
    const std::string page = std::string(BRACKWELL_SOURCE_DIR) + "/docs/brackwell.1";
    const Finished finished = run({{"/usr/bin/man", "--warnings", "-E", "UTF-8", "-l", page}});
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    CHECK(finished.output.find("brackwell") != std::string::npos);
}

TEST_CASE("mandoc has nothing against the manual page") {
    if (!hasProgram("/usr/bin/mandoc")) return;
    const std::string page = std::string(BRACKWELL_SOURCE_DIR) + "/docs/brackwell.1";
    const Finished finished = run({{"/usr/bin/mandoc", "-Tlint", "-Wwarning", page}});
    CHECK(finished.status == 0);
    CHECK(finished.output == "");
}
