// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal.h"

using namespace brackwell::tests;

namespace {

const std::string kPurchase =
    transactionsWith("<STMTTRN><DTPOSTED>20240102<TRNAMT>-1.50<NAME>Shop</STMTTRN>");

/// A document whose page is larger than any pipe.
std::string longDocument() {
    std::string transactions;
    for (int i = 0; i < 5000; ++i)
        transactions +=
            "<STMTTRN><DTPOSTED>20240102<TRNAMT>-1.50<NAME>A shop with a name of some length</STMTTRN>";
    return transactionsWith(transactions);
}

/// Marks each line that it shows.
constexpr const char* kMarking = "sed 's/^/shown: /'";

}  // namespace

TEST_CASE("a pager that is named shows the page on a terminal, as wide and coloured as that") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kPurchase);
    for (const char* command : {"show", "accounts", "payees"}) {
        CAPTURE(command);
        const Finished finished = onTerminal({command, path}, {{"PAGER", kMarking}});
        CHECK(finished.status == 0);
        CHECK(finished.output != "");
        for (const std::string& line : linesOf(finished.output)) CHECK(line.starts_with("shown: "));
    }
    CHECK(contains(onTerminal({"show", path}, {{"PAGER", kMarking}}).output, "\x1b[31m-1.50\x1b[0m"));
}

TEST_CASE("which pager is taken") {
    if (!hasTerminals()) return;
    struct Row {
        const char* about;
        std::map<std::string, std::string> environment;
        std::vector<std::string> options;
        bool isPaged;
    };
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kPurchase);
    for (const Row& row : std::vector<Row>{
             {"PAGER", {{"PAGER", kMarking}}, {}, true},
             {"the tool's own first", {{"BRACKWELL_PAGER", kMarking}, {"PAGER", "false"}}, {}, true},
             {"the tool's own, empty", {{"BRACKWELL_PAGER", ""}, {"PAGER", kMarking}}, {}, false},
             {"empty", {{"PAGER", ""}}, {}, false},
             {"cat", {{"PAGER", "cat"}}, {}, false},
             {"not wanted", {{"PAGER", kMarking}}, {"--no-pager"}, false},
             {"a terminal that can do nothing", {{"PAGER", kMarking}, {"TERM", "dumb"}}, {}, false},
             {"a terminal that nothing is known of", {{"PAGER", kMarking}, {"TERM", ""}}, {}, false}}) {
        CAPTURE(row.about);
        std::vector<std::string> arguments{"show", path};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const Finished finished = onTerminal(arguments, row.environment);
        CHECK(finished.status == 0);
        CHECK(contains(finished.output, "Shop"));
        CHECK(contains(finished.output, "shown: ") == row.isPaged);
    }
}

TEST_CASE("no pager is started for a file, a pipe, or what is not a page") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kPurchase);
    const std::map<std::string, std::string> environment{{"PAGER", kMarking}, {"TERM", "xterm"}};
    CHECK(onTerminal({"show", path, "--output", folder.path("out")}, environment).output == "");
    CHECK_FALSE(contains(folder.read("out"), "shown: "));
    CHECK_FALSE(contains(tool({"show", path}, "", environment).output, "shown: "));
    CHECK_FALSE(contains(onTerminal({"json", path}, environment).output, "shown: "));
}

TEST_CASE("less is told to end with short pages and to show colours, unless it is told otherwise") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kPurchase);
    const std::string telling = "cat >/dev/null; echo \"LESS=$LESS LV=$LV\"";
    CHECK(onTerminal({"show", path}, {{"PAGER", telling}}).output == "LESS=FRX LV=-c\r\n");
    CHECK(onTerminal({"show", path}, {{"PAGER", telling}, {"LESS", "S"}, {"LV", ""}}).output ==
          "LESS=S LV=\r\n");
}

TEST_CASE("who quits the pager has read enough: nothing is said, and the status is 0") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", longDocument());
    const Finished finished =
        onTerminal({"show", "--quiet", "--color=never", path}, {{"PAGER", "head -n 1"}});
    CHECK(finished.status == 0);
    CHECK(finished.output == "Checking account ****5678\r\n");
}

TEST_CASE("a pager that cannot be run is an error, which is said") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    for (const std::string& document : {kPurchase, longDocument()}) {
        const std::string path = folder.file("a.ofx", document);
        const Finished finished = onTerminal({"show", "--quiet", path}, {{"PAGER", "/no/such/pager"}});
        CHECK(finished.status == 1);
        CHECK(
            finished.output.ends_with("standard output: the pager \"/no/such/pager\" could not be run\r\n"));
    }
}

TEST_CASE("messages wait until the pager has ended") {
    if (!hasTerminals()) return;
    const TemporaryFolder folder;
    const std::string large = folder.file("a.ofx", longDocument());
    const std::string missing = folder.path("missing.ofx");
    const Finished finished = onTerminal({"show", "--quiet", large, missing}, {{"PAGER", kMarking}});
    CHECK(finished.status == 1);
    const std::size_t message = finished.output.find("The file at ");
    REQUIRE(message != std::string::npos);
    CHECK(message > finished.output.rfind("shown: "));
}

TEST_CASE("--color says when to use colours") {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ofx", kPurchase);
    CHECK(contains(tool({"show", "--color", "always", path}).output, "\x1b[31m-1.50\x1b[0m"));
    CHECK(contains(tool({"show", "--color=always", path}, "", {{"NO_COLOR", "1"}}).output, "\x1b[31m"));
    CHECK_FALSE(contains(tool({"show", "--color", "auto", path}).output, "\x1b"));
    const Finished wrong = tool({"show", "--color", "sometimes", path});
    CHECK(wrong.status == 2);
    CHECK(contains(wrong.error, "--color"));
    if (!hasTerminals()) return;
    CHECK_FALSE(contains(onTerminal({"show", "--color", "never", path}, {{"PAGER", ""}}).output, "\x1b"));
    CHECK(contains(onTerminal({"show", "--color", "auto", path}, {{"PAGER", ""}}).output, "\x1b[31m"));
}
