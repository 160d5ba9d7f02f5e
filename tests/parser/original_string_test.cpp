// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// What a body's only transaction, at its top level, has for its source text.
std::string originalOf(std::string_view body) {
    return std::string(parsed(body)["STMTTRN"]["TVOFX_ORIGINAL_STRING"].text().value_or("nothing"));
}

}  // namespace

TEST_CASE("a transaction keeps its source text from its first child to its end") {
    struct Row {
        std::string_view body;
        std::string_view original;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"<STMTTRN><TRNAMT>1</STMTTRN>", "<TRNAMT>1"},
             {"<STMTTRN>\n  <TRNAMT>1\n  <NAME>x\n</STMTTRN>\n", "<TRNAMT>1\n  <NAME>x\n"},
             {"<STMTTRN>\r\n<TRNAMT>1</TRNAMT>\r\n</STMTTRN>", "<TRNAMT>1</TRNAMT>\r\n"},
             {"<STMTTRN> <NAME> A &amp; B \t</STMTTRN>", "<NAME> A &amp; B \t"},
             {"<STMTTRN><PAYEE><NAME>x</PAYEE></STMTTRN>", "<PAYEE><NAME>x</PAYEE>"},
             {"< STMTTRN ><NAME>x</STMTTRN>", "<NAME>x"},
         }) {
        CAPTURE(std::string(row.body));
        CHECK(originalOf(row.body) == row.original);
    }
}

TEST_CASE("the source text stands first in the transaction, beside its elements") {
    CHECK(treeText(parsed("<STMTTRN><NAME>x<MEMO>y</STMTTRN>")) ==
          R"({"STMTTRN": {"TVOFX_ORIGINAL_STRING": "<NAME>x<MEMO>y", "NAME": "x", "MEMO": "y"}})");
}

TEST_CASE("two transactions in one list are an array of two dictionaries, one is a single dictionary") {
    const ParseDictionary first{{"TVOFX_ORIGINAL_STRING", "<NAME>a"}, {"NAME", "a"}};
    const ParseDictionary second{{"TVOFX_ORIGINAL_STRING", "<NAME>b</NAME>"}, {"NAME", "b"}};
    CHECK(parsed("<BANKTRANLIST><STMTTRN><NAME>a</STMTTRN></BANKTRANLIST>") ==
          ParseDictionary{{"BANKTRANLIST", ParseDictionary{{"STMTTRN", first}}}});
    CHECK(
        parsed("<BANKTRANLIST><STMTTRN><NAME>a</STMTTRN><STMTTRN><NAME>b</NAME></STMTTRN></BANKTRANLIST>") ==
        ParseDictionary{{"BANKTRANLIST", ParseDictionary{{"STMTTRN", ParseValue::array({first, second})}}}});
}

TEST_CASE("an empty transaction has no source text") {
    CHECK(parsed("<STMTTRN></STMTTRN>") == ParseDictionary{{"STMTTRN", ParseDictionary()}});
    CHECK(parsed("<STMTTRN>\n</STMTTRN>") == ParseDictionary{{"STMTTRN", ParseDictionary()}});
    CHECK(parsed("<STMTTRN> ") == ParseDictionary{{"STMTTRN", ParseDictionary()}});
}

TEST_CASE("the source text of a transaction that is never closed runs to the end of the body") {
    CHECK(originalOf("<STMTTRN><NAME>x\n <MEMO>y\n") == "<NAME>x\n <MEMO>y\n");
    CHECK(originalOf("<STMTTRN><NAME>x</STMTTRN") == "<NAME>x</STMTTRN");
    CHECK(originalOf("<STMTTRN><") == "<");
}

TEST_CASE("only the exact end of a transaction ends its source text") {
    CHECK(originalOf("<STMTTRN><NAME>x< /STMTTRN><X>y") == "<NAME>x< /STMTTRN><X>y");
    CHECK(originalOf("<STMTTRN><NAME>x</STMTTRN ><X>y") == "<NAME>x</STMTTRN ><X>y");
    CHECK(parsed("<STMTTRN><NAME>x< /STMTTRN><STMTTRN><NAME>y</STMTTRN>")["STMTTRN"] ==
          ParseValue::array({
              ParseDictionary{{"TVOFX_ORIGINAL_STRING", "<NAME>x< /STMTTRN><STMTTRN><NAME>y"}, {"NAME", "x"}},
              ParseDictionary{{"TVOFX_ORIGINAL_STRING", "<NAME>y"}, {"NAME", "y"}},
          }));
}

TEST_CASE("transactions inside a transaction end their source text at the same place") {
    const ParseDictionary tree = parsed("<STMTTRN><A>1<STMTTRN><B>2</STMTTRN><C>3</STMTTRN>");
    CHECK(tree["STMTTRN"]["TVOFX_ORIGINAL_STRING"].text() == "<A>1<STMTTRN><B>2");
    CHECK(tree["STMTTRN"]["STMTTRN"]["TVOFX_ORIGINAL_STRING"].text() == "<B>2");
}

TEST_CASE("unclosed transactions all end their source text at the one end that follows") {
    const ParseDictionary tree = parsed("<STMTTRN><STMTTRN><STMTTRN><B>2</STMTTRN>");
    CHECK(tree["STMTTRN"]["TVOFX_ORIGINAL_STRING"].text() == "<STMTTRN><STMTTRN><B>2");
    CHECK(tree["STMTTRN"]["STMTTRN"]["TVOFX_ORIGINAL_STRING"].text() == "<STMTTRN><B>2");
    CHECK(tree["STMTTRN"]["STMTTRN"]["STMTTRN"]["TVOFX_ORIGINAL_STRING"].text() == "<B>2");
}

TEST_CASE("a transaction that is a leaf has no source text") {
    CHECK(parsed("<STMTTRN>text</STMTTRN>") == ParseDictionary{{"STMTTRN", "text"}});
}

TEST_CASE("an end of a transaction inside another tag ends the source text, too") {
    // The tag is <A</STMTTRN>, which opens an element of that name.
    const ParseDictionary tree = parsed("<STMTTRN><N>1<A</STMTTRN>2</STMTTRN>3");
    CHECK(tree["STMTTRN"]["TVOFX_ORIGINAL_STRING"].text() == "<N>1<A");
    CHECK(tree["STMTTRN"]["A</STMTTRN"].text() == "2");
}

TEST_CASE("an element with the name of the source text comes after it") {
    CHECK(parsed("<STMTTRN><TVOFX_ORIGINAL_STRING>x</STMTTRN>")["STMTTRN"] ==
          ParseDictionary{{"TVOFX_ORIGINAL_STRING", ParseValue::array({"<TVOFX_ORIGINAL_STRING>x", "x"})}});
}

TEST_CASE("only elements called STMTTRN have a source text") {
    CHECK(parsed("<stmttrn><A>1</stmttrn><INTU.STMTTRN><A>1</STMTTRN><STMTTRNRS><A>1</STMTTRNRS>") ==
          ParseDictionary{{"stmttrn", ParseDictionary{{"A", "1"}}},
                          {"INTU.STMTTRN", ParseDictionary{{"A", "1"}}},
                          {"STMTTRNRS", ParseDictionary{{"A", "1"}}}});
}
