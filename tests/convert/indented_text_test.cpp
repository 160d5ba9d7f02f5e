// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>
#include <doctest/doctest.h>

#include <map>

#include "support/documents.h"
#include "support/effort.h"
#include "support/elements_text.h"
#include "support/random_text.h"
#include "support/repeated.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// What is wrong with the text of a tree; "" when it is read as the same tree.
std::string problemOf(const ParseDictionary& tree, const std::string& text) {
    Error error;
    const auto read = TvOFXParser::parseOFXDataString(text, &error);
    if (!read) return error.description;
    const std::string wanted = elementsText(tree);
    const std::string found = elementsText(*read);
    return wanted == found ? "" : "read as " + found + " instead of " + wanted;
}

struct Row {
    std::string_view body, text;
};

void check(std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        CAPTURE(row.body);
        const ParseDictionary tree = parsed(row.body);
        const std::string text = indentedOFXText(tree);
        CHECK(text == row.text);
        CHECK(problemOf(tree, text) == "");
    }
}

}  // namespace

TEST_CASE("a tree is written one element a line, indented and closed, in document order") {
    check({
        {"<OFX><A><B>1<C>2</A><D>3</OFX>",
         "<OFX>\n\t<A>\n\t\t<B>1</B>\n\t\t<C>2</C>\n\t</A>\n\t<D>3</D>\n</OFX>\n"},
        {"<BUY>1<SELL>2<BUY>3", "<BUY>1</BUY>\n<SELL>2</SELL>\n<BUY>3</BUY>\n"},
        {"<A>1<B><C>2</B><A>3<B><C>4</B>",
         "<A>1</A>\n<B>\n\t<C>2</C>\n</B>\n<A>3</A>\n<B>\n\t<C>4</C>\n</B>\n"},
        {"<A></A><B>x", "<A></A>\n<B>x</B>\n"},
        {"<A>", "<A>&gt;</A>\n"},
        {"", ""},
        {"no element", ""},
    });
    CHECK(indentedOFXText({}) == "");
}

TEST_CASE("texts are escaped") {
    check({
        {"<A>a & b", "<A>a &amp; b</A>\n"},
        {"<A>&lt;B&gt;1&lt;/B&gt;", "<A>&lt;B&gt;1&lt;/B&gt;</A>\n"},
        {"<A>&amp;lt;", "<A>&amp;lt;</A>\n"},
        {"<A>&amp;amp;&", "<A>&amp;amp;&amp;</A>\n"},
        {"<A>x > y<B>&quot;", "<A>x &gt; y</A>\n<B>&amp;quot;</B>\n"},
        {"<A>x\n y<B>\"'", "<A>x\n y</A>\n<B>\"'</B>\n"},
    });
}

TEST_CASE("names are written as they stand, whatever is in them") {
    check({
        {"<A x=\"1\"><B>2</A x=\"1\">", "<A x=\"1\">\n\t<B>2</B>\n</A x=\"1\">\n"},
        {"<A/>x", "<A/>x</A/>\n"},
        {"<!-- c -->x", "<!-- c -->x</!-- c -->\n"},
        {"<A<B>x", "<A<B>x</A<B>\n"},
        {"<A&B>x", "<A&B>x</A&B>\n"},
        {"< \u00A0A\nB >x", "<A\nB>x</A\nB>\n"},
        {"<OFX ><A>1</OFX>", "<OFX>\n\t<A>1</A>\n</OFX>\n"},
    });
}

TEST_CASE("a leaf stays open where its close tag would close the aggregate around it") {
    check({
        {"<A><A>1<B>2</A>", "<A>\n\t<A>1\n\t<B>2</B>\n</A>\n"},
        {"<A><B>2<A>1</A>", "<A>\n\t<B>2</B>\n\t<A>1\n</A>\n"},
        {"<INTU.A><A>1</A>", "<INTU.A>\n\t<A>1\n</INTU.A>\n"},
        {"<A><INTU.A>1</INTU.A></A>", "<A>\n\t<INTU.A>1</INTU.A>\n</A>\n"},
        {"<A><A><A>1</A></A>", "<A>\n\t<A>\n\t\t<A>1\n\t</A>\n</A>\n"},
        {"<INTU.A><A><B>1</A></A>", "<INTU.A>\n\t<A>\n\t\t<B>1</B>\n\t</A>\n</INTU.A>\n"},
    });
}

TEST_CASE("the source text of a transaction is left out, and a document's own element of that name is not") {
    check({
        {"<STMTTRN><NAME>x<MEMO>y</STMTTRN>", "<STMTTRN>\n\t<NAME>x</NAME>\n\t<MEMO>y</MEMO>\n</STMTTRN>\n"},
        {"<STMTTRN></STMTTRN>", "<STMTTRN></STMTTRN>\n"},
        {"<STMTTRN></STMTTRN >", "<STMTTRN></STMTTRN>\n"},
        {"<STMTTRN><STMTTRN><NAME>x",
         "<STMTTRN>\n\t<STMTTRN>\n\t\t<NAME>x</NAME>\n\t</STMTTRN>\n</STMTTRN>\n"},
        {"<STMTTRN><TVOFX_ORIGINAL_STRING>x</STMTTRN>",
         "<STMTTRN>\n\t<TVOFX_ORIGINAL_STRING>x</TVOFX_ORIGINAL_STRING>\n</STMTTRN>\n"},
        {"<A><TVOFX_ORIGINAL_STRING>x</A>",
         "<A>\n\t<TVOFX_ORIGINAL_STRING>x</TVOFX_ORIGINAL_STRING>\n</A>\n"},
    });
    const ParseDictionary transaction = *parsed("<STMTTRN><NAME>x</STMTTRN>")["STMTTRN"].dictionary();
    CHECK(indentedOFXText(transaction) == "<NAME>x</NAME>\n");
}

TEST_CASE("a part of a tree is written without what stands around it") {
    const ParseDictionary tree = parsed("<OFX><A><A>1<B>2</A><C>3</OFX>");
    CHECK(indentedOFXText(*tree["OFX"]["A"].dictionary()) == "<A>1</A>\n<B>2</B>\n");
}

TEST_CASE("a tree that was built in code is written in the order in which it was added") {
    ParseDictionaryBuilder builder;
    builder.leaf("A", "1 < 2");
    builder.open("B");
    builder.close();
    builder.leaf("A", "\u00E9");
    const ParseDictionary tree = builder.finish();
    const std::string text = indentedOFXText(tree);
    CHECK(text == "<A>1 &lt; 2</A>\n<B></B>\n<A>\u00E9</A>\n");
    CHECK(problemOf(tree, text) == "");
}

TEST_CASE("indentation ends at sixteen tabs") {
    const ParseDictionary tree = parsed(repeated("<A>", 20) + "<B>x");
    const std::string text = indentedOFXText(tree);
    CHECK(problemOf(tree, text) == "");
    CHECK(text.find("\n" + std::string(16, '\t') + "<B>x</B>\n") != text.npos);
    CHECK(text.find(std::string(17, '\t')) == text.npos);
    CHECK(text.ends_with("\n\t</A>\n</A>\n"));
}

TEST_CASE("a name of more than 64 bytes is written no more often than a document must") {
    const std::string longName(65, 'N');
    const std::string open = "<" + longName + ">";
    const std::string close = "</" + longName + ">";
    const std::map<std::string, std::string> rows{
        {open + "x<>y<B>z", open + "x\n<>y\n<B>z</B>\n"},
        {open + "<><>x<B>y", open + "\n\t<>\n\t\t<>x\n\t\t<B>y</B>\n"},
        {open + " <> <> " + close + close + close, open + "\n\t<>\n\t\t<>" + close + "\n"},
        {"<OFX>" + open + "<B>x" + close + "<C>y</OFX>",
         "<OFX>\n\t" + open + "\n\t\t<B>x</B>\n\t" + close + "\n\t<C>y</C>\n</OFX>\n"},
        {"<OFX>" + open + "<B>x" + close + "</OFX>", "<OFX>\n\t" + open + "\n\t\t<B>x</B>\n"},
        {open + close + open + close, open + close + "\n" + open + close + "\n"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.first);
        const ParseDictionary tree = parsed(row.first);
        CHECK(indentedOFXText(tree) == row.second);
        CHECK(problemOf(tree, row.second) == "");
    }
    const std::string name = longName.substr(1);
    CHECK(indentedOFXText(parsed("<" + name + ">x<>y")) ==
          "<" + name + ">x</" + name + ">\n<" + name + ">y</" + name + ">\n");
}

TEST_CASE("no document has a text longer than in proportion to it") {
    const std::string longName(20000, 'N');
    for (const std::string& body :
         {repeated("<A>", 20000), repeated("<STMTTRN>", 10000), repeated("<STMTTRN><NAME>x", 5000),
          repeated("<STMTTRN><NAME>x</STMTTRN >", 5000), "<" + longName + ">" + repeated("\n<>", 20000),
          "<" + longName + ">x" + repeated("<>y", 20000), "<A>" + repeated("&", 50000),
          "<" + longName.substr(0, 64) + ">x" + repeated("<>y", 20000)}) {
        CAPTURE(body.substr(0, 30));
        const ParseDictionary tree = parsed(body);
        const std::string text = indentedOFXText(tree);
        CHECK(text.size() <= 52 * body.size());
        const std::string problem = problemOf(tree, text);
        CHECK(problem.substr(0, 100) == "");
    }
}

TEST_CASE("the text is handed on in pieces that end with a line, until it is not wanted") {
    const ParseDictionary tree = parsed("<OFX>" + repeated("<A><B>some text</A>", 20000));
    std::string text;
    std::size_t pieces = 0;
    CHECK(writeIndentedOFXText(tree, [&](std::string_view piece) {
        CHECK(piece.ends_with('\n'));
        CHECK(piece.size() < 70000);
        text.append(piece);
        ++pieces;
        return true;
    }));
    CHECK(pieces > 5);
    CHECK(text == indentedOFXText(tree));
    pieces = 0;
    CHECK_FALSE(writeIndentedOFXText(tree, [&pieces](std::string_view) { return ++pieces < 2; }));
    CHECK(pieces == 2);
    CHECK(writeIndentedOFXText({}, [](std::string_view) { return false; }));
    CHECK_FALSE(writeIndentedOFXText(parsed("<A>1"), [](std::string_view) { return false; }));
}

TEST_CASE("the examples are read from their text as they were") {
    for (const char* name : {"account_information.ofx", "card.ofx", "checking.ofx", "every_element.ofx",
                             "extension_names.ofx", "household.ofx", "profile.ofx", "quirks.ofx",
                             "sign_on_failure.ofx", "utf_16.ofx", "windows_1252.ofx"}) {
        CAPTURE(name);
        TvOFXParser parser(exampleData(name));
        if (std::string_view(name) == "windows_1252.ofx") parser.setStringEncoding(TextEncodingWindows1252);
        const auto tree = parser.parseWithError()->ofxData.value();
        const std::string text = indentedOFXText(tree);
        CHECK(text.starts_with("<OFX>\n"));
        CHECK(problemOf(tree, text) == "");
        const auto read = TvOFXParser(Data::view(text)).parseWithError();
        REQUIRE(read);
        CHECK(elementsText(read->ofxData.value()) == elementsText(tree));
    }
}

TEST_CASE("whatever is in a body that reads, its text reads as the same tree") {
    const std::string longOpen = "<" + std::string(70, 'L') + ">";
    const std::vector<std::string> pieces{"<A>",
                                          "<A>",
                                          "</A>",
                                          "</A>",
                                          "<B>",
                                          "</B>",
                                          "<INTU.A>",
                                          "</INTU.A>",
                                          "<>",
                                          "< >",
                                          "<STMTTRN>",
                                          "</STMTTRN>",
                                          "<A x>",
                                          "</A x>",
                                          "<A/>",
                                          "</A/>",
                                          "x",
                                          "y z",
                                          " ",
                                          "\n",
                                          "\u00A0",
                                          "\u3000",
                                          ">",
                                          "<",
                                          "&",
                                          "&amp;",
                                          "&lt;",
                                          "&gt;",
                                          "&lt;A&gt;",
                                          "&amp;lt;",
                                          "\"",
                                          "\xC3",
                                          "\x80",
                                          "<\xC2>",
                                          "<!-- ",
                                          " -->",
                                          "</STMTTRN >",
                                          longOpen,
                                          "</" + longOpen.substr(1),
                                          "<TVOFX_ORIGINAL_STRING>"};
    RandomText random(12);
    std::size_t readable = 0;
    for (std::size_t round = scaled(60000); round > 0; --round) {
        const std::string body = random.soup(pieces, 1 + random.below(16));
        const auto tree = TvOFXParser::parseOFXDataString(body);
        if (!tree) continue;
        ++readable;
        const std::string text = indentedOFXText(*tree);
        const std::string problem = problemOf(*tree, text);
        if (!problem.empty() || text.size() > 52 * body.size() + 200) {
            CAPTURE(body);
            CAPTURE(text);
            REQUIRE(problem == "the text is too long");
        }
    }
    CHECK(readable > scaled(60000) / 10);
}
