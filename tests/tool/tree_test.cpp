// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

using namespace brackwell::tests;

TEST_CASE("the tree has leaves as strings, aggregates as objects and repeated names as arrays, in order") {
    CHECK(
        outputOf({"tree"}, "OFXHEADER:100\nVERSION:102\nX:\n<OFX><B>1<A><C>2</A><B>3<A></A><D></D></OFX>") ==
        R"({"encoding":"UTF-8","header":{"OFXHEADER":"100","VERSION":"102","X":""},)"
        R"("data":{"OFX":{"B":["1","3"],"A":[{"C":"2"},{}],"D":{}}}})"
        "\n");
}

TEST_CASE("a transaction in the tree has its source text where that is asked for") {
    struct Row {
        std::string transaction, plain, original;
    };
    for (const Row& row : std::vector<Row>{
             {"<STMTTRN><NAME>A\n</STMTTRN>", R"({"NAME":"A"})",
              R"({"TVOFX_ORIGINAL_STRING":"<NAME>A\n","NAME":"A"})"},
             {"<STMTTRN></STMTTRN>", "{}", "{}"},
             {"<STMTTRN></STMTTRN >", "{}", R"({"TVOFX_ORIGINAL_STRING":"</STMTTRN ></OFX>"})"},
             {"<STMTTRN><A>1</STMTTRN><STMTTRN><A>2</STMTTRN>", R"([{"A":"1"},{"A":"2"}])",
              R"([{"TVOFX_ORIGINAL_STRING":"<A>1","A":"1"},{"TVOFX_ORIGINAL_STRING":"<A>2","A":"2"}])"},
         }) {
        CAPTURE(row.transaction);
        const std::string document = "<OFX>" + row.transaction + "</OFX>";
        CHECK(jsonAsIs("tree", document)["data"]["OFX"]["STMTTRN"].dump() == row.plain);
        const Json tree = Json::parse(outputOf({"tree", "--original", "--as-is"}, document));
        CHECK(tree["header"].is_null());
        CHECK(tree["data"]["OFX"]["STMTTRN"].dump() == row.original);
    }
}

TEST_CASE("a document's own element stays in the tree, though it is named like the source text") {
    struct Row {
        std::string body, wanted;
    };
    for (const Row& row : std::vector<Row>{
             {"<STMTTRN><TVOFX_ORIGINAL_STRING>x</STMTTRN>", R"({"STMTTRN":{"TVOFX_ORIGINAL_STRING":"x"}})"},
             {"<STMTTRN><A>1<TVOFX_ORIGINAL_STRING>x<TVOFX_ORIGINAL_STRING>y</STMTTRN>",
              R"({"STMTTRN":{"TVOFX_ORIGINAL_STRING":["x","y"],"A":"1"}})"},
             {"<STMTTRN><TVOFX_ORIGINAL_STRING></TVOFX_ORIGINAL_STRING></STMTTRN>",
              R"({"STMTTRN":{"TVOFX_ORIGINAL_STRING":{}}})"},
             {"<A><TVOFX_ORIGINAL_STRING>x</A>", R"({"A":{"TVOFX_ORIGINAL_STRING":"x"}})"},
         }) {
        CAPTURE(row.body);
        CHECK(jsonAsIs("tree", "<OFX>" + row.body + "</OFX>")["data"]["OFX"].dump() == row.wanted);
    }
}

TEST_CASE("text that is not OFX is said to be none, and has an empty tree and status 0") {
    const Finished finished = tool({"tree", "-"}, "Dear customer,");
    CHECK(finished.status == 0);
    CHECK(finished.error.starts_with("-: not an OFX document\n"));
    CHECK(finished.output == R"({"encoding":"ASCII","header":null,"data":null})"
                             "\n");
}

TEST_CASE("an XML document without its instruction is OFX without content") {
    CHECK(outputOf({"tree", "--as-is"}, "<?xml version=\"1.0\" encoding=\"utf-8\"?><OFX><A>1</A></OFX>") ==
          R"({"encoding":"UTF-8","header":{"ENCODING":"utf-8"},"data":{}})"
          "\n");
}

TEST_CASE("bytes that are no text have no encoding") {
    const Finished finished = tool({"tree", "-"}, "caf\xE9");
    CHECK(finished.status == 1);
    CHECK(finished.error.starts_with("-: Data is not OFX or unknown character encoding.\n"));
    CHECK(finished.output == R"({"encoding":null,"header":null,"data":null})"
                             "\n");
}

TEST_CASE("a body that does not parse leaves the header") {
    const Finished finished = tool({"tree", "--as-is", "-"}, "OFXHEADER:100\n<OFX></A></OFX>");
    CHECK(finished.status == 1);
    CHECK(finished.error.starts_with("-:2:6: Found close tag </A> without opening tag."));
    CHECK(finished.output == R"({"encoding":"UTF-8","header":{"OFXHEADER":"100"},"data":null})"
                             "\n");
}

TEST_CASE("each document of a file has a tree of its own, a line each") {
    const std::vector<std::string> lines =
        linesOf(outputOf({"tree"}, version1("<A>1</A>") + "<?OFX VERSION=\"211\"?><OFX><A>2</A></OFX>"));
    REQUIRE(lines.size() == 2);
    CHECK(Json::parse(lines[0])["header"]["VERSION"] == "102");
    CHECK(Json::parse(lines[0])["data"].dump() == R"({"OFX":{"A":"1"}})");
    CHECK(Json::parse(lines[1])["header"]["VERSION"] == "211");
    CHECK(Json::parse(lines[1])["data"].dump() == R"({"OFX":{"A":"2"}})");
}

TEST_CASE("the tree is that of the mended document, unless it is wanted as it is") {
    const std::string document = "<OFX><A><B>1</A></OFX></C>";
    CHECK(jsonOf("tree", document)["data"].dump() == R"({"OFX":{"A":{"B":"1"}}})");
    CHECK(tool({"tree", "--as-is", "-"}, document).status == 1);
}

TEST_CASE("a file that is not there has no tree") {
    const Finished finished = tool({"tree", "/nowhere"});
    CHECK(finished.status == 1);
    CHECK(finished.output == "");
}

TEST_CASE("a tree of a hundred thousand levels is written without running out of stack") {
    const int depth = 100'000;
    std::string document = "<OFX>";
    for (int i = 0; i < depth; ++i) document += i % 2 == 0 ? "<A>" : "<A><N>1";
    Command command{{"/bin/sh", "-c", "ulimit -s 256; exec \"$0\" tree --quiet -", BRACKWELL_TOOL}};
    command.input = document + "<B>x";
    const Finished finished = run(command);
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    CHECK(finished.output.ends_with("}}}\n"));
    CHECK(std::count(finished.output.begin(), finished.output.end(), '{') == depth + 3);
    CHECK(std::count(finished.output.begin(), finished.output.end(), '}') == depth + 3);
}
