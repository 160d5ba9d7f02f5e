// SPDX-License-Identifier: Apache-2.0
#include "tool/commands.h"

using namespace brackwell::tests;

TEST_CASE("a request takes the dates that all commands take, and the moments of servers") {
    struct Row {
        std::string given;
        std::string written;
    };
    for (const Row& row : std::vector<Row>{{"2024-01-31", "20240131"},
                                           {"20240131", "20240131"},
                                           {"20240131235959", "20240131235959"},
                                           {"20240131235959.123", "20240131235959.123"},
                                           {"20240131235959[-5:EST]", "20240131235959[-5:EST]"},
                                           {"20240131235959.123[+5.5]", "20240131235959.123[+5.5]"}}) {
        CAPTURE(row.given);
        const Finished finished = tool({"request", "accounts", "--since", row.given});
        CHECK(finished.status == 0);
        CHECK(contains(finished.output, "<DTACCTUP>" + row.written + "\n"));
    }
}

TEST_CASE("days without hyphens are taken by every command that takes days") {
    for (const std::string& command : commandsWith("--until")) {
        CAPTURE(command);
        const std::string card = examplePath("card.ofx");
        const Finished hyphens =
            tool({command, "--quiet", "--since", "2024-02-05", "--until", "2024-02-14", card});
        const Finished digits =
            tool({command, "--quiet", "--since", "20240205", "--until", "20240214", card});
        CHECK(digits.status == 0);
        CHECK(digits.output == hyphens.output);
    }
}

TEST_CASE("a request that is a document is read back by the tool, at every version") {
    for (const char* version : {"", "102", "151", "160", "200", "203", "211", "220"})
        for (const std::string kind : {"accounts", "profile"}) {
            CAPTURE(version);
            CAPTURE(kind);
            std::vector<std::string> arguments{"request", kind, "--document", "--since", "2024-01-31"};
            if (*version != '\0') arguments.insert(arguments.end(), {"--version", version});
            const Finished made = tool(arguments);
            REQUIRE(made.status == 0);
            const Finished read = tool({"tree", "--quiet", "--as-is", "-"}, made.output);
            CHECK(read.status == 0);
            CHECK(read.error == "");
            const Json tree = Json::parse(read.output);
            CHECK(tree["header"]["VERSION"] == (*version == '\0' ? "102" : version));
            const bool isProfile = kind == "profile";
            const Json& set = tree["data"]["OFX"][isProfile ? "PROFMSGSRQV1" : "SIGNUPMSGSRQV1"];
            const Json& wrapper = set[isProfile ? "PROFTRNRQ" : "ACCTINFOTRNRQ"];
            CHECK(wrapper["TRNUID"].get<std::string>().size() == 36);
            CHECK(wrapper[isProfile ? "PROFRQ" : "ACCTINFORQ"][isProfile ? "DTPROFUP" : "DTACCTUP"] ==
                  "20240131");
            CHECK(tool({"pretty", "--quiet", "-"}, made.output).status == 0);
        }
}

TEST_CASE("the document of a request has the request in it") {
    std::vector<std::string> lines = linesOf(tool({"request", "profile", "--document"}).output);
    std::vector<std::string> alone = linesOf(tool({"request", "profile"}).output);
    REQUIRE(lines.size() == alone.size() + 14);
    CHECK(lines[0] == "OFXHEADER:100");
    CHECK(lines[10] == "<OFX>");
    CHECK(lines[lines.size() - 2] == "</PROFMSGSRQV1>");
    CHECK(lines.back() == "</OFX>");
    lines.erase(lines.begin(), lines.begin() + 12);
    lines.resize(alone.size());
    lines.erase(lines.begin() + 1);  // the identifier, which is another one each time
    alone.erase(alone.begin() + 1);
    CHECK(lines == alone);
}
