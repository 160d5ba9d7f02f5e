// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// False on a machine without terminals to run the tool on; ctest knows the message and counts the test
/// as skipped.
bool hasTerminals() {
    const std::string obstacle = obstacleToTerminals();
    if (!obstacle.empty()) MESSAGE("skipped: no pseudo terminal can be had here: ", obstacle);
    return obstacle.empty();
}

Finished onTerminal(std::vector<std::string> arguments, std::map<std::string, std::string> environment = {},
                    unsigned short columns = 80) {
    Command command = toolCommand(std::move(arguments));
    command.environment = std::move(environment);
    return runOnTerminal(command, columns);
}

const std::string kDocument = transactionsWith(
    "<STMTTRN><DTPOSTED>20240102<TRNAMT>-1.50<NAME>Shop</STMTTRN>"
    "<STMTTRN><DTPOSTED>20240102<TRNAMT>2<NAME>Pay</STMTTRN>");

}  // namespace

TEST_CASE("negative amounts are red on a terminal, and only there") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kDocument);
    CHECK(contains(onTerminal({"show", path}).output, "Shop    \x1b[31m-1.50\x1b[0m\r\n"));
    CHECK(contains(onTerminal({"show", path}).output, "Pay      2.00\r\n"));
    CHECK_FALSE(contains(tool({"show", path}).output, "\x1b"));
    CHECK_FALSE(contains(onTerminal({"show", path, "--output", folder.path("out")}).output, "\x1b"));
    CHECK_FALSE(contains(folder.read("out"), "\x1b"));
}

TEST_CASE("NO_COLOR and a simple terminal get no colour") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kDocument);
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
    CHECK(contains(onTerminal({"pretty", path}).output, "<A>␛[2J\uFFFD\r\n"));
    const std::string broken = folder.file("b.ofx", "<OFX></\x1b[2J>");
    CHECK(contains(onTerminal({"json", broken}).output, "Found close tag </␛[2J> without"));
    // Into a file it is data, and as it stands.
    CHECK(contains(tool({"pretty", path}).output, "\x1b[2J"));
}

TEST_CASE("a progress line tells of long work on a terminal, and goes away") {
    if (!hasTerminals()) return;
    Running running(toolCommand({"show", "-"}));
    running.write("<OFX>");
    CHECK(running.shows("Reading standard input 0."));
    CHECK(running.shows("Reading standard input 1."));
    const Finished finished = running.finish();
    CHECK(finished.status == 0);
    CHECK(finished.output.ends_with("\r\x1b[KThe document has no responses.\r\n"));
}

TEST_CASE("short work has no progress line") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kDocument);
    CHECK_FALSE(contains(onTerminal({"csv", path}).output, "Reading"));
}

TEST_CASE("work that no terminal sees has no progress line, however long it is") {
    Command slow{{"/bin/sh", "-c", "(printf '<OFX>'; sleep 1) | \"$0\" show -", BRACKWELL_TOOL}};
    const Finished finished = run(slow);
    CHECK(finished.output == "The document has no responses.\n");
    CHECK(finished.error == "");
}

TEST_CASE("the progress line is erased before an error is said") {
    if (!hasTerminals()) return;
    Running running(toolCommand({"json", "-"}));
    running.write("<OFX></A>");
    CHECK(running.shows("Reading standard input"));
    const Finished finished = running.finish();
    CHECK(finished.status == 1);
    CHECK(contains(finished.output, "\r\x1b[K-: Found close tag </A> without opening tag."));
}
