// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

struct TreeRow {
    std::string_view body;
    ParseDictionary tree;
};

void checkTrees(std::initializer_list<TreeRow> rows) {
    for (const TreeRow& row : rows) {
        CAPTURE(std::string(row.body));
        CHECK(parsed(row.body) == row.tree);
    }
}

}  // namespace

TEST_CASE("an element is an aggregate when no text follows its tag, and a leaf when text does") {
    CHECK(parsed("<OFX><SIGNONMSGSRSV1><SONRS><STATUS><CODE>0<SEVERITY>INFO</STATUS></SONRS>"
                 "</SIGNONMSGSRSV1></OFX>") ==
          ParseDictionary{
              {"OFX",
               ParseDictionary{{"SIGNONMSGSRSV1",
                                ParseDictionary{{"SONRS", ParseDictionary{{"STATUS", ParseDictionary{
                                                                                         {"CODE", "0"},
                                                                                         {"SEVERITY", "INFO"},
                                                                                     }}}}}}}}});
}

TEST_CASE("leaves with and without close tags give the same tree") {
    const ParseDictionary open = parsed("<STATUS><CODE>0<SEVERITY>INFO</STATUS>");
    const ParseDictionary closed = parsed("<STATUS><CODE>0</CODE><SEVERITY>INFO</SEVERITY></STATUS>");
    const ParseDictionary mixed = parsed("<STATUS><CODE>0</CODE><SEVERITY>INFO</STATUS>");
    CHECK(open == closed);
    CHECK(open == mixed);
    CHECK(open == ParseDictionary{{"STATUS", ParseDictionary{{"CODE", "0"}, {"SEVERITY", "INFO"}}}});
}

TEST_CASE("a body without an element gives an empty tree") {
    for (const std::string_view body : {"", " ", "\n", "text", "OFXHEADER:100\nVERSION:102\n", "<", ">", "<>",
                                        "x<", "< >", "<><>", "?>", "</>", "< / >", "</ >"}) {
        CAPTURE(std::string(body));
        CHECK(parsed(body).isEmpty());
    }
}

TEST_CASE("text before the first tag and after a close tag is passed over") {
    checkTrees({
        {"OFXHEADER:100\r\nVERSION:102\r\n\r\n<A><B>1</B></A>", {{"A", ParseDictionary{{"B", "1"}}}}},
        {"<A>text<B>1</B>between<C>2</C>behind", {{"A", "text"}, {"B", "1"}, {"C", "2"}}},
        {"<A> <B>1</B>between<C>2</C>behind</A>behind all", {{"A", ParseDictionary{{"B", "1"}, {"C", "2"}}}}},
    });
}

TEST_CASE("names are trimmed, keep their case, and are not looked into") {
    checkTrees({
        {"< NAME >A</NAME>", {{"NAME", "A"}}},
        {"<\n\tNAME\r\n>A</NAME \n>", {{"NAME", "A"}}},
        {"<\u00A0NAME\u3000>A</NAME\u2028>", {{"NAME", "A"}}},
        {"<name>a</name><Name>b</Name><NAME>c</NAME>", {{"name", "a"}, {"Name", "b"}, {"NAME", "c"}}},
        {"<A x=\"1\">t</A x=\"1\">", {{"A x=\"1\"", "t"}}},
        {"<A B>t</A B>", {{"A B", "t"}}},
        {"<A<B>t</A<B>", {{"A<B", "t"}}},
        {"<A&amp;B>t", {{"A&amp;B", "t"}}},
        {"<A/>t</A/>", {{"A/", "t"}}},
        {"<!-- c -->t", {{"!-- c --", "t"}}},
        {"<\u00C4\u00D6>t", {{"\u00C4\u00D6", "t"}}},
    });
}

TEST_CASE("leaf texts are trimmed of white space and line breaks at both ends only") {
    checkTrees({
        {"<A> \t\r\n x \t\r\n <B>y", {{"A", "x"}, {"B", "y"}}},
        {"<A>a  b\nc</A>", {{"A", "a  b\nc"}}},
        {"<A>\u00A0\u3000x\u2003\u0085\u2028</A>", {{"A", "x"}}},
        {"<A>\u00A0</A>", {{"A", ParseDictionary()}}},
        {"<A>\u200Bx\uFEFF</A>", {{"A", "\u200Bx\uFEFF"}}},
        {"<A>\x1Fx\x7F</A>", {{"A", "\x1Fx\x7F"}}},
    });
}

TEST_CASE("three entities are replaced in leaf texts, and no other") {
    checkTrees({
        {"<NAME>A &amp; B", {{"NAME", "A & B"}}},
        {"<NAME>&lt;A&gt;</NAME>", {{"NAME", "<A>"}}},
        {"<NAME>&quot;A&apos;&#65;&nbsp;</NAME>", {{"NAME", "&quot;A&apos;&#65;&nbsp;"}}},
        {"<NAME>&amp;lt;</NAME>", {{"NAME", "&lt;"}}},
        {"<NAME>&AMP;&amp&;&</NAME>", {{"NAME", "&AMP;&amp&;&"}}},
        {"<NAME> &amp; </NAME>", {{"NAME", "&"}}},
        {"<A>1</A><B>&lt;</B><C>2</C>", {{"A", "1"}, {"B", "<"}, {"C", "2"}}},
    });
}

TEST_CASE("a name that is repeated in one aggregate holds all its values in document order") {
    checkTrees({
        {"<A>1<A>2", {{"A", ParseValue::array({"1", "2"})}}},
        {"<A>1</A><A>2</A><A>3</A>", {{"A", ParseValue::array({"1", "2", "3"})}}},
        {"<A>1<B>x<A>2<B>y<A>3",
         {{"A", ParseValue::array({"1", "2", "3"})}, {"B", ParseValue::array({"x", "y"})}}},
        {"<A>1</A><A><B>2</B></A>", {{"A", ParseValue::array({"1", ParseDictionary{{"B", "2"}}})}}},
        {"<A><B>1</B></A><A>2</A>", {{"A", ParseValue::array({ParseDictionary{{"B", "1"}}, "2"})}}},
        {"<A></A><A></A>", {{"A", ParseValue::array({ParseDictionary(), ParseDictionary()})}}},
    });
}

TEST_CASE("a name that occurs once in each of two aggregates is repeated in neither") {
    checkTrees({
        {"<P><A>1</P><Q><A>2</Q>", {{"P", ParseDictionary{{"A", "1"}}}, {"Q", ParseDictionary{{"A", "2"}}}}},
        {"<A><B><A>1</A></B></A>", {{"A", ParseDictionary{{"B", ParseDictionary{{"A", "1"}}}}}}},
        {"<P><A>1<Q><A>2</Q><A>3</P>",
         {{"P", ParseDictionary{{"A", ParseValue::array({"1", "3"})}, {"Q", ParseDictionary{{"A", "2"}}}}}}},
        {"<L><T><A>1</T><T><A>2<A>3</T></L>",
         {{"L", ParseDictionary{{"T", ParseValue::array({ParseDictionary{{"A", "1"}},
                                                         ParseDictionary{{"A", ParseValue::array({
                                                                                   "2",
                                                                                   "3",
                                                                               })}}})}}}}},
    });
}

TEST_CASE("keys stand in the order in which they first appear") {
    CHECK(treeText(parsed("<Z>1<A>2<Z>3<M><Y>4<B>5</M>")) ==
          R"({"Z": ["1", "3"], "A": "2", "M": {"Y": "4", "B": "5"}})");
}

TEST_CASE("an element without content is an empty dictionary") {
    checkTrees({
        {"<MEMO></MEMO>", {{"MEMO", ParseDictionary()}}},
        {"<T><MEMO> \n </MEMO><NAME>x</T>",
         {{"T", ParseDictionary{{"MEMO", ParseDictionary()}, {"NAME", "x"}}}}},
    });
}

TEST_CASE("an empty leaf without a close tag takes what follows into itself") {
    checkTrees({
        {"<MEMO>\n<NAME>x", {{"MEMO", ParseDictionary{{"NAME", "x"}}}}},
        {"<A><MEMO><NAME>x</MEMO></A>", {{"A", ParseDictionary{{"MEMO", ParseDictionary{{"NAME", "x"}}}}}}},
    });
}

TEST_CASE("what is still open at the end of the body needs no close tag") {
    checkTrees({
        {"<OFX><A><B>1", {{"OFX", ParseDictionary{{"A", ParseDictionary{{"B", "1"}}}}}}},
        {"<OFX><A><B>1\n", {{"OFX", ParseDictionary{{"A", ParseDictionary{{"B", "1"}}}}}}},
        {"<OFX><A> ", {{"OFX", ParseDictionary{{"A", ParseDictionary()}}}}},
    });
}

TEST_CASE("an extension name may be closed without its prefix") {
    checkTrees({
        {"<INTU.BID>3000</BID>", {{"INTU.BID", "3000"}}},
        {"<INTU.BID>3000</INTU.BID>", {{"INTU.BID", "3000"}}},
        {"<INTU.X><A>1</A></X><B>2", {{"INTU.X", ParseDictionary{{"A", "1"}}}, {"B", "2"}}},
        {"<INTU.X><A>1</A></INTU.X><B>2", {{"INTU.X", ParseDictionary{{"A", "1"}}}, {"B", "2"}}},
        {"<INTU.INTU.X><A>1</INTU.X>", {{"INTU.INTU.X", ParseDictionary{{"A", "1"}}}}},
        {"<INTU.></>", {{"INTU.", ParseDictionary()}}},
    });
}

TEST_CASE("a close tag goes to the innermost aggregate before it goes to the leaf") {
    checkTrees({
        {"<A><A>1</A><B>2", {{"A", ParseDictionary{{"A", "1"}}}, {"B", "2"}}},
        {"<INTU.CODE><CODE>1</CODE><SEVERITY>INFO</SEVERITY>",
         {{"INTU.CODE", ParseDictionary{{"CODE", "1"}}}, {"SEVERITY", "INFO"}}},
        {"<INTU.CODE><INTU.CODE>1</CODE><SEVERITY>INFO</SEVERITY>",
         {{"INTU.CODE", ParseDictionary{{"INTU.CODE", "1"}}}, {"SEVERITY", "INFO"}}},
    });
}

TEST_CASE("a leaf's close tag closes the leaf only once") {
    checkTrees({{"<A> <B>1</B></A>", {{"A", ParseDictionary{{"B", "1"}}}}}});
    for (const std::string_view body : {"<CODE>1</CODE></CODE>", "<A> <A>1</A></A>"}) {
        CAPTURE(std::string(body));
        CHECK_FALSE(TvOFXParser::parseOFXDataString(body));
    }
}

TEST_CASE("a leaf keeps its name until its close tag, so further text is one more value") {
    checkTrees({
        {"<A>1<>2<>3", {{"A", ParseValue::array({"1", "2", "3"})}}},
        {"<A>1< \n >2</A>3", {{"A", ParseValue::array({"1", "2"})}}},
        {"<A>1<><B>2", {{"A", ParseValue::array({"1", ParseDictionary{{"B", "2"}}})}}},
        {"<A><>x", {{"A", ParseDictionary{{"A", "x"}}}}},
        {"<A><> <B>1", {{"A", ParseDictionary{{"A", ParseDictionary{{"B", "1"}}}}}}},
    });
}

TEST_CASE("an empty close tag with nothing pending is accepted") {
    checkTrees({
        {"</><A>1", {{"A", "1"}}},
        {"<A>1</A></><B>2", {{"A", "1"}, {"B", "2"}}},
        {"<P><A>1</A></>ignored<B>2</P>", {{"P", ParseDictionary{{"A", "1"}, {"B", "2"}}}}},
    });
}

TEST_CASE("the last character of a body that ends in an open tag is read as that element's text") {
    checkTrees({
        {"<OFX>", {{"OFX", ">"}}},
        {"<A><B>", {{"A", ParseDictionary{{"B", ">"}}}}},
        {"<A>1<>", {{"A", ParseValue::array({"1", ">"})}}},
        {"<A>1</A>", {{"A", "1"}}},
    });
}

TEST_CASE("a body may end anywhere inside a tag") {
    checkTrees({
        {"<OFX", {}},
        {"<A>1<", {{"A", "1"}}},
        {"<A><", {{"A", ParseDictionary()}}},
        {"<A>1<B", {{"A", "1"}}},
        {"<A>1</A", {{"A", "1"}}},
        {"<A>1</A></", {{"A", "1"}}},
        {"<A> </A", {{"A", ParseDictionary()}}},
        {"<A", {}},
    });
}

TEST_CASE("a bare > belongs to the text that it stands in") {
    checkTrees({
        {"<A>1>2</A>", {{"A", "1>2"}}},
        {"<A>></A>", {{"A", ">"}}},
        {">><A>1", {{"A", "1"}}},
    });
}

TEST_CASE("bytes that are no UTF-8 are carried along") {
    checkTrees({{"<A\xFF>\xC3(\x80</A\xFF>", {{"A\xFF", "\xC3(\x80"}}}});
}

TEST_CASE("a zero byte is a character like any other") {
    using namespace std::string_view_literals;
    checkTrees({{"<A\0>x\0y</A\0><A>z</A>"sv, {{"A\0"sv, "x\0y"sv}, {"A", "z"}}}});
}

TEST_CASE("names that begin alike are told apart, whatever their length") {
    const std::string seven(7, 'N');
    const std::string sixteen(16, 'N');
    const std::string seventeen(17, 'N');
    const std::string other = sixteen + "M";
    const std::string body = "<" + seven + ">1</" + seven + "><" + sixteen + ">2</" + sixteen + "><" +
                             seventeen + ">3</" + seventeen + "><" + other + ">4</" + other + ">";
    CHECK(parsed(body) == ParseDictionary{{seven, "1"}, {sixteen, "2"}, {seventeen, "3"}, {other, "4"}});
}
