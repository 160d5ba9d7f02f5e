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

TEST_CASE("a transaction in the tree has its source text") {
    const Json tree = jsonOf("tree", "<OFX><STMTTRN><NAME>A\n</STMTTRN></OFX>");
    CHECK(tree["header"].is_null());
    CHECK(tree["data"]["OFX"]["STMTTRN"].dump() == R"({"TVOFX_ORIGINAL_STRING":"<NAME>A\n","NAME":"A"})");
}

TEST_CASE("text that is not OFX is an empty result and no error") {
    CHECK(outputOf({"tree"}, "Dear customer,") == R"({"encoding":"ASCII","header":null,"data":null})"
                                                  "\n");
}

TEST_CASE("an XML document without its instruction is OFX without content") {
    CHECK(outputOf({"tree"}, "<?xml version=\"1.0\" encoding=\"utf-8\"?><OFX><A>1</A></OFX>") ==
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
    const Finished finished = tool({"tree", "-"}, "OFXHEADER:100\n<OFX></A></OFX>");
    CHECK(finished.status == 1);
    CHECK(finished.error.starts_with("-: Found close tag </A> without opening tag."));
    CHECK(finished.output == R"({"encoding":"UTF-8","header":{"OFXHEADER":"100"},"data":null})"
                             "\n");
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
    Command command{{"/bin/sh", "-c", "ulimit -s 256; exec \"$0\" tree -", BRACKWELL_TOOL}};
    command.input = document + "<B>x";
    const Finished finished = run(command);
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    CHECK(finished.output.ends_with("}}}\n"));
    CHECK(std::count(finished.output.begin(), finished.output.end(), '{') == depth + 3);
    CHECK(std::count(finished.output.begin(), finished.output.end(), '}') == depth + 3);
}

TEST_CASE("pretty indents the body") {
    CHECK(outputOf({"pretty"}, version1("<A><B>1<C>2</C><D></D></A>")) ==
          "<OFX>\n\t<A>\n\t\t<B>1\n\t\t<C>2\n\t\t<D>\n\t\t</D>\n\t</A>\n</OFX>\n\n");
}

TEST_CASE("pretty leaves out the header, and writes what is left of an empty document") {
    CHECK(outputOf({"pretty"}, "<?xml version=\"1.0\"?><OFX>") == "\n");
}
