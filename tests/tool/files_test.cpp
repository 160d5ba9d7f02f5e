// SPDX-License-Identifier: Apache-2.0
#include "tool/commands.h"

using namespace brackwell::tests;

TEST_CASE("a hyphen is standard input") {
    std::ifstream stream(examplePath("card.ofx"), std::ios::binary);
    const std::string document{std::istreambuf_iterator<char>(stream), {}};
    for (const char* command : {"show", "tree", "pretty"}) {
        CAPTURE(command);
        const std::string output = outputOf({command}, document);
        CHECK(output != "");
        CHECK(output == tool({command, examplePath("card.ofx")}).output);
    }
    Json json = Json::parse(tool({"json", examplePath("card.ofx")}).output);
    json["file"] = "-";
    CHECK(jsonOf("json", document) == json);
}

TEST_CASE("the other files are done when one cannot be read") {
    const std::string good = examplePath("card.ofx");
    const Finished finished = tool({"json", good, "/nowhere/july.ofx", examplePath("checking.ofx")});
    CHECK(finished.status == 1);
    CHECK(finished.error == notFound("/nowhere/july.ofx"));
    const std::vector<std::string> lines = linesOf(finished.output);
    REQUIRE(lines.size() == 3);
    CHECK(Json::parse(lines[0])["file"] == good);
    CHECK(Json::parse(lines[1])["error"]["code"] == "notFound");
    CHECK(Json::parse(lines[2])["file"] == examplePath("checking.ofx"));
}

TEST_CASE("what is wrong with a file is written to standard error, after its name") {
    const TemporaryFolder folder;
    struct Row {
        std::string name;
        std::string bytes;
        std::string reason;
    };
    for (const Row& row : std::vector<Row>{
             {"text", "Dear customer,\n", ": not an OFX document"},
             {"empty", "", ": no data to parse"},
             {"mark", "\xFE\xFF", ": not an OFX document"},
             {"half a character", "\xFF\xFE<", ": Data is not OFX or unknown character encoding."},
             {"latin", "Caf\xE9", ": Data is not OFX or unknown character encoding."},
             {"close", "<OFX></B></OFX>",
              ":1:6: Found close tag </B> without opening tag. Maybe there is a close tag missing for "
              "<OFX>."},
         }) {
        const std::string path = folder.file(row.name, row.bytes);
        for (const char* command : {"show", "json", "csv", "pretty"}) {
            CAPTURE(row.name);
            CAPTURE(command);
            const Finished finished = tool({command, "--as-is", path});
            CHECK(finished.status == 1);
            CHECK(finished.error.starts_with(path + row.reason + "\n"));
            // A table has its header, and JSON an object for each file.
            const bool isPage = std::string(command) != "csv" && std::string(command) != "json";
            if (isPage) CHECK(finished.output == "");
        }
    }
}

TEST_CASE("a folder is no file where a command reads a single one") {
    const TemporaryFolder folder;
    const Finished finished = tool({"tree", folder.path()});
    CHECK(finished.status == 1);
    CHECK(finished.error == folder.path() + ": " + folder.path() + " is a folder.\n  Name a file in it.\n");
}

TEST_CASE("a standard input that cannot be read is status 1 and said") {
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        Finished finished = run({{"/bin/sh", "-c", "exec \"$0\" \"$1\" - </", BRACKWELL_TOOL, command}});
        CHECK(finished.status == 1);
        CHECK(finished.error == "-: /dev/stdin is a folder.\n  Name a file in it.\n");
        finished = run({{"/bin/sh", "-c", "exec \"$0\" \"$1\" - <&-", BRACKWELL_TOOL, command}});
        CHECK(finished.status == 1);
        CHECK(finished.error.starts_with("-: no data to parse\n"));
    }
}

TEST_CASE("output that cannot be written is status 1 and said once") {
    const std::string document = examplePath("card.ofx");
    for (const std::string& command : writingCommands()) {
        CAPTURE(command);
        Command full = toolCommand({command, document});
        full.outputFile = "/dev/full";
        Finished finished = run(full);
        CHECK(finished.status == 1);
        CHECK(finished.error == "standard output: No space left on device\n");

        finished = runIntoClosedPipe(toolCommand({command, document}));
        CHECK(finished.status == 1);
        CHECK(finished.error == "standard output: Broken pipe\n");

        finished = runWithoutOutput(toolCommand({command, document}));
        CHECK(finished.status == 1);
        CHECK(finished.error == "standard output: Bad file descriptor\n");

        finished = tool({command, document, "--output", "/dev/full"});
        CHECK(finished.status == 1);
        CHECK(finished.error == "/dev/full: No space left on device\n");
    }
}

TEST_CASE("a text that is larger than what is written at once arrives whole") {
    for (const std::size_t size : {65'535U, 65'536U, 65'537U, 8'000'000U}) {
        CAPTURE(size);
        const std::string memo(size, 'm');
        const std::string document = transactionsWith("<STMTTRN><MEMO>" + memo + "</STMTTRN>");
        for (const std::string command : {"csv", "json", "tree", "pretty", "repair"}) {
            CAPTURE(command);
            const std::string output = outputOf({command}, document);
            const std::size_t begin = output.find("mmm");
            REQUIRE(begin != std::string::npos);
            CHECK(output.find_first_not_of('m', begin) - begin == size);
        }
    }
}

TEST_CASE("no more files are read when the output is gone") {
    const TemporaryFolder folder;
    std::string transactions;
    for (int i = 0; i < 2000; ++i)
        transactions +=
            "<STMTTRN><DTPOSTED>20240101<TRNAMT>1<NAME>A name of some length that fills the buffer</STMTTRN>";
    const std::string big = folder.file("big.ofx", transactionsWith(transactions));
    const Finished finished = runIntoClosedPipe(toolCommand({"json", big, "/nowhere"}));
    CHECK(finished.status == 1);
    CHECK(finished.error == "standard output: Broken pipe\n");
}

TEST_CASE("--output writes a file instead of standard output") {
    const TemporaryFolder folder;
    folder.file("old.json", "something longer than nothing");
    for (const char* option : {"--output", "-o"}) {
        CAPTURE(option);
        const Finished finished = tool({"json", examplePath("card.ofx"), option, folder.path("old.json")});
        CHECK(finished.status == 0);
        CHECK(finished.output == "");
        CHECK(finished.error == "");
        CHECK(folder.read("old.json") == tool({"json", examplePath("card.ofx")}).output);
    }
}

TEST_CASE("a file for the output that cannot be made is status 1") {
    const Finished finished = tool({"json", examplePath("card.ofx"), "--output", "/nowhere/july.json"});
    CHECK(finished.status == 1);
    CHECK(finished.error == "/nowhere/july.json: No such file or directory\n");
}

TEST_CASE("the output never replaces a document that is still to be read") {
    const TemporaryFolder folder;
    const std::string document = folder.file("july.ofx", version1(""));
    const std::string output = folder.path("./july.ofx");
    Command throughInput{{"/bin/sh", "-c", "exec \"$0\" csv - -o \"$1\" <\"$1\"", BRACKWELL_TOOL, output}};
    for (const Finished& finished : {tool({"csv", document, "--output", output}), run(throughInput)}) {
        CHECK(finished.status == 2);
        CHECK(finished.error.find("is also an input file") != std::string::npos);
        CHECK(folder.read("july.ofx") == version1(""));
    }
}

TEST_CASE("a document that does not fit into memory is said, and the others are done") {
    // The shell limits the memory; the tree of this document would need more.
    const TemporaryFolder folder;
    std::string deep = "<OFX>";
    for (int i = 0; i < 10'000'000; ++i) deep += "<A>";
    const std::string path = folder.file("deep.ofx", deep + "<B>x");
    const std::string other = examplePath("card.ofx");
    const Finished finished =
        run({{"/bin/sh", "-c", "ulimit -v 200000; exec \"$0\" \"$@\"", BRACKWELL_TOOL, "json", path, other}});
    if (contains(finished.error, "Sanitizer")) {
        MESSAGE("skipped: sanitizers reserve more memory than this test allows, and do not start");
        return;
    }
    CHECK(finished.status == 1);
    CHECK(finished.output == tool({"json", other}).output);
    CHECK(finished.error == path + ": There is not enough memory for this document.\n");
}
