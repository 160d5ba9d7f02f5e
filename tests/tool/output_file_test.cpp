// SPDX-License-Identifier: Apache-2.0
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <functional>
#include <optional>
#include <set>
#include <thread>

#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

using Names = std::set<std::string>;

const std::string kOld = "what was there before\n";
const std::string kDocument = transactionsWith("<STMTTRN><DTPOSTED>20240102<TRNAMT>1<NAME>Shop</STMTTRN>");
const std::string kBroken = "<OFX></B></OFX>";

Names namesIn(const TemporaryFolder& folder) {
    Names names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        names.insert(entry.path().filename());
    return names;
}

unsigned modeOf(const std::string& path) {
    struct stat status = {};
    REQUIRE(::stat(path.c_str(), &status) == 0);
    return status.st_mode & 07777U;
}

Finished toolIn(const TemporaryFolder& folder, std::vector<std::string> arguments,
                const std::string& input = {}) {
    Command command = toolCommand(std::move(arguments));
    command.directory = folder.path();
    command.input = input;
    return run(command);
}

/// Runs a shell's command line in a folder; $TOOL in it is the tool.
Finished shell(const TemporaryFolder& folder, const std::string& line) {
    return run({{"/bin/sh", "-c", line}, "", {{"TOOL", BRACKWELL_TOOL}}, folder.path()});
}

/// Waits until something is so; false when it is not within ten seconds.
bool becomesTrue(const std::function<bool()>& isSo) {
    using namespace std::chrono_literals;
    for (int i = 0; i < 1000; ++i) {
        if (isSo()) return true;
        std::this_thread::sleep_for(10ms);
    }
    return false;
}

/// How many bytes the unfinished output in a folder has; nothing when there is none.
std::optional<std::uintmax_t> unfinishedSize(const TemporaryFolder& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        if (entry.path().filename().string().starts_with(".brackwell-")) return entry.file_size();
    return std::nullopt;
}

/// A document whose rows do not fit into what is written at once.
std::string largeDocument() {
    std::string transactions;
    for (int i = 0; i < 3000; ++i)
        transactions += "<STMTTRN><TRNAMT>1<NAME>A name of some length that fills the buffer</STMTTRN>";
    return transactionsWith(transactions);
}

/// A program that makes a command the command of somebody with no more rights than others. Empty for tests
/// that have no more themselves.
std::optional<std::vector<std::string>> withoutPrivileges() {
    if (::geteuid() != 0) return std::vector<std::string>{};
    const std::vector<std::string> prefix{"/usr/bin/setpriv", "--reuid=65534", "--regid=65534",
                                          "--clear-groups"};
    std::vector<std::string> trial = prefix;
    trial.insert(trial.end(), {BRACKWELL_TOOL, "--version"});
    if (run({trial}).status == 0) return prefix;
    MESSAGE("skipped: root may write everywhere, and nobody else may run the tool here");
    return std::nullopt;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// What arrives

TEST_CASE("an output file is readable by its owner only, whatever it replaces") {
    for (const char* mask : {"000", "022", "077"}) {
        CAPTURE(mask);
        const TemporaryFolder folder;
        folder.file("in.ofx", kDocument);
        ::chmod(folder.file("old.csv", kOld).c_str(), 0666);
        for (const char* name : {"new.csv", "old.csv"}) {
            CAPTURE(name);
            const Finished finished =
                shell(folder, "umask " + std::string(mask) + "; \"$TOOL\" csv in.ofx -o " + name);
            CHECK(finished.status == 0);
            CHECK(finished.error == "");
            CHECK(modeOf(folder.path(name)) == 0600);
            CHECK(folder.read(name) == toolIn(folder, {"csv", "in.ofx"}).output);
        }
    }
}

TEST_CASE("a symbolic link stays a link, and what it leads to is replaced") {
    const TemporaryFolder folder;
    const TemporaryFolder other;
    folder.file("in.ofx", kDocument);
    other.file("target", kOld);
    std::filesystem::create_symlink(other.path("target"), folder.path("first"));
    std::filesystem::create_symlink("first", folder.path("second"));
    std::filesystem::create_symlink(other.path("none yet"), folder.path("dangling"));
    struct Row {
        std::string link, target;
    };
    for (const Row& row : {Row{"second", "target"}, Row{"dangling", "none yet"}}) {
        CAPTURE(row.link);
        CHECK(toolIn(folder, {"json", "in.ofx", "-o", row.link}).status == 0);
        CHECK(std::filesystem::is_symlink(folder.path(row.link)));
        CHECK(std::filesystem::is_symlink(folder.path("first")));
        CHECK(Json::parse(other.read(row.target)).contains("responses"));
    }
    CHECK(namesIn(other) == Names{"target", "none yet"});
    std::filesystem::create_symlink("circle", folder.path("circle"));
    CHECK(toolIn(folder, {"json", "in.ofx", "-o", "circle"}).error ==
          "circle: Too many levels of symbolic links\n");
}

TEST_CASE("a hard link to the old file keeps the old file") {
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    std::filesystem::create_hard_link(folder.file("old.json", kOld), folder.path("kept.json"));
    CHECK(toolIn(folder, {"json", "in.ofx", "-o", "old.json"}).status == 0);
    CHECK(folder.read("kept.json") == kOld);
    CHECK(Json::parse(folder.read("old.json")).contains("responses"));
}

TEST_CASE("devices, pipes and open descriptors are written directly") {
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    const std::string csv = toolIn(folder, {"csv", "in.ofx"}).output;
    REQUIRE(::mkfifo(folder.path("pipe").c_str(), 0600) == 0);
    struct Row {
        std::string line, output;
    };
    for (const Row& row : std::vector<Row>{
             {"\"$TOOL\" csv in.ofx -o /dev/null && test -c /dev/null", ""},
             {"\"$TOOL\" csv in.ofx -o pipe & cat pipe", csv},
             {"\"$TOOL\" csv in.ofx -o /dev/stdout | cat", csv},
             {"echo a; \"$TOOL\" csv in.ofx -o /dev/stdout; echo z", "a\n" + csv + "z\n"},
             {"{ echo a; \"$TOOL\" csv in.ofx -o /dev/stdout; echo z; } >out; cat out; rm out",
              "a\n" + csv + "z\n"},
             {"echo a >out; \"$TOOL\" csv in.ofx -o /dev/stdout >>out; cat out; rm out", "a\n" + csv},
             {"{ echo a >&3; \"$TOOL\" csv in.ofx -o /dev/fd/3; echo z >&3; } 3>out; cat out; rm out",
              "a\n" + csv + "z\n"},
         }) {
        CAPTURE(row.line);
        const Finished finished = shell(folder, row.line);
        CHECK(finished.output == row.output);
        CHECK(finished.error == "");
        CHECK(namesIn(folder) == Names{"in.ofx", "pipe"});
    }
}

TEST_CASE("a descriptor of another process is only added to") {
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    const Finished finished = shell(
        folder, "exec 3>out; echo a >&3; sh -c '\"$TOOL\" csv in.ofx -o /proc/'$$'/fd/3 3>&-'; cat out");
    CHECK(finished.output == "a\n" + toolIn(folder, {"csv", "in.ofx"}).output);
    CHECK(finished.error == "");
}

TEST_CASE("every command that writes has --output and --force") {
    for (const std::string command :
         {"show", "json", "csv", "report", "accounts", "duplicates", "tree", "pretty", "repair", "request"}) {
        CAPTURE(command);
        const TemporaryFolder folder;
        folder.file("old", kDocument);
        std::vector<std::string> arguments{command, command == "request" ? "accounts" : "-", "-o", "old"};
        CHECK(toolIn(folder, arguments, kDocument).status == 2);
        CHECK(folder.read("old") == kDocument);
        arguments.emplace_back("--force");
        const Finished finished = toolIn(folder, arguments, kDocument);
        CHECK(finished.status == 0);
        CHECK(finished.output == "");
        CHECK(finished.error == "");
        CHECK(namesIn(folder) == Names{"old"});
        CHECK((folder.read("old") == kDocument) == (command == "repair"));
    }
}

TEST_CASE("help goes to standard output, whatever --output says") {
    const TemporaryFolder folder;
    folder.file("old", kOld);
    const Finished finished = toolIn(folder, {"csv", "-o", "old", "--help"});
    CHECK(finished.status == 0);
    CHECK(contains(finished.output, "--output"));
    CHECK(folder.read("old") == kOld);
}

// ---------------------------------------------------------------------------------------------
// What stays

TEST_CASE("what was there before stays when no document could be read") {
    for (const std::string command :
         {"show", "json", "csv", "report", "accounts", "duplicates", "tree", "pretty", "repair"}) {
        const bool takesSeveral = command != "tree" && command != "pretty" && command != "repair";
        std::vector<std::vector<std::string>> inputs{{"missing.ofx"}, {"bytes"}};
        if (command != "repair") inputs.push_back({"broken.ofx"});
        if (takesSeveral) inputs.push_back({"missing.ofx", "broken.ofx"});
        for (const auto& files : inputs)
            for (const std::string name : {"old", "new"}) {
                const TemporaryFolder folder;
                folder.file("broken.ofx", kBroken);
                folder.file("bytes", "\xFF\xFE<");
                folder.file("old", kOld);
                std::vector<std::string> arguments{command, "-o", name};
                if (command != "repair") arguments.emplace_back("--as-is");
                arguments.insert(arguments.end(), files.begin(), files.end());
                const std::string line = Json(arguments).dump();
                CAPTURE(line);
                const Finished finished = toolIn(folder, arguments);
                CHECK(finished.status == 1);
                CHECK(finished.output == "");
                CHECK(finished.error.ends_with("\n" + name + ": not written, since no document was read\n"));
                CHECK(folder.read("old") == kOld);
                CHECK(namesIn(folder) == Names{"broken.ofx", "bytes", "old"});
            }
    }
}

TEST_CASE("what could be read is written, with status 1 for the rest") {
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    folder.file("old.csv", kOld);
    const Finished finished = toolIn(folder, {"csv", "missing.ofx", "in.ofx", "-o", "old.csv"});
    CHECK(finished.status == 1);
    CHECK(finished.error == "missing.ofx: The file at missing.ofx was not found.\n");
    CHECK(folder.read("old.csv") == toolIn(folder, {"csv", "in.ofx"}).output);
}

TEST_CASE("a tree is written when it tells something of a document that does not parse") {
    const TemporaryFolder folder;
    folder.file("header.ofx", "OFXHEADER:100\n\n" + kBroken);
    folder.file("no.ofx", "Dear customer,");
    CHECK(toolIn(folder, {"tree", "--as-is", "header.ofx", "-o", "header.json"}).status == 1);
    CHECK(Json::parse(folder.read("header.json"))["header"]["OFXHEADER"] == "100");
    CHECK(toolIn(folder, {"tree", "no.ofx", "-o", "no.json"}).status == 0);
    CHECK(Json::parse(folder.read("no.json"))["data"].is_null());
}

TEST_CASE("a file that may not become larger is not written, and the old one stays") {
    const TemporaryFolder folder;
    folder.file("in.ofx", largeDocument());
    folder.file("old.csv", kOld);
    const Finished finished = shell(folder, "ulimit -f 8; exec \"$TOOL\" csv in.ofx -o old.csv");
    CHECK(finished.status == 1);
    CHECK(finished.error == "old.csv: File too large\n");
    CHECK(folder.read("old.csv") == kOld);
    CHECK(namesIn(folder) == Names{"in.ofx", "old.csv"});
}

TEST_CASE("a full disk leaves the old file, and nothing else") {
    const TemporaryFolder folder;
    folder.file("in.ofx", largeDocument());
    std::filesystem::create_directory(folder.path("disk"));
    const std::string mount = "mount -t tmpfs -o size=128k none disk";
    const std::vector<std::string> program{"/usr/bin/unshare", "--user",  "--map-root-user",
                                           "--mount",          "/bin/sh", "-c"};
    const auto onSmallDisk = [&](const std::string& line) {
        std::vector<std::string> arguments = program;
        arguments.push_back(mount + " && " + line);
        return run({arguments, "", {{"TOOL", BRACKWELL_TOOL}}, folder.path()});
    };
    if (!std::filesystem::exists(program.front()) || onSmallDisk("true").status != 0) {
        MESSAGE("skipped: no small disk can be mounted here");
        return;
    }
    const Finished full = onSmallDisk(
        "echo before >disk/old; \"$TOOL\" csv in.ofx -o disk/old; echo $?; cat disk/old; ls -A disk");
    CHECK(full.output == "1\nbefore\nold\n");
    CHECK(full.error == "disk/old: No space left on device\n");
    // A result that fits is written where the old file alone fills half of the disk.
    const Finished fits = onSmallDisk(
        "head -c 60000 in.ofx >disk/old; \"$TOOL\" accounts in.ofx -o disk/old --force; echo $?; ls -A disk");
    CHECK(fits.output == "0\nold\n");
    CHECK(fits.error == "");
}

TEST_CASE("a device that is full is status 1, and stays a device") {
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    std::filesystem::create_symlink("/dev/full", folder.path("full"));
    const Finished finished = toolIn(folder, {"csv", "in.ofx", "-o", "full"});
    CHECK(finished.status == 1);
    CHECK(finished.error == "full: No space left on device\n");
    CHECK(std::filesystem::is_symlink(folder.path("full")));
    CHECK(namesIn(folder) == Names{"full", "in.ofx"});
}

TEST_CASE("memory that does not suffice for a document leaves the others to be written") {
    // The shell limits the memory, so that the first document fits and the second does not.
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    folder.file("old.csv", kOld);
    const Finished finished =
        shell(folder, "ulimit -v 1000000; exec \"$TOOL\" csv in.ofx /dev/zero -o old.csv");
    if (contains(finished.error, "Sanitizer")) {
        MESSAGE("skipped: sanitizers reserve more memory than this test allows, and do not start");
        return;
    }
    CHECK(finished.status == 1);
    CHECK(finished.error == "/dev/zero: There is not enough memory for this document.\n");
    CHECK(folder.read("old.csv") == toolIn(folder, {"csv", "in.ofx"}).output);
}

TEST_CASE("a folder that may not be written, and a file that is protected, stay as they are") {
    const auto prefix = withoutPrivileges();
    if (!prefix) return;
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    for (const char* name : {"old.csv", "protected.csv"}) {
        folder.file(name, kOld);
        if (::geteuid() == 0) CHECK(::chown(folder.path(name).c_str(), 65534, 65534) == 0);
    }
    ::chmod(folder.path("in.ofx").c_str(), 0644);
    ::chmod(folder.path("protected.csv").c_str(), 0400);
    struct Row {
        std::string name, error;
        unsigned folderMode;
    };
    const std::string inFolder = "no file can be made in its folder: Permission denied\n";
    for (const Row& row : std::vector<Row>{{"old.csv", "old.csv: " + inFolder, 0555},
                                           {"new.csv", "new.csv: " + inFolder, 0555},
                                           {"protected.csv", "protected.csv: Permission denied\n", 0777}}) {
        CAPTURE(row.name);
        ::chmod(folder.path().c_str(), row.folderMode);
        std::vector<std::string> arguments = *prefix;
        arguments.insert(arguments.end(), {BRACKWELL_TOOL, "csv", "in.ofx", "-o", row.name});
        const Finished finished = run({arguments, "", {}, folder.path()});
        CHECK(finished.status == 1);
        CHECK(finished.error == row.error);
    }
    ::chmod(folder.path().c_str(), 0700);
    CHECK(namesIn(folder) == Names{"in.ofx", "old.csv", "protected.csv"});
    CHECK(folder.read("old.csv") == kOld);
    CHECK(folder.read("protected.csv") == kOld);
}

// ---------------------------------------------------------------------------------------------
// Interruption

TEST_CASE("a signal that ends the tool leaves the old file, and nothing else") {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGKILL})
        for (const bool hasWritten : {false, true}) {
            CAPTURE(signal);
            CAPTURE(hasWritten);
            const TemporaryFolder folder;
            folder.file("in.ofx", largeDocument());
            folder.file("old.csv", kOld);
            Command command = toolCommand({"csv", "-o", "old.csv"});
            if (hasWritten) command.arguments.emplace_back("in.ofx");
            command.arguments.emplace_back("-");
            command.directory = folder.path();
            Waiting waiting(command);
            CHECK(becomesTrue([&] {
                return unfinishedSize(folder).value_or(0) >= (hasWritten ? 65536 : 0) &&
                       unfinishedSize(folder).has_value();
            }));
            waiting.send(signal);
            const Finished finished = waiting.finish();
            CHECK(finished.signal == signal);
            CHECK(folder.read("old.csv") == kOld);
            // What cannot be caught leaves the file under its own name.
            CHECK(unfinishedSize(folder).has_value() == (signal == SIGKILL));
        }
}

TEST_CASE("a signal that the tool was started to ignore does not end it") {
    const TemporaryFolder folder;
    folder.file("old.csv", kOld);
    Command command{{"/bin/sh", "-c", "trap '' HUP; exec \"$0\" csv - -o old.csv", BRACKWELL_TOOL}};
    command.directory = folder.path();
    command.input = kDocument;
    Waiting waiting(command);
    CHECK(becomesTrue([&] { return unfinishedSize(folder).has_value(); }));
    waiting.send(SIGHUP);
    CHECK(waiting.finish().status == 0);
    CHECK(contains(folder.read("old.csv"), "Shop"));
    CHECK(namesIn(folder) == Names{"old.csv"});
}

TEST_CASE("a document that comes into being while the tool reads is not replaced") {
    for (const bool isForced : {false, true}) {
        CAPTURE(isForced);
        const TemporaryFolder folder;
        Command command = toolCommand({"csv", "-", "-o", "new"});
        if (isForced) command.arguments.emplace_back("--force");
        command.directory = folder.path();
        command.input = kDocument;
        Waiting waiting(command);
        CHECK(becomesTrue([&] { return unfinishedSize(folder).has_value(); }));
        folder.file("new", kDocument);
        const Finished finished = waiting.finish();
        CHECK(finished.status == (isForced ? 0 : 1));
        CHECK(contains(finished.error, "new: begins like an OFX document") != isForced);
        CHECK((folder.read("new") == kDocument) != isForced);
        CHECK(namesIn(folder) == Names{"new"});
    }
}

// ---------------------------------------------------------------------------------------------
// Documents

TEST_CASE("a file that begins like an OFX document is replaced with --force only") {
    const auto wide = [](const std::string& text, std::size_t width, bool isBigEndian) {
        std::string bytes;
        const std::string zeros(width - 1, '\0');
        for (const char c : text) bytes += isBigEndian ? zeros + c : c + zeros;
        return bytes;
    };
    using namespace std::string_literals;
    for (const std::string& bytes : std::vector<std::string>{kDocument,
                                                             kBroken,
                                                             "<OFX>",
                                                             "<ofx>\n",
                                                             "OFXHEADER:100",
                                                             "ofxheader:100\r\n",
                                                             "<?xml version=\"1.0\"?>",
                                                             "<?XML?>",
                                                             "<?OFX OFXHEADER=\"200\"?>",
                                                             "<?ofx ?>",
                                                             " \r\n\t\v\fOFXHEADER:100",
                                                             "\u00A0\u3000\u2003<OFX>",
                                                             "\xA0\x85<OFX>",
                                                             "\xEF\xBB\xBF<OFX>",
                                                             "\xEF\xBB\xBF \n<OFX>",
                                                             "\xBF\xBB\xBF<OFX>",
                                                             "\xFF\xFE<OFX>",
                                                             "\xFE\xFF" + wide("<OFX>", 2, true),
                                                             "\xFF\xFE" + wide("\n <ofx>", 2, false),
                                                             wide("OFXHEADER:100", 2, true),
                                                             wide("OFXHEADER:100", 2, false),
                                                             "\x00\x00\xFE\xFF"s + wide("<OFX>", 4, true),
                                                             "\xFF\xFE\x00\x00"s + wide("<OFX>", 4, false),
                                                             wide("<?xml", 4, true),
                                                             wide("<?xml", 4, false),
                                                             std::string(60'000, ' ') + "<OFX>",
                                                             std::string(65'530, ' ') + "OFXHEADER:100",
                                                             std::string(1'000'000, '\n') + "<OFX>"}) {
        const std::string beginning =
            Json(bytes.substr(0, 40)).dump(-1, ' ', true, Json::error_handler_t::replace);
        CAPTURE(beginning);
        const TemporaryFolder folder;
        folder.file("july", bytes);
        const Finished refused = toolIn(folder, {"csv", "-", "-o", "july"}, kDocument);
        CHECK(refused.status == 2);
        CHECK(refused.output == "");
        CHECK(
            refused.error ==
            "--output: july begins like an OFX document, which would be lost; give --output another name, or "
            "replace the document with --force\nRun with --help for more information.\n");
        CHECK(folder.read("july") == bytes);
        CHECK(toolIn(folder, {"csv", "-", "-o", "july", "--force"}, kDocument).status == 0);
        CHECK(contains(folder.read("july"), "Shop"));
        CHECK(namesIn(folder) == Names{"july"});
    }
}

TEST_CASE("every example document is kept") {
    for (const auto& entry : std::filesystem::directory_iterator(examplePath(""))) {
        if (entry.path().extension() != ".ofx") continue;
        CAPTURE(entry.path().string());
        const TemporaryFolder folder;
        std::filesystem::copy_file(entry.path(), folder.path("july.ofx"));
        CHECK(toolIn(folder, {"csv", "-", "-o", "july.ofx"}, kDocument).status == 2);
        CHECK(run({{"/usr/bin/cmp", entry.path(), folder.path("july.ofx")}}).status == 0);
    }
}

TEST_CASE("other files are replaced without --force") {
    using namespace std::string_literals;
    for (const std::string& bytes : std::vector<std::string>{
             "", " ", "O", "OFX", "<OFX", "<OF", "Dear customer,\n<OFX>", "{\"OFX\": {}}", "file,\"<OFX>\"",
             "<!DOCTYPE html>", "<html>", "OFXHEADER", "\xEF\xBB\xBF", "\xFF\xFE", "\x00<OFX>"s,
             std::string(1'000'000, 'x'), "\xFF\xFEO"}) {
        const std::string beginning =
            Json(bytes.substr(0, 40)).dump(-1, ' ', true, Json::error_handler_t::replace);
        CAPTURE(beginning);
        const TemporaryFolder folder;
        folder.file("old", bytes);
        CHECK(toolIn(folder, {"csv", "-", "-o", "old"}, kDocument).status == 0);
        CHECK(contains(folder.read("old"), "Shop"));
    }
}

TEST_CASE("names that a shell puts after -o destroy nothing") {
    const TemporaryFolder folder;
    for (const char* name : {"april.ofx", "july.ofx", "june.ofx"}) folder.file(name, kDocument);
    for (const char* line :
         {"exec \"$TOOL\" csv -o *.ofx", "exec \"$TOOL\" csv --output *.ofx",
          "exec \"$TOOL\" csv -o april.ofx july.ofx -o june.ofx", "exec \"$TOOL\" csv july.ofx -o",
          "exec \"$TOOL\" csv july.ofx -o ''", "exec \"$TOOL\" csv july.ofx --output=a --output=b"}) {
        CAPTURE(line);
        const Finished finished = shell(folder, line);
        CHECK(finished.status == 2);
        CHECK(finished.output == "");
        CHECK(contains(finished.error, "output"));
        CHECK(namesIn(folder) == Names{"april.ofx", "july.ofx", "june.ofx"});
        for (const char* name : {"april.ofx", "july.ofx", "june.ofx"}) CHECK(folder.read(name) == kDocument);
    }
}

TEST_CASE("an input is never the output under another name, but where a repair is forced") {
    const TemporaryFolder folder;
    folder.file("a.ofx", kDocument);
    folder.file("text", "text before a document\n" + kBroken);
    std::filesystem::create_hard_link(folder.path("a.ofx"), folder.path("hard"));
    std::filesystem::create_symlink("a.ofx", folder.path("soft"));
    std::filesystem::create_directory_symlink(".", folder.path("here"));
    for (const std::string command : {"csv", "pretty", "repair"})
        for (const std::string arguments :
             {"a.ofx -o a.ofx", "a.ofx -o ./a.ofx", "a.ofx -o hard", "a.ofx -o soft", "soft -o a.ofx",
              "a.ofx -o here/a.ofx", "a.ofx -o \"$PWD/a.ofx\"", "- -o a.ofx <a.ofx",
              "/dev/stdin -o a.ofx <a.ofx", "/dev/fd/3 -o a.ofx 3<a.ofx", "a.ofx -o /dev/fd/3 3>>a.ofx",
              "text -o text"})
            for (const std::string force : {"", "--force "}) {
                if (command == "repair" && force != "") continue;
                const std::string line = "\"$TOOL\" " + command + " " + force + arguments;
                CAPTURE(line);
                const Finished finished = shell(folder, line);
                CHECK(finished.status == 2);
                CHECK(contains(finished.error, "is also a file to be read; give --output another name"));
                CHECK(contains(finished.error, "--force") == (command == "repair"));
                CHECK(folder.read("a.ofx") == kDocument);
            }
}

TEST_CASE("repair --force puts a document right in its place") {
    const TemporaryFolder folder;
    const std::string broken = version1("<STMTTRN><NAME>x</STMTRN>");
    for (const char* input : {"a.ofx", "-"}) {
        CAPTURE(input);
        folder.file("a.ofx", broken);
        const Finished plain = toolIn(folder, {"repair", "a.ofx"});
        CHECK(shell(folder, "\"$TOOL\" repair --force -o a.ofx " + std::string(input) + " <a.ofx").status ==
              0);
        CHECK(folder.read("a.ofx") == plain.output);
        CHECK(folder.read("a.ofx") != broken);
        CHECK(toolIn(folder, {"show", "a.ofx"}).status == 0);
    }
    const std::string hopeless = "OFXHEADER:100\n\nDear customer, \xE9\x81";
    folder.file("b.ofx", hopeless);
    const Finished finished =
        toolIn(folder, {"repair", "--encoding", "UTF-8", "--force", "-o", "b.ofx", "b.ofx"});
    CHECK(finished.status == 1);
    CHECK(folder.read("b.ofx") == hopeless);
    CHECK(namesIn(folder) == Names{"a.ofx", "b.ofx"});
}
