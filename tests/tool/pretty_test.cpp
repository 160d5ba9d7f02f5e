// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

using namespace brackwell::tests;

TEST_CASE("pretty writes the body indented, closed and escaped, in document order") {
    CHECK(outputOf({"pretty"}, version1("<A><B>1<C>x &lt; y</C><D></D><B>2</A>")) ==
          "<OFX>\n\t<A>\n\t\t<B>1</B>\n\t\t<C>x &lt; y</C>\n\t\t<D></D>\n\t\t<B>2</B>\n\t</A>\n</OFX>\n");
}

TEST_CASE("pretty writes neither header nor source texts") {
    const std::string pretty = outputOf({"pretty"}, transactionsWith("<STMTTRN><NAME>Shop</STMTTRN>"));
    CHECK(pretty.starts_with("<OFX>\n"));
    CHECK(pretty.find("TVOFX_ORIGINAL_STRING") == pretty.npos);
    CHECK(pretty.find("Shop") == pretty.rfind("Shop"));
}

TEST_CASE("pretty writes a header line where the body does not begin with <OFX>") {
    struct Row {
        std::string document, pretty;
    };
    for (const Row& row : std::vector<Row>{
             {"OFXHEADER:100\n<X>1<OFX><A>2</OFX>", "OFXHEADER:100\n\n<X>1</X>\n<OFX>\n\t<A>2</A>\n</OFX>\n"},
             {"<?OFX?><A>1</A>", "OFXHEADER:100\n\n<A>1</A>\n"},
             {"<?xml version=\"1.0\"?><OFX>", "OFXHEADER:100\n\n"}}) {
        CAPTURE(row.document);
        const std::string pretty = outputOf({"pretty", "--as-is"}, row.document);
        CHECK(pretty == row.pretty);
        CHECK(outputOf({"pretty", "--as-is"}, pretty) == pretty);
        CHECK(jsonAsIs("tree", pretty)["data"] == jsonAsIs("tree", row.document)["data"]);
    }
}

TEST_CASE("what pretty writes of an example reads back to the same tree, and does not change again") {
    for (const char* name : {"account_information.ofx", "card.ofx", "checking.ofx", "every_element.ofx",
                             "extension_names.ofx", "household.ofx", "profile.ofx", "quirks.ofx",
                             "sign_on_failure.ofx", "utf_16.ofx", "windows_1252.ofx"}) {
        CAPTURE(name);
        const Finished pretty = tool({"pretty", examplePath(name)});
        CHECK(pretty.status == 0);
        CHECK(outputOf({"pretty"}, pretty.output) == pretty.output);
        const Finished tree = tool({"tree", examplePath(name)});
        CHECK(jsonOf("tree", pretty.output)["data"] == Json::parse(tree.output)["data"]);
    }
}

TEST_CASE("pretty writes a hundred thousand levels without running out of stack") {
    std::string document = "<OFX>";
    for (int i = 0; i < 100'000; ++i) document += i % 2 == 0 ? "<A>" : "<A><N>1";
    Command command{{"/bin/sh", "-c", "ulimit -s 256; exec \"$0\" pretty --quiet -", BRACKWELL_TOOL}};
    command.input = document + "<B>x";
    const Finished finished = run(command);
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    CHECK(finished.output.size() < 20 * document.size());
    CHECK(finished.output.ends_with("\n\t</A>\n</OFX>\n"));
}
