// SPDX-License-Identifier: Apache-2.0
#include <sys/stat.h>
#include <unistd.h>

#include "tool/commands.h"
#include "tool/tool.h"

using namespace brackwell::tests;

TEST_CASE("a pipe with a name is read to its end") {
    const TemporaryFolder folder;
    folder.file("document", kDocument);
    REQUIRE(::mkfifo(folder.path("pipe").c_str(), 0600) == 0);
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        const Finished finished = shell(folder, "cat document > pipe & exec \"$TOOL\" " + command + " pipe");
        CHECK(finished.status == 0);
        CHECK(finished.error == "");
        CHECK(finished.output.empty() == (command == "check"));
    }
}

TEST_CASE("what cannot be opened or read is status 1, and said") {
    const TemporaryFolder folder;
    const std::string closed = folder.file("closed", kDocument);
    REQUIRE(::chmod(closed.c_str(), 0) == 0);
    struct Row {
        std::string name;
        std::string reason;
    };
    std::vector<Row> rows{
        {"/proc/self/mem", "The file at /proc/self/mem could not be read."},
        {folder.path("missing"), "The file at " + folder.path("missing") + " was not found."},
        {"", "The file at  was not found."}};
    // Root reads whatever its mode is.
    if (::geteuid() != 0) rows.push_back({closed, "No permission to read the file at " + closed + "."});
    for (const std::string& command : readingCommands())
        for (const Row& row : rows) {
            CAPTURE(command);
            CAPTURE(row.name);
            const Finished finished = tool({command, row.name});
            CHECK(finished.status == 1);
            CHECK(finished.error.starts_with(row.name + ": " + row.reason + "\n  "));
        }
}

TEST_CASE("a file that grows and is cut while it is read ends in a result or an error") {
    const TemporaryFolder folder;
    std::string transactions;
    for (int i = 0; i < 20'000; ++i) transactions += "<STMTTRN><TRNAMT>1<NAME>Shop</STMTTRN>\n";
    folder.file("big", transactionsWith(transactions));
    const Finished finished = shell(
        folder,
        "cp big file; (while :; do cat big >> file; : > file; cat big > file; done) 2>errors & writer=$!; "
        "i=0; while [ $i -lt 20 ]; do \"$TOOL\" csv file >output 2>message; echo $?; i=$((i + 1)); done; "
        "kill $writer; wait $writer; exit 0");
    const std::vector<std::string> statuses = linesOf(finished.output);
    CHECK(statuses.size() == 20);
    for (const std::string& status : statuses) CHECK((status == "0" || status == "1"));
}

TEST_CASE("ten thousand files are read one after the other with few open descriptors") {
    const TemporaryFolder folder;
    folder.file("a", kDocument);
    const Finished finished =
        shell(folder,
              "ulimit -n 16; set --; i=0; while [ $i -lt 100 ]; do set -- \"$@\" a; i=$((i + 1)); done; "
              "a=\"$*\"; set --; i=0; while [ $i -lt 100 ]; do set -- \"$@\" $a; i=$((i + 1)); done; "
              "\"$TOOL\" csv \"$@\" | wc -l; \"$TOOL\" accounts \"$@\"; \"$TOOL\" duplicates \"$@\" | wc -l");
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    const std::vector<std::string> lines = linesOf(finished.output);
    REQUIRE(lines.size() == 4);
    CHECK(lines[0] == "10001");
    CHECK(contains(lines[2], "****5678"));
    CHECK(std::stol(lines[3]) > 3);
}

TEST_CASE("any bytes may be the name of a file") {
    for (const std::string& name :
         std::vector<std::string>{"line\nbreak", "\x1b[2J", "\xFF\xFE", "caf\xE9", "-h",
                                  "--output",    "[x]",     "[a,b]",    "[]",      "a,b",
                                  "{x}",         "'",       "\"",       "a b",     " ",
                                  "%s",          "$(x)",    "x=1",      "\u202Ex", std::string(255, 'n')}) {
        CAPTURE(name);
        const TemporaryFolder folder;
        folder.file(name, kDocument);
        for (const char* command : {"json", "csv"}) {
            Command direct = toolCommand({command, "--", name});
            direct.directory = folder.path();
            const Finished finished = run(direct);
            CHECK(finished.status == 0);
            CHECK(finished.error == "");
            CHECK(contains(finished.output, "Shop"));
        }
        // As the file of an option.
        Command output = toolCommand({"csv", "-", "--output=" + name + ".csv"});
        output.directory = folder.path();
        output.input = kDocument;
        if (name.size() < 250) {
            CHECK(run(output).status == 0);
            CHECK(contains(folder.read(name + ".csv"), "Shop"));
        }
    }
}

TEST_CASE("several names with brackets are as many files") {
    const TemporaryFolder folder;
    folder.file("[a,b]", kDocument);
    folder.file("[c]", kDocument);
    const Finished finished = shell(folder, "exec \"$TOOL\" json '[a,b]' '[c]'");
    CHECK(finished.status == 0);
    const std::vector<std::string> lines = linesOf(finished.output);
    REQUIRE(lines.size() == 2);
    CHECK(Json::parse(lines[0])["file"] == "[a,b]");
    CHECK(Json::parse(lines[1])["file"] == "[c]");
}

TEST_CASE("an output that is a folder, or in none, is status 1") {
    const TemporaryFolder folder;
    const std::string document = folder.file("a", kDocument);
    struct Row {
        std::string output, reason;
    };
    for (const Row& row : std::vector<Row>{{folder.path(), "Is a directory"},
                                           {folder.path("none/x"), "No such file or directory"},
                                           {folder.path("a/x"), "Not a directory"}}) {
        CAPTURE(row.output);
        const Finished finished = tool({"csv", document, "--output", row.output});
        CHECK(finished.status == 1);
        CHECK(finished.output == "");
        CHECK(finished.error == row.output + ": " + row.reason + "\n");
        CHECK(folder.read("a") == kDocument);
    }
}

TEST_CASE("input without end is said when memory is exhausted, and the other files are done") {
    const TemporaryFolder folder;
    folder.file("a", kDocument);
    const Finished finished =
        shell(folder,
              "ulimit -v 1000000; \"$TOOL\" csv /dev/zero a; echo $?; \"$TOOL\" tree - </dev/zero; echo $?");
    // Sanitizers reserve more address space than that and cannot start.
    if (contains(finished.error, "Sanitizer")) return;
    CHECK(finished.error ==
          "/dev/zero: There is not enough memory for this document.\n"
          "-: There is not enough memory for this document.\n");
    const std::vector<std::string> lines = linesOf(finished.output);
    REQUIRE(lines.size() == 4);
    CHECK(contains(lines[1], "Shop"));
    CHECK(lines[2] == "1");
    CHECK(lines[3] == "1");
}

TEST_CASE("what a command writes grows no faster than the document") {
    struct Shape {
        std::string name, piece;
    };
    const auto outputSize = [](const std::string& command, const Shape& shape, std::size_t count) {
        std::string document = "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKTRANLIST>";
        while (count-- > 0) document += shape.piece;
        return outputOf({command}, document).size();
    };
    for (const Shape& shape :
         std::vector<Shape>{{"transactions", "<STMTTRN><DTPOSTED>20240102<TRNAMT>1.00<NAME>Shop</STMTTRN>"},
                            {"unclosed transactions", "<STMTTRN><NAME>x"},
                            {"transactions with odd close tags", "<STMTTRN><NAME>x</STMTTRN >"},
                            {"transactions with odd tags", "< STMTTRN\u00A0><NAME>x</STMTTRN >"},
                            {"nested aggregates", "<A>"},
                            {"nested aggregates with leaves", "<A><N>1"}})
        for (const std::string command : {"show", "json", "csv", "tree", "pretty", "report"}) {
            CAPTURE(shape.name);
            CAPTURE(command);
            const std::size_t once = outputSize(command, shape, 1000);
            const std::size_t twice = outputSize(command, shape, 2000);
            CHECK(once > 0);
            CHECK(twice <= 2 * once + once / 10);
        }
}

TEST_CASE("the languages of a profile may hold unclosed transactions") {
    std::string languages = "<LANGUAGE>ENG<LANGUAGE>";
    for (int i = 0; i < 1000; ++i) languages += "<STMTTRN><NAME>x";
    const std::string document = version1(
        "<PROFMSGSRSV1><PROFTRNRS><TRNUID>1<PROFRS><MSGSETLIST><BANKMSGSET><BANKMSGSETV1><MSGSETCORE>" +
        languages);
    const std::string body = document.substr(0, document.rfind("</OFX>"));
    const std::string output = outputOf({"json", "--as-is"}, body);
    CHECK(contains(output, "\"languages\":[\"ENG\",{\"STMTTRN\":{\"NAME\":\"x\",\"STMTTRN\""));
    CHECK(output.size() < 3 * body.size());
}

TEST_CASE("a field that only looks like a formula in other places stays as it is") {
    for (const char* memo : {"\uFF1D1+1", "a=1+1", "1+1", ";=1+1", "'=1+1", "%0A=1"}) {
        CAPTURE(memo);
        const std::string output =
            outputOf({"csv"}, transactionsWith("<STMTTRN><MEMO>" + std::string(memo) + "</STMTTRN>"));
        CHECK(output.ends_with("," + std::string(memo) + "\r\n"));
    }
    // Blanks at both ends are no part of a value, so none can hide a formula.
    for (const char* blank : {" ", "\t", "\n", "\u00A0", "\u3000"}) {
        const std::string output =
            outputOf({"csv"}, transactionsWith("<STMTTRN><MEMO>" + std::string(blank) + "=1+1</STMTTRN>"));
        CHECK(output.ends_with(",'=1+1\r\n"));
    }
}
