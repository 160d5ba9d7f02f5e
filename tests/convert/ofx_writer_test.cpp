// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/random_text.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

struct WriteRow {
    ParseDictionary dictionary;
    std::string_view text;
};

void checkWritten(std::initializer_list<WriteRow> rows) {
    for (const WriteRow& row : rows) {
        CAPTURE(row.dictionary);
        CHECK(TvOFXHelper::ofxDictionaryToString(row.dictionary) == row.text);
    }
}

struct PrettyRow {
    std::string_view text;
    std::string_view pretty;
};

void checkPretty(std::initializer_list<PrettyRow> rows) {
    for (const PrettyRow& row : rows) {
        CAPTURE(std::string(row.text));
        CHECK(TvOFXHelper::prettyPrintOfxMessageString(row.text) == row.pretty);
    }
}

}  // namespace

TEST_CASE("leaves are written without close tags, aggregates with them") {
    checkWritten({
        {{{"CODE", "0"}}, "<CODE>0\n"},
        {{{"STATUS", ParseDictionary{{"CODE", "0"}, {"SEVERITY", "INFO"}}}},
         "<STATUS>\n<CODE>0\n<SEVERITY>INFO\n</STATUS>\n"},
        {{{"A", ParseDictionary{{"B", ParseDictionary{{"C", "1"}}}, {"D", "2"}}}, {"E", "3"}},
         "<A>\n<B>\n<C>1\n</B>\n<D>2\n</A>\n<E>3\n"},
    });
}

TEST_CASE("an empty dictionary is written as nothing, and an empty aggregate as its tags") {
    checkWritten({
        {{}, ""},
        {ParseDictionary(), ""},
        {{{"MEMO", ParseDictionary()}}, "<MEMO>\n</MEMO>\n"},
        {{{"MEMO", ""}}, "<MEMO>\n"},
    });
    CHECK(TvOFXHelper::ofxDictionaryToString(parsed("")).empty());
}

TEST_CASE("each aggregate of an array is written, in the array's order") {
    checkWritten({
        {{{"STMTTRN", ParseValue::array({ParseDictionary{{"FITID", "a"}}, ParseDictionary{{"FITID", "b"}}})}},
         "<STMTTRN>\n<FITID>a\n</STMTTRN>\n<STMTTRN>\n<FITID>b\n</STMTTRN>\n"},
        {{{"E", ParseValue::array({ParseDictionary(), ParseDictionary()})}}, "<E>\n</E>\n<E>\n</E>\n"},
    });
}

TEST_CASE("texts in an array are not written") {
    checkWritten({
        {{{"NAME", ParseValue::array({"A", "B"})}}, ""},
        {{{"X", "1"}, {"NAME", ParseValue::array({"A", "B"})}, {"Y", "2"}}, "<X>1\n<Y>2\n"},
        {{{"N", ParseValue::array({"A", ParseDictionary{{"B", "1"}}, "C"})}}, "<N>\n<B>1\n</N>\n"},
        {{{"P", ParseDictionary{{"NAME", ParseValue::array({"A", "B"})}}}}, "<P>\n</P>\n"},
    });
}

TEST_CASE("values of one name stand together where the name first appeared") {
    CHECK(TvOFXHelper::ofxDictionaryToString(parsed("<A><B>1</A><C>2<A><B>3</A>")) ==
          "<A>\n<B>1\n</A>\n<A>\n<B>3\n</A>\n<C>2\n");
}

TEST_CASE("names and texts are written as they are, without escaping") {
    checkWritten({{{{"A<B>", "1 < 2 & 3 > 2"}, {"\u00C4 x", " two\nlines\t"}, {"", "empty"}},
                   "<A<B>>1 < 2 & 3 > 2\n<\u00C4 x> two\nlines\t\n<>empty\n"}});
}

TEST_CASE("a transaction's source text is written like a leaf") {
    CHECK(TvOFXHelper::ofxDictionaryToString(parsed("<STMTTRN><NAME>x\n<MEMO>y</STMTTRN>")) ==
          "<STMTTRN>\n<TVOFX_ORIGINAL_STRING><NAME>x\n<MEMO>y\n<NAME>x\n<MEMO>y\n</STMTTRN>\n");
}

TEST_CASE("a part of a tree is written without what is around it") {
    const ParseDictionary tree = parsed("<OFX><A><B>1</A><A><B>2<C><D>3</C></A><X>4</OFX>");
    CHECK(TvOFXHelper::ofxDictionaryToString(*tree["OFX"]["A"].elements()[1].dictionary()) ==
          "<B>2\n<C>\n<D>3\n</C>\n");
}

TEST_CASE("what is written is read as the same tree when no text needs escaping and no leaf is repeated") {
    for (const std::string_view body :
         {"<OFX><STATUS><CODE>0<SEVERITY>INFO</STATUS></OFX>", "<L><T><A>1</T><T><A>2</T><E></E></L>",
          "<A>text with > in it<B><C><D>1</C></B>"}) {
        const ParseDictionary tree = parsed(body);
        CHECK(parsed(TvOFXHelper::ofxDictionaryToString(tree)) == tree);
    }
}

TEST_CASE("each line is indented by the tags that are open") {
    checkPretty({{"<OFX>\n<SONRS>\n<STATUS>\n<CODE>0\n</STATUS>\n</SONRS>\n</OFX>",
                  "<OFX>\n\t<SONRS>\n\t\t<STATUS>\n\t\t\t<CODE>0\n\t\t</STATUS>\n\t</SONRS>\n</OFX>\n"}});
}

TEST_CASE("every line gets its line feed, the empty last one included") {
    checkPretty({
        {"", "\n"},
        {"\n", "\n\n"},
        {"a", "a\n"},
        {"a\n", "a\n\n"},
        {"<A>\n</A>\n", "<A>\n</A>\n\n"},
        {"<A>\n\nx\n</A>", "<A>\n\t\n\tx\n</A>\n"},
    });
}

TEST_CASE("a whole leaf with its close tag raises the level") {
    checkPretty({{"<CODE>0</CODE>\n<X>1\n</X>", "<CODE>0</CODE>\n\t<X>1\n</X>\n"}});
}

TEST_CASE("a line that begins with <? never changes the level") {
    checkPretty({{"<?xml version=\"1.0\"?>\n<?OFX VERSION=\"211\"?>\n<OFX>\n<?x?>\n</OFX>",
                  "<?xml version=\"1.0\"?>\n<?OFX VERSION=\"211\"?>\n<OFX>\n\t<?x?>\n</OFX>\n"}});
}

TEST_CASE("only a line that begins with < counts as a tag") {
    checkPretty({
        {" <A>\nx", " <A>\nx\n"},
        {"<A>\n </A>\nx", "<A>\n\t </A>\n\tx\n"},
        {"<A> \nx", "<A> \nx\n"},
        {"<A>\r\nx", "<A>\r\nx\n"},
        {"x>\ny", "x>\ny\n"},
        {"<\nx", "<\nx\n"},
        {"<>\nx", "<>\n\tx\n"},
        {">\nx", ">\nx\n"},
        {"<A>\n</A\nx", "<A>\n</A\nx\n"},
    });
}

TEST_CASE("the level never falls below none") {
    checkPretty({{"</A>\n</B>\n<C>\nx", "</A>\n</B>\n<C>\n\tx\n"}});
}

TEST_CASE("only line feeds end lines") { checkPretty({{"<A>\rx\u2028y\fz", "<A>\rx\u2028y\fz\n"}}); }

TEST_CASE("pretty text has the lines of the text after tabs") {
    const std::vector<std::string> pieces{"<A>", "</A>", "<B>1", "<?x?>", "\n", "\n", "\n", "x", " "};
    RandomText random(11);
    for (int i = 0; i < 2000; ++i) {
        const std::string text = random.soup(pieces, random.below(20));
        std::string stripped;
        const std::string pretty = TvOFXHelper::prettyPrintOfxMessageString(text);
        for (const char c : pretty)
            if (c != '\t') stripped += c;
        CAPTURE(text);
        REQUIRE(stripped == text + "\n");
    }
}
