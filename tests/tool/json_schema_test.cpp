// SPDX-License-Identifier: Apache-2.0
#include "tool/json_schema.h"

#include "tool/commands.h"

using namespace brackwell::tests;

namespace {

const Json& lineSchema() {
    static const Json schema = [] {
        std::ifstream stream(std::string(BRACKWELL_SOURCE_DIR) + "/docs/json.schema.json", std::ios::binary);
        return Json::parse(stream);
    }();
    return schema;
}

/// The documents of the project, and files that are none.
std::vector<std::string> allDocuments() {
    std::vector<std::string> names;
    for (const std::string& folder :
         {std::string(BRACKWELL_EXAMPLES_DIR), std::string(BRACKWELL_SOURCE_DIR) + "/docs/documents"})
        for (const auto& file : std::filesystem::directory_iterator(folder)) names.push_back(file.path());
    std::ranges::sort(names);
    return names;
}

}  // namespace

TEST_CASE("what json writes of each document is as the schema says") {
    const std::vector<std::string> names = allDocuments();
    CHECK(names.size() > 10);
    for (const char* option : {"--quiet", "--as-is"})
        for (const std::string& name : names) {
            CAPTURE(name);
            const std::vector<std::string> lines = linesOf(tool({"json", option, name}).output);
            REQUIRE(lines.size() == 1);
            const Json line = Json::parse(lines[0]);
            CHECK(differenceFrom(lineSchema(), line) == "");
            CHECK(line.begin().key() == "file");
            CHECK(line["file"] == name);
        }
}

TEST_CASE("the schema has no name that json never writes of a document with every element") {
    const std::string output = tool({"json", "--quiet", examplePath("every_element.ofx"),
                                     examplePath("profile.ofx"), examplePath("account_information.ofx")})
                                   .output;
    const Json& definitions = lineSchema()["$defs"];
    // An element that a text stands in takes the place of the aggregate that most documents have.
    const std::vector<std::string> seldom{"currency", "origCurrency", "transactionCurrency"};
    for (const auto& property : definitions["transaction"]["properties"].items()) {
        const std::string& name = property.key();
        CAPTURE(name);
        const bool isSeldom = std::ranges::find(seldom, name) != seldom.end();
        CHECK((isSeldom || contains(output, "\"" + name + "\":")));
    }
}

TEST_CASE("the schema notices values of other kinds, and names that are not known") {
    const Json line = Json::parse(tool({"json", "--quiet", examplePath("card.ofx")}).output);
    REQUIRE(differenceFrom(lineSchema(), line) == "");
    struct Row {
        std::string place;
        Json value;
        std::string difference;
    };
    const std::string statement = "/responses/1";
    REQUIRE(line["responses"][1]["class"] == "TvOFXCCStatementResponse");
    for (const Row& row : std::vector<Row>{
             {"/other", "x", "/other: is not in the schema"},
             {"/message/ofxVersion", "102", "/message/ofxVersion: is of type string"},
             {statement + "/statementTransactions/0/amount", -6.4, "/amount: is of type number"},
             {statement + "/statementTransactions/0/amount", "6.40", "/amount: does not match"},
             {statement + "/statementTransactions/0/datePosted", "2024-03-01", "/datePosted: does not match"},
             {statement + "/statementTransactions/0/payees", "x", "/payees: is not in the schema"},
             {"/findings", Json::parse(R"([{"kind":"cutOff"}])"), "/findings/0: lacks"}}) {
        CAPTURE(row.place);
        Json changed = line;
        changed[Json::json_pointer(row.place)] = row.value;
        CHECK(contains(differenceFrom(lineSchema(), changed), row.difference));
    }
    Json without = line;
    without.erase("findings");
    CHECK(contains(differenceFrom(lineSchema(), without), "lacks \"findings\""));
}

TEST_CASE("a file of which nothing was read is an object with its error") {
    const TemporaryFolder folder;
    struct Row {
        std::string name;
        std::string bytes;
        std::vector<std::string> options;
        std::string code;
        int line;
    };
    for (const Row& row :
         std::vector<Row>{{"none.ofx", "text", {}, "notOFX", 0},
                          {"page.ofx", "<html><body>Sign in</body></html>", {}, "html", 0},
                          {"empty.ofx", "", {}, "empty", 0},
                          {"tags.ofx", "<OFX>\n<A>\n</B>\n</OFX>", {"--as-is"}, "tagsDoNotMatch", 3}}) {
        CAPTURE(row.name);
        std::vector<std::string> arguments{"json", folder.file(row.name, row.bytes)};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const Finished finished = tool(arguments);
        CHECK(finished.status == 1);
        const std::vector<std::string> lines = linesOf(finished.output);
        REQUIRE(lines.size() == 1);
        const Json line = Json::parse(lines[0]);
        CHECK(differenceFrom(lineSchema(), line) == "");
        CHECK(line["file"] == folder.path(row.name));
        CHECK(line["error"]["code"] == row.code);
        CHECK(line["error"]["line"] == row.line);
        CHECK(contains(finished.error, line["error"]["text"].get<std::string>()));
        CHECK(line["error"]["remedy"] != "");
    }
}

TEST_CASE("one file and several have one shape, each in its place") {
    const TemporaryFolder folder;
    const std::string none = folder.file("none.ofx", "text");
    // The first waits for the securities of the others where words are looked for.
    const std::string waiting = folder.file(
        "waiting.ofx",
        version1("<INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>1<INVSTMTRS><INVPOSLIST><POSSTOCK><INVPOS><SECID><"
                 "UNIQUEID>9"
                 "</SECID></INVPOS></POSSTOCK></INVPOSLIST></INVSTMTRS></INVSTMTTRNRS></INVSTMTMSGSRSV1>"));
    const std::vector<std::string> names{waiting, none, examplePath("card.ofx"), none, waiting};
    for (const std::string option : {"--quiet", "--search=a"}) {
        CAPTURE(option);
        std::vector<std::string> arguments{"json", option};
        arguments.insert(arguments.end(), names.begin(), names.end());
        const std::vector<std::string> lines = linesOf(tool(arguments).output);
        REQUIRE(lines.size() == names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            const Json line = Json::parse(lines[i]);
            CHECK(line["file"] == names[i]);
            CHECK(line.contains("error") == (names[i] == none));
            CHECK(differenceFrom(lineSchema(), line) == "");
            CHECK(tool({"json", option, names[i]}).output.starts_with("{\"file\":"));
        }
    }
}

TEST_CASE("the object of a file that was not read is indented like the others, and makes no output file") {
    const TemporaryFolder folder;
    const std::string none = folder.file("none.ofx", "text");
    const Finished finished = tool({"json", "--indent", none});
    CHECK(finished.output.starts_with("{\n  \"file\": "));
    CHECK(differenceFrom(lineSchema(), Json::parse(finished.output)) == "");
    const std::string old = folder.file("old.json", "what was there");
    CHECK(tool({"json", none, "--output", old}).status == 1);
    CHECK(folder.read("old.json") == "what was there");
}
