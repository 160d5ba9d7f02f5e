// SPDX-License-Identifier: Apache-2.0
#include <set>

#include "tool/commands.h"

using namespace brackwell::tests;

TEST_CASE("every source of a command is in the help, and every command of the help has a source") {
    // Beside the commands the folder has their table.
    std::set<std::string> wanted{"commands"};
    for (const std::string& command : allCommands()) wanted.insert(command);
    std::set<std::string> sources;
    for (const auto& file :
         std::filesystem::directory_iterator(std::string(BRACKWELL_SOURCE_DIR) + "/tool/commands"))
        if (file.path().extension() == ".cpp") sources.insert(file.path().stem());
    CHECK(sources.size() > 1);
    CHECK(sources == wanted);
}

TEST_CASE("help goes to standard output") {
    const Finished finished = tool({"--help"});
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    CHECK(contains(finished.output, "Examples:"));
    CHECK(contains(finished.output, "Exit status:"));
}

TEST_CASE("every command has a help with examples") {
    for (const std::string& command : allCommands()) {
        CAPTURE(command);
        const Finished finished = tool({command, "--help"});
        CHECK(finished.status == 0);
        CHECK(finished.error == "");
        CHECK(contains(finished.output, "Examples:\n  brackwell " + command));
    }
}

TEST_CASE("the help of a reading command names its options") {
    const std::string help = tool({"show", "--help"}).output;
    for (const char* option :
         {"--encoding NAME", "--date-format PATTERN", "--decimal-separator CHAR", "--grouping-separator CHAR",
          "--output FILE", "--force", "--as-is", "--quiet", "--strict", "--full"}) {
        CAPTURE(option);
        CHECK(contains(help, option));
    }
}

TEST_CASE("the version is one line") {
    const Finished finished = tool({"--version"});
    CHECK(finished.status == 0);
    CHECK(finished.output.starts_with("brackwell 1."));
    CHECK(linesOf(finished.output).size() == 1);
}

TEST_CASE("who starts the program alone is told what it is, in lines that a terminal of 80 columns holds") {
    const Finished finished = tool({});
    CHECK(finished.error.starts_with("brackwell reads Open Financial Exchange (OFX) documents"));
    CHECK(contains(finished.error, "\n  brackwell show july.ofx\n"));
    for (const std::string& line : linesOf(finished.error)) CHECK(line.size() < 80);
}

TEST_CASE("wrong usage is status 2, says why on standard error and writes nothing") {
    const std::string document = examplePath("card.ofx");
    struct Row {
        std::vector<std::string> arguments;
        std::string reason;
    };
    const std::vector<Row> rows{
        {{}, "Run with --help for a list of the commands.\n"},
        {{"print", document}, "unknown command \"print\"\nRun with --help for a list of the commands.\n"},
        {{"anonymise", document}, "unknown command \"anonymise\"; \"anonymize\" may be meant\n"},
        {{"show"}, "FILE is required"},
        {{"json", document, "--full"}, "--full"},
        {{"show", "--hlep"}, "unknown option \"--hlep\"; \"--help\" may be meant\n"},
        {{"--hlep"}, "unknown option \"--hlep\"; \"--help\" may be meant\n"},
        {{"csv", "--colunms=amount", document}, "unknown option \"--colunms\"; \"--columns\" may be meant\n"},
        {{"csv", document, "--uniqe"}, "unknown option \"--uniqe\"; \"--unique\" may be meant\n"},
        {{"tree", "--ecoding", "UTF-8"}, "unknown option \"--ecoding\"; \"--encoding\" may be meant\n"},
        {{"show", "--zzzzzz"}, "unknown option \"--zzzzzz\"\nRun with --help for more information.\n"},
        {{"show", "--" + std::string(100, 'x')}, "unknown option \"--xxx"},
        {{"show", "-" + std::string("Z"), document}, "unknown option \"-Z\"\n"},
        {{"accounts"}, "FILE is required"},
        {{"duplicates"}, "FILE is required"},
        {{"accounts", document, "--sort", "date"}, "--sort"},
        {{"duplicates", document, "--since", "2024-01-01"}, "--since"},
        {{"json", document, "--nothing"}, "--nothing"},
        {{"tree", document, document}, "FILE: this command takes a single document\n"},
        {{"pretty", document, document}, "FILE: this command takes a single document\n"},
        {{"check"}, "FILE is required"},
        {{"check", document, "--output", "x"}, "--output"},
        {{"check", document, "--force"}, "--force"},
        {{"repair"}, "FILE is required"},
        {{"repair", document, "--as-is"}, "--as-is"},
        {{"show", document, "--repair"}, "--repair"},
        {{"request", "accounts", "--strict"}, "--strict"},
        {{"repair", document, document}, "FILE: this command takes a single document\n"},
        {{"repair", document, "--full"}, "--full"},
        {{"repair", document, "--output", document}, "is also an input file"},
        {{"csv", "-", "--output", document}, "has the name of an OFX document"},
        {{"request", "accounts", "--output", ""}, "--output: the name is empty"},
        {{"show", document, "--diff"}, "--diff"},
        {{"json", document, "--encoding", "klingon"}, "unknown encoding \"klingon\""},
        {{"json", document, "--encoding"}, "--encoding"},
        {{"csv", document, "--decimal-separator", ",,"}, "not a single character: \",,\""},
        {{"csv", document, "--decimal-separator", ""}, "not a single character: \"\""},
        {{"csv", document, "--grouping-separator", ""}, "not a single character"},
        {{"csv", document, "--decimal-separator", ".", "--grouping-separator", "."}, "is the same as"},
        {{"csv", document, "--date-format", ""}, "the pattern is empty"},
        {{"json", "-", document, "-"}, "standard input can be read only once"},
        {{"request"}, "KIND is required"},
        {{"request", "everything"}, "everything"},
        {{"request", "accounts", "--version", "two"}, "--version"},
        {{"request", "accounts", "--version", "-1"}, "--version"},
        {{"request", "accounts", "--version", "999"}, "not a version like 102 or 211: \"999\""},
        {{"request", "accounts", "--version", "300"}, "not a version"},
        {{"request", "accounts", "--version", "21"}, "not a version"},
        {{"request", "accounts", "--version", "2110"}, "not a version"},
        {{"request", "accounts", "--since", "last year"}, "not a date like 2024-01-31: \"last year\""},
        {{"request", "accounts", "--since", "20240131240000"}, "not a date like 2024-01-31"},
        {{"request", "accounts", "--since", "20240131236000"}, "not a date like 2024-01-31"},
        {{"request", "accounts", "--since", "20240131235961"}, "not a date like 2024-01-31"},
        {{"request", "accounts", "--since", "2024-02-30"}, "not a date"},
        {{"request", "accounts", "--since", "20240230"}, "not a date"},
        {{"request", "accounts", "--since", "2024013112"}, "not a date"},
        {{"request", "accounts", "--since", "20240131120000[-5:EST"}, "not a date"},
        {{"request", "accounts", "--since", "20240131120000[<A>]"}, "not a date"},
        {{"request", "accounts", "--since", "20240131120000.12"}, "not a date"},
        {{"show", document, "--since", "20240230"}, "not a date"},
        {{"show", document, "--since", "2024-0131"}, "not a date"},
        {{"request", "profile", "--routing", "away"}, "away"},
    };
    for (const Row& row : rows) {
        const std::string arguments = Json(row.arguments).dump();
        CAPTURE(arguments);
        const Finished finished = tool(row.arguments);
        CHECK(finished.status == 2);
        CHECK(finished.output == "");
        CHECK(contains(finished.error, row.reason));
    }
}

TEST_CASE("help that cannot be written is status 1") {
    Command command = toolCommand({"--help"});
    command.outputFile = "/dev/full";
    const Finished finished = run(command);
    CHECK(finished.status == 1);
    CHECK(finished.error == "standard output: No space left on device\n");
}

TEST_CASE("options may come before or after the files, and two hyphens end them") {
    const TemporaryFolder folder;
    folder.file("-x.ofx", version1(""));
    Command command = toolCommand({"json", "--", "-x.ofx"});
    command.directory = folder.path();
    CHECK(run(command).status == 0);
    const std::string document = examplePath("card.ofx");
    const std::string before = tool({"json", "--encoding", "utf-8", document}).output;
    CHECK(before != "");
    CHECK(before == tool({"json", document, "--encoding", "UTF8"}).output);
}

TEST_CASE("every reading command takes every option of reading") {
    for (const std::string& command : commandsWith("--as-is")) {
        if (command == "check") continue;  // it writes nothing
        CAPTURE(command);
        const TemporaryFolder folder;
        const std::string document =
            folder.file("in", transactionsWith("<STMTTRN><DTPOSTED>31.12.2024<TRNAMT>-1.234,50</STMTTRN>"));
        const Finished finished = tool({command, "--encoding", "auto", "--as-is", "--quiet", "--date-format",
                                        "dd.MM.yyyy", "--decimal-separator", ",", "--grouping-separator", ".",
                                        "--output", folder.path("out"), document});
        CHECK(finished.status == 0);
        CHECK(finished.output == "");
        CHECK(finished.error == "");
        CHECK(folder.read("out") != "");
    }
}

TEST_CASE("request accounts writes the request at versions 102 and 211") {
    struct Row {
        std::string version;
        std::string uidEnd;
        std::string dateLine;
    };
    for (const Row& row : std::vector<Row>{{"102", "", "<DTACCTUP>20240101"},
                                           {"199", "", "<DTACCTUP>20240101"},
                                           {"200", "</TRNUID>", "<DTACCTUP>20240101</DTACCTUP>"},
                                           {"211", "</TRNUID>", "<DTACCTUP>20240101</DTACCTUP>"}}) {
        CAPTURE(row.version);
        const Finished finished =
            tool({"request", "accounts", "--version", row.version, "--since", "20240101"});
        CHECK(finished.status == 0);
        CHECK(finished.error == "");
        std::vector<std::string> lines = linesOf(finished.output);
        REQUIRE(lines.size() == 6);
        CHECK(lines[1].size() == std::string("<TRNUID>").size() + 36 + row.uidEnd.size());
        CHECK(lines[1].starts_with("<TRNUID>"));
        CHECK(lines[1].ends_with(row.uidEnd));
        lines.erase(lines.begin() + 1);
        CHECK(lines == std::vector<std::string>{"<ACCTINFOTRNRQ>", "<ACCTINFORQ>", row.dateLine,
                                                "</ACCTINFORQ>", "</ACCTINFOTRNRQ>"});
    }
}

TEST_CASE("request profile writes the request with its routing") {
    struct Row {
        std::vector<std::string> options;
        std::string routingLine;
        std::string dateLine;
    };
    for (const Row& row : std::vector<Row>{
             {{}, "<CLIENTROUTING>NONE", "<DTPROFUP>19900101"},
             {{"--routing", "none"}, "<CLIENTROUTING>NONE", "<DTPROFUP>19900101"},
             {{"--routing", "service", "--version", "102"}, "<CLIENTROUTING>SERVICE", "<DTPROFUP>19900101"},
             {{"--routing", "msgset", "--version", "211", "--since", "20230101"},
              "<CLIENTROUTING>MSGSET</CLIENTROUTING>",
              "<DTPROFUP>20230101</DTPROFUP>"}}) {
        const std::string options = Json(row.options).dump();
        CAPTURE(options);
        std::vector<std::string> arguments{"request", "profile"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        std::vector<std::string> lines = linesOf(tool(arguments).output);
        REQUIRE(lines.size() == 7);
        lines.erase(lines.begin() + 1);
        CHECK(lines == std::vector<std::string>{"<PROFTRNRQ>", "<PROFRQ>", row.routingLine, row.dateLine,
                                                "</PROFRQ>", "</PROFTRNRQ>"});
    }
}

TEST_CASE("a request for accounts takes a routing, which has no effect, and says so") {
    struct Row {
        std::string routing;
        std::string note;
    };
    const std::string note = "--routing: is for profile requests only and has no effect here\n";
    for (const Row& row : std::vector<Row>{{"none", ""}, {"service", note}, {"msgset", note}}) {
        CAPTURE(row.routing);
        const Finished finished = tool({"request", "accounts", "--routing", row.routing});
        CHECK(finished.status == 0);
        CHECK(finished.error == row.note);
        CHECK(linesOf(finished.output).size() == 6);
        CHECK_FALSE(contains(finished.output, "ROUTING"));
    }
}

TEST_CASE("no two requests have the same identifier") {
    const auto identifier = [] { return linesOf(tool({"request", "accounts"}).output).at(1); };
    CHECK(identifier() != identifier());
}
