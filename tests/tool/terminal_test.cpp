// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal.h"

#include <sstream>

using namespace brackwell::tests;

namespace {

const std::string kTwoTransactions = transactionsWith(
    "<STMTTRN><DTPOSTED>20240102<TRNAMT>-1.50<NAME>Shop</STMTTRN>"
    "<STMTTRN><DTPOSTED>20240102<TRNAMT>2<NAME>Pay</STMTTRN>");

}  // namespace

TEST_CASE("negative amounts are red on a terminal, and only there") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kTwoTransactions);
    CHECK(contains(onTerminal({"show", path}).output, "Shop    \x1b[31m-1.50\x1b[0m\r\n"));
    CHECK(contains(onTerminal({"show", path}).output, "Pay      2.00\r\n"));
    CHECK_FALSE(contains(tool({"show", path}).output, "\x1b"));
    CHECK_FALSE(contains(onTerminal({"show", path, "--output", folder.path("out")}).output, "\x1b"));
    CHECK_FALSE(contains(folder.read("out"), "\x1b"));
}

TEST_CASE("NO_COLOR and a simple terminal get no colour") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kTwoTransactions);
    CHECK_FALSE(contains(onTerminal({"show", path}, {{"NO_COLOR", "1"}}).output, "\x1b"));
    CHECK_FALSE(contains(onTerminal({"show", path}, {{"TERM", "dumb"}}).output, "\x1b"));
    CHECK(contains(onTerminal({"show", path}, {{"NO_COLOR", ""}}).output, "\x1b[31m"));
}

TEST_CASE("the page is as wide as the terminal, unless COLUMNS says otherwise") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path =
        folder.file("a.ofx", transactionsWith("<STMTTRN><DTPOSTED>20240102<TRNAMT>1<MEMO>" +
                                              std::string(500, 'm') + "</STMTTRN>"));
    const auto widest = [](const Finished& finished) {
        std::size_t width = 0;
        for (const std::string& line : linesOf(finished.output))
            if (line.starts_with("2024-")) width = line.size() - std::string("\u2026\r").size() + 1;
        return width;
    };
    CHECK(widest(onTerminal({"show", path}, {}, 60)) == 60);
    CHECK(widest(onTerminal({"show", path}, {}, 132)) == 132);
    CHECK(widest(onTerminal({"show", path}, {{"COLUMNS", "70"}}, 60)) == 70);
}

TEST_CASE("what a document says never reaches a terminal as a command") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", "<OFX><A>\x1b[2J\u009b</OFX>");
    CHECK(contains(onTerminal({"pretty", path}).output, "<A>␛[2J\uFFFD</A>\r\n"));
    const std::string broken = folder.file("b.ofx", "<OFX></\x1b[2J>");
    CHECK(contains(onTerminal({"json", "--as-is", broken}).output, "Found close tag </␛[2J> without"));
    // Into a file it is data, and as it stands.
    CHECK(contains(tool({"pretty", path}).output, "\x1b[2J"));
}

TEST_CASE("a progress line tells of work above two seconds on a terminal, and goes away") {
    if (!hasTerminals()) return;
    Running running(toolCommand({"show", "-"}));
    running.write("<OFX>");
    CHECK(running.shows("\rReading 5 bytes, 2 s: standard input\x1b[K"));
    running.write(std::string(2000, '\n'));
    CHECK(running.shows("\rReading 2 kB, 3 s: standard input\x1b[K"));
    const Finished finished = running.finish();
    CHECK(finished.status == 0);
    CHECK(contains(finished.output, "\x1b[K\r\x1b[K-: "));
    CHECK(finished.output.ends_with("The document has no responses.\r\n"));
}

TEST_CASE("the progress line counts the files, in every command") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kTwoTransactions);
    const std::string once = std::to_string(kTwoTransactions.size()) + " bytes, 2 s: standard input\x1b[K";
    const std::string twice =
        std::to_string(2 * kTwoTransactions.size()) + " bytes, 2 s: standard input\x1b[K";
    Running show(toolCommand({"show", path, "-", path, "--output", folder.path("out")}));
    Running convert(toolCommand({"convert", "-", path, path, "--output", folder.path("journal")}));
    Running anonymize(toolCommand({"anonymize", path, path, "-", "--into", folder.path("into")}));
    CHECK(show.shows("\rReading file 2 of 3, " + once));
    CHECK(convert.shows("\rReading file 1 of 3, 0 bytes, 2 s: standard input\x1b[K"));
    CHECK(anonymize.shows("\rReading file 3 of 3, " + twice));
}

TEST_CASE("a file that is no file of known size does not end the progress line") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kTwoTransactions);
    const std::string pipe = folder.path("pipe.ofx");
    REQUIRE(run({{"/bin/sh", "-c", "mkfifo \"$0\"", pipe}}).status == 0);
    Running waiting(toolCommand({"csv", path, pipe, "--output", folder.path("out")}));
    CHECK(
        waiting.shows("\rReading file 2 of 2, " + std::to_string(kTwoTransactions.size()) + " bytes, 2 s: "));
    CHECK(run({{"/bin/sh", "-c", "printf '<OFX>' > \"$0\"", pipe}}).status == 0);
    CHECK(waiting.finish().status == 0);
}

TEST_CASE("short work has no progress line") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kTwoTransactions);
    CHECK_FALSE(contains(onTerminal({"csv", path}).output, "Read"));
}

TEST_CASE("there is no progress line where no terminal is, or none is wanted, however long the work is") {
    const std::string slow = "(printf '<OFX>'; sleep 3) | \"$0\" show --quiet -";
    const Finished finished = run({{"/bin/sh", "-c", slow, BRACKWELL_TOOL}});
    CHECK(finished.output == "The document has no responses.\n");
    CHECK(finished.error == "");
    if (!hasTerminals()) return;
    const Finished quiet = runOnTerminal({{"/bin/sh", "-c", slow, BRACKWELL_TOOL}}, 80);
    CHECK(quiet.output == "The document has no responses.\r\n");
}

TEST_CASE("the progress line is erased before an error is said") {
    if (!hasTerminals()) return;
    Running running(toolCommand({"json", "--as-is", "-"}));
    running.write("<OFX></A>");
    CHECK(running.shows("Reading 9 bytes"));
    const Finished finished = running.finish();
    CHECK(finished.status == 1);
    CHECK(contains(finished.output, "\r\x1b[K-:1:6: Found close tag </A> without opening tag."));
}

TEST_CASE("the progress line is erased before a finding is said, and before the output") {
    if (!hasTerminals()) return;
    Running check(toolCommand({"check", "-"}));
    Running pretty(toolCommand({"pretty", "-"}));
    for (Running* running : {&check, &pretty}) {
        running->write("<OFX><A>1</A></OFX>");
        CHECK(running->shows("Reading 19 bytes"));
    }
    CHECK(contains(check.finish().output, "\r\x1b[K-: The document has no responses"));
    const std::string output = pretty.finish().output;
    const std::string text = output.substr(output.rfind("\x1b[K"));
    CHECK(contains(text, "<A>1</A>"));
    CHECK_FALSE(contains(text, "Reading"));
}

TEST_CASE("a pipe in which something stands may be that of a pager, and has the terminal for itself") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string small = folder.file("small.ofx", kTwoTransactions);
    std::string transactions;
    for (int i = 0; i < 2000; ++i) transactions += "<STMTTRN><TRNAMT>1<NAME>A shop somewhere</STMTTRN>";
    const std::string large = folder.file("large.ofx", transactionsWith(transactions));
    const std::string slow = "(sleep 3; printf '<OFX>') | \"$0\" csv \"$1\" - | cat >/dev/null";
    const auto shown = [&slow](const std::string& path) {
        return runOnTerminal({{"/bin/sh", "-c", slow, BRACKWELL_TOOL, path}}, 80).output;
    };
    CHECK(contains(shown(small), "\rReading file 2 of 2, "));
    CHECK_FALSE(contains(shown(large), "Reading"));
}

TEST_CASE("no command writes to a terminal what that might obey") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string commands = "\x1b[2J\x07\x7F\u009b1m\u202Ex\u2066y\u200F";
    folder.file("good", transactionsWith("<STMTTRN><DTPOSTED>20240102<TRNAMT>1<FITID>1<NAME>" + commands +
                                         "</NAME><MEMO>caf\u00E9</MEMO></STMTTRN>"));
    folder.file("bad", "<OFX><A>\n" + commands + "</" + commands + "></OFX>");
    folder.file("mended", "<OFX><NAME>" + commands + "<!-- " + commands + " --><A/></OFX>");
    const std::string oddName = folder.file("line\nbrackwell: all is well " + commands, "<OFX></B>");
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"show", folder.path("good")},
             {"json", folder.path("good")},
             {"csv", folder.path("good")},
             {"tree", folder.path("good")},
             {"pretty", folder.path("good")},
             {"repair", folder.path("good")},
             {"accounts", folder.path("good")},
             {"duplicates", folder.path("good"), folder.path("good")},
             {"report", folder.path("good")},
             {"json", folder.path("bad")},
             {"repair", folder.path("mended")},
             {"repair", "--diff", folder.path("mended")},
             {"show", oddName},
             {"show", folder.path("missing\n" + commands)},
             {"show", folder.path("good"), "--output", folder.path("missing/" + commands)},
             {commands},
             {"show", folder.path("good"), "--" + commands},
             {"show", folder.path("good"), "--encoding", commands},
         }) {
        const std::string line = Json(arguments).dump();
        CAPTURE(line);
        const std::string shown = onTerminal(arguments, {{"NO_COLOR", "1"}}, 400).output;
        CHECK(shown != "");
        for (const char* character : {"\x1b", "\x07", "\x7F", "\u009b", "\u202E", "\u2066", "\u200F"})
            CHECK_FALSE(contains(shown, character));
    }
    CHECK(contains(onTerminal({"json", folder.path("good")}).output,
                   R"(\u001b[2J\u0007\u007f\u009b1m\u202ex\u2066y\u200f)"));
    CHECK_FALSE(contains(onTerminal({"show", oddName}, {}, 400).output, "\nbrackwell: all is well"));
}

TEST_CASE("a page for a browser is not written to a terminal unless that is asked for") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kTwoTransactions);
    const Finished refused = onTerminal({"report", path});
    CHECK(refused.status == 2);
    CHECK(contains(refused.output, "with --output report.html"));
    CHECK_FALSE(contains(refused.output, "<html"));
    CHECK(contains(onTerminal({"report", path, "--output", "-"}).output, "<html"));
}

TEST_CASE("a help on a terminal parts no word, and leaves examples alone") {
    if (!hasTerminals()) return;
    const std::string whole = tool({"csv", "--help"}).output;
    for (const unsigned width : {60U, 80U, 200U}) {
        CAPTURE(width);
        const std::string shown =
            onTerminal({"csv", "--help"}, {}, static_cast<unsigned short>(width)).output;
        std::istringstream words(shown);
        std::istringstream expected(whole);
        std::string word;
        for (std::string other; expected >> other;) {
            REQUIRE(static_cast<bool>(words >> word));
            CHECK(word == other);
        }
        CHECK(contains(
            shown,
            "\n  brackwell csv --delimiter \";\" --decimal-mark , --unique Downloads --output year.csv\r\n"));
        for (const std::string& line : linesOf(shown))
            if (!line.starts_with("  brackwell")) CHECK(line.size() <= width + 1U);
    }
    // Where no room is left beside the options, it is as it always was.
    CHECK(std::ranges::count(onTerminal({"csv", "--help"}, {}, 40).output, '\n') ==
          std::ranges::count(whole, '\n'));
}

TEST_CASE("JSON on a terminal is the same JSON") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file(
        "a", transactionsWith(
                 "<STMTTRN><NAME>\"\\\x1b\u009b\u202E</NAME><MEMO>\u00E9桜\U0001F4DA</MEMO></STMTTRN>"));
    CHECK(Json::parse(onTerminal({"json", "-q", path}).output) == Json::parse(tool({"json", path}).output));
}

TEST_CASE("on a terminal of twenty columns no line is longer, but for what is never cut") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kTwoTransactions);
    const std::string broken = folder.file("b.ofx", "<OFX><A>a long text in a line</B></OFX>");
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"show", path}, {"accounts", path}, {"duplicates", path, path}}) {
        const std::string command = arguments.front();
        CAPTURE(command);
        const std::string output = onTerminal(arguments, {{"NO_COLOR", "1"}}, 20).output;
        CHECK(output != "");
        for (const std::string& line : linesOf(output))
            CHECK(line.size() <= 20 + std::string("\u2026\r").size() - 1);
    }
    // A date and an amount stay whole: half of an amount would be another amount.
    const std::string large = folder.file(
        "c.ofx", transactionsWith("<STMTTRN><DTPOSTED>20240102<TRNAMT>-12345678901234567890.55</STMTTRN>"));
    CHECK(contains(onTerminal({"show", large}, {{"NO_COLOR", "1"}}, 20).output,
                   "2024-01-02  -12345678901234567890.55\r\n"));
    const std::string error = onTerminal({"show", broken}, {}, 20).output;
    for (const std::string& line : linesOf(error))
        if (contains(line, " | ")) CHECK(line.size() <= 20 + 2 * std::string("\u2026").size() - 1);
}
