// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

const std::string kRemedy =
    "  Without --as-is the file is repaired; \"brackwell repair\" lists the changes.\n";

/// What is said of a document that does not read as it is.
std::string errorOf(const std::string& document, std::map<std::string, std::string> environment = {}) {
    const Finished finished = tool({"csv", "--as-is", "-"}, document, std::move(environment));
    CHECK(finished.status == 1);
    return finished.error;
}

/// The same after its first line.
std::string explanationOf(const std::string& document, std::map<std::string, std::string> environment = {}) {
    const std::string error = errorOf(document, std::move(environment));
    const std::size_t begin = error.find("\n  ");
    return begin == std::string::npos ? "" : error.substr(begin + 1);
}

}  // namespace

TEST_CASE("a document that does not read is explained with both places, the lines there and what to do") {
    const Finished finished = tool(
        {"show", "--as-is", "-"},
        "OFXHEADER:100\n\n<OFX>\n <STMTRS>\n  <CURDEF>EUR\n  <BANKTRANLIST>\n   <STMTTRN>\n    <TRNAMT>1\n"
        "   </STMTTRN>\n </STMTRS>\n</OFX>\n");
    CHECK(finished.status == 1);
    CHECK(finished.output == "");
    CHECK(finished.error ==
          "-:10:2: Found close tag </STMTRS> without opening tag. "
          "Maybe there is a close tag missing for <BANKTRANLIST>.\n"
          "  The innermost open element starts at line 6, column 3:\n"
          "  6 |   <BANKTRANLIST>\n"
          "    |   ^\n"
          "  The close tag is at line 10, column 2:\n"
          "   8 |     <TRNAMT>1\n"
          "   9 |    </STMTTRN>\n"
          "  10 |  </STMTRS>\n"
          "     |  ^\n"
          "  11 | </OFX>\n"
          "  Likely cause: The close tag of <BANKTRANLIST> is missing.\n" +
              kRemedy);
}

TEST_CASE("the places of both tags and the likely cause are found in all kinds of broken documents") {
    struct Row {
        std::string document;
        std::string open;
        std::string openPlace;
        std::string close;
        std::string closePlace;  ///< as in front of the error
        std::string cause;
    };
    for (const Row& row : std::vector<Row>{
             {"<OFX></B></OFX>", "<OFX>", "line 1, column 1", "</B>", "1:6",
              "The close tag is one too many, or its open tag is missing."},
             {"<OFX><A>1</A></NAME>x</OFX>", "<OFX>", "line 1, column 1", "</NAME>", "1:14",
              "The open tag is missing."},
             {"<OFX><STATUS><CODE>1</STATUS>\n<CODE>2</STATUS></OFX>", "<OFX>", "line 1, column 1",
              "</STATUS>", "2:8", "The close tag is misspelt, or belongs to another element than <OFX>."},
             {"<OFX></OFX></B>", "", "", "</B>", "1:12", "The close tag is one too many"},
             {"<OFX>\n<STMTTRN>\n<MEMO>\n<FITID>1\n</STMTTRN></OFX>", "<MEMO>", "line 3, column 1",
              "</STMTTRN>", "5:1",
              "<MEMO> has neither a value nor a close tag, so what follows was read as its content."},
             {"<OFX><STMTTRN><NAME>x</STMTRN></OFX>", "<STMTTRN>", "line 1, column 6", "</STMTRN>", "1:22",
              "The close tag is misspelt, or belongs to another element than <STMTTRN>."},
             {"<OFX><!-- x -->\n<A>1</OFX>", "<!-- x -->", "line 1, column 6", "</OFX>", "2:5",
              "A comment, which is not part of OFX"},
             {"<OFX><!DOCTYPE x>\n<A>1</OFX>", "<!DOCTYPE x>", "line 1, column 6", "</OFX>", "2:5",
              "An instruction or declaration"},
             {"<OFX><A x=\"1\"><B>1</B></A></OFX>", "<A x=\"1\">", "line 1, column 6", "</A>", "1:23",
              "A tag has blanks or attributes in it"},
             {"OFXHEADER:100\n\n<ofx><a x=\"1\"><b>1</b></a></ofx>", "<a x=\"1\">", "line 3, column 6",
              "</a>", "3:23", "A tag has blanks or attributes in it"},
             {"OFXHEADER:100\n\n<ofx><name\n<b>1</b></ofx>", "<ofx>", "line 3, column 1", "</b>", "4:5",
              "A tag has no \">\" at its end."},
             {"<OFX><A/><C>1</C></OFX>", "<A/>", "line 1, column 6", "</OFX>", "1:18", "A self-closing tag"},
             {"<OFX><NAME>\n<![CDATA[x]]></NAME></OFX>", "<![CDATA[x]]>", "line 2, column 1", "</NAME>",
              "2:14", "A CDATA section"},
             {"<OFX>\r\n<A>1\r<STATUS>\n\n<B>2\n</OFX>", "<STATUS>", "line 3, column 1", "</OFX>", "6:1",
              "The close tag of <STATUS> is missing."},
             {"\n\n  <OFX>桜é</B></OFX>", "", "", "</B>", "3:10", ""},
             {"<?xml version=\"1.0\"?><?OFX VERSION=\"211\"?>\n<OFX><A><B>1</B></OFX>", "<A>",
              "line 2, column 6", "</OFX>", "2:17", ""},
             {"<OFX><INTU.A><B>1</A></INTU.A></OFX>", "<OFX>", "line 1, column 1", "</INTU.A>", "1:22", ""},
         }) {
        CAPTURE(row.document);
        const std::string error = errorOf(row.document);
        CHECK(error.starts_with("-:" + row.closePlace + ": Found close tag " + row.close +
                                " without opening tag."));
        CHECK(contains(error, "  The close tag is at line " + row.closePlace.substr(0, 1) + ", column "));
        CHECK(contains(error, " missing for ") == !row.open.empty());
        CHECK(contains(error, "  The innermost open element ") == !row.open.empty());
        if (!row.open.empty()) CHECK(contains(error, " missing for " + row.open + ".\n"));
        if (!row.open.empty()) CHECK(contains(error, " element starts at " + row.openPlace + ":\n"));
        CHECK(contains(error, "  Likely cause: " + row.cause));
        CHECK(error.ends_with(kRemedy));
        CHECK(contains(error, " | "));
    }
}

TEST_CASE("a document that stands after other text is found by its explanation") {
    const std::string cause = "  Likely cause: ";
    CHECK(explanationOf("Dear customer,\n\n <OFX><A>1</A></OFX>") ==
          cause + "A document begins at line 3, column 2, but the text before it hides it.\n" + kRemedy);
    CHECK(explanationOf("x OFXHEADER:100\n\n<OFX></A></OFX>") ==
          cause + "A document begins at line 1, column 3, but the text before it hides it.\n" + kRemedy);
    CHECK(explanationOf("<OFX ><A>1</A></OFX>") ==
          cause + "The tag <OFX> has blanks or attributes in it.\n" + kRemedy);
    CHECK(explanationOf("<ofx><a>1</a></ofx>") == cause + "The tags are in lower case.\n" + kRemedy);
    CHECK(errorOf("Dear customer,\n\n <OFX><A>1</A></OFX>").starts_with("-:3:2: not an OFX document\n"));
    CHECK(tool({"csv", "-"}, "Dear customer,\n\n <OFX><A>1</A></OFX>").status == 0);
}

TEST_CASE("the explanation names the tags that the parser's own error names") {
    // Documents made by cutting tags out of a good one, one after the other.
    const std::string good = "<OFX><A><B><C>1</C><D>2</B><E><F>3</F></E></A><G><H>4</G></OFX>";
    int broken = 0;
    for (std::size_t begin = good.find('<'); begin != std::string::npos; begin = good.find('<', begin + 1)) {
        std::string document = good;
        document.erase(begin, good.find('>', begin) + 1 - begin);
        if (!document.starts_with("<OFX>")) continue;
        CAPTURE(document);
        const Finished finished = tool({"tree", "--as-is", "-"}, document);
        if (finished.status == 0) continue;
        ++broken;
        const std::string first = linesOf(finished.error).at(0);
        const std::string close = first.substr(first.find('<'), first.find('>') - first.find('<') + 1);
        const std::string column = std::to_string(document.find(close) + 1);
        CHECK(first.starts_with("-:1:" + column + ": Found close tag "));
        CHECK(contains(finished.error, "\n  The close tag is at line 1, column " + column + ":\n"));
        const std::size_t open = first.rfind('<');
        if (!contains(first, " Maybe ")) continue;
        CHECK(contains(finished.error,
                       "\n  The innermost open element starts at line 1, column " +
                           std::to_string(document.find(first.substr(open, first.size() - 1 - open)) + 1) +
                           ":\n"));
    }
    CHECK(broken >= 8);
}

TEST_CASE("long lines are cut around the place, and the mark stands under it") {
    const std::string document =
        "<OFX><A>" + std::string(1000, 'x') + "<B>1</C>" + std::string(1000, 'y') + "</A>";
    for (const char* columns : {"20", "40", "100"}) {
        CAPTURE(columns);
        const std::string explanation = explanationOf(document, {{"COLUMNS", columns}});
        const std::vector<std::string> lines = linesOf(explanation);
        std::size_t found = 0;
        for (std::size_t i = 1; i < lines.size(); ++i) {
            if (!contains(lines[i - 1], "x</C>") && !contains(lines[i - 1], "1</C>")) continue;
            ++found;
            const std::string ellipsis = "\u2026";
            CHECK(contains(lines[i - 1], " | " + ellipsis));
            CHECK(lines[i - 1].ends_with(ellipsis));
            CHECK(lines[i - 1].size() <= std::stoul(columns) + 2 * (ellipsis.size() - 1));
            CHECK(lines[i].find('^') + ellipsis.size() - 1 == lines[i - 1].find("</C>"));
        }
        CHECK(found == 1);
    }
}

TEST_CASE("the mark counts the columns of wide characters") {
    const std::vector<std::string> lines = linesOf(explanationOf("<OFX><A>桜桜e\u0301</B>"));
    CHECK(lines.at(lines.size() - 4) == "  1 | <OFX><A>桜桜e\u0301</B>");
    CHECK(lines.at(lines.size() - 3) == "    |              ^");
}

TEST_CASE("what a terminal might obey is visible in an explanation, also where there is none") {
    const std::string explanation =
        explanationOf("<OFX>\n<A>x\x1b[2J\u009b1m\u202Ey\ttab\n<B\x07>\n<C>1\n</\x1b]0;x>\n</OFX>");
    for (const char* character : {"\x1b", "\u009b", "\u202E", "\x07", "\t"})
        CHECK_FALSE(contains(explanation, character));
    CHECK(contains(explanation, "  The innermost open element starts at line 3, column 1:\n"));
    CHECK(contains(explanation, "  5 | </␛]0;x>\n"));
}

TEST_CASE("a secret in the lines of an explanation is a mask of one length, and the mark follows it") {
    const std::vector<std::string> lines =
        linesOf(explanationOf("<OFX>\n<SESSCOOKIE>a long cookie</SESSCOOKIE></B>"));
    CHECK(lines.at(lines.size() - 4) == "  2 | <SESSCOOKIE>****</SESSCOOKIE></B>");
    CHECK(lines.at(lines.size() - 3) == "    |                              ^");
}

TEST_CASE("bytes that are no text are explained with the first of them, and the encodings that read them") {
    struct Row {
        std::vector<std::string> options;
        std::string bytes;
        std::string offset;
        std::string encodings;
    };
    for (const Row& row : std::vector<Row>{
             {{}, "<OFX><A>caf\x81</OFX>", "offset 11 (hexadecimal 81)", "ISO-8859-1, "},
             {{"--encoding", "utf-8"}, "<OFX><A>caf\xE9</OFX>", "offset 11 (hexadecimal E9)", "windows-1252"},
             {{"--encoding", "utf-8"}, "\xEF\xBB\xBF<OFX>\u00E9\uFFFD\xC0", "offset 13 (hexadecimal C0)", ""},
             {{"--encoding", "ascii"}, "<OFX><A>\u00E9</OFX>", "", "UTF-8"},
             {{}, "\xFF\xFF<", "offset 0 (hexadecimal FF)", ""},
             {{}, "\xFF\xFE<", "", ""},
         }) {
        CAPTURE(row.bytes);
        std::vector<std::string> arguments{"csv", "-"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const Finished finished = tool(arguments, row.bytes);
        CHECK(finished.status == 1);
        CHECK(finished.error.starts_with("-: Data is not OFX or unknown character encoding.\n"));
        CHECK(contains(finished.error, "is not UTF-8") == !row.offset.empty());
        CHECK(contains(finished.error, row.offset));
        std::string hint = lineWith(finished.error, "--encoding NAME");
        CHECK(hint.empty() == row.encodings.empty());
        CHECK(contains(hint, row.encodings));
        if (!hint.empty()) CHECK(hint.ends_with('.'));
        if (!hint.empty()) hint.pop_back();
        // Each of the encodings does what is said of it.
        std::size_t at = hint.empty() ? std::string::npos : hint.find(": ") + 2;
        while (at != std::string::npos && at < hint.size()) {
            const std::size_t end = std::min(hint.find(", ", at), hint.size());
            CHECK(tool({"csv", "-", "--encoding", hint.substr(at, end - at)}, row.bytes).status == 0);
            at = end + 2;
        }
    }
}

TEST_CASE("a large broken document is explained in time") {
    std::string deep = "<OFX>";
    for (int i = 0; i < 300'000; ++i) deep += "<A>\n<B>1\n";
    CHECK(contains(explanationOf(deep + "</OFX>"), "  The close tag is at line 600001, column 1:"));
    std::string wide = "<OFX><A>\n";
    for (int i = 0; i < 300'000; ++i) wide += "<USERKEY>x<B>1";
    CHECK(contains(explanationOf(wide + "</OFX>"), "  The close tag is at line 2, column 4200001:"));
}
