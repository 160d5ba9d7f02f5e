// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;
using namespace std::string_view_literals;

namespace {

struct SgmlRow {
    std::string_view text;
    ParseDictionary header;
};

void checkAll(std::initializer_list<SgmlRow> rows) {
    for (const SgmlRow& row : rows) {
        CAPTURE(std::string(row.text));
        CHECK(TvOFXParser::parseSGMLHeader(row.text) == row.header);
    }
}

/// The header of a version 2 document, and what follows it.
struct XmlRow {
    std::string_view text;
    ParseDictionary header;
    std::string_view body;
};

void checkAll(std::initializer_list<XmlRow> rows) {
    for (const XmlRow& row : rows) {
        CAPTURE(std::string(row.text));
        ParseDictionary found;
        const std::size_t index = TvOFXParser::parseXmlHeader(row.text, &found);
        CHECK(found == row.header);
        REQUIRE(index <= row.text.size());
        CHECK(row.text.substr(index) == row.body);
    }
}

}  // namespace

TEST_CASE("the usual colon header is read name by name") {
    const ParseDictionary header = TvOFXParser::parseSGMLHeader(
        "OFXHEADER:100\r\nDATA:OFXSGML\r\nVERSION:102\r\nSECURITY:NONE\r\nENCODING:USASCII\r\n"
        "CHARSET:1252\r\nCOMPRESSION:NONE\r\nOLDFILEUID:NONE\r\nNEWFILEUID:20240131\r\n\r\n<OFX></OFX>");
    CHECK(treeText(header) ==
          R"({"OFXHEADER": "100", "DATA": "OFXSGML", "VERSION": "102", "SECURITY": "NONE", )"
          R"("ENCODING": "USASCII", "CHARSET": "1252", "COMPRESSION": "NONE", "OLDFILEUID": "NONE", )"
          R"("NEWFILEUID": "20240131"})");
}

TEST_CASE("a colon header ends at the first <OFX>, and there is none without it or when it stands first") {
    checkAll(std::initializer_list<SgmlRow>{
        {"", {}},
        {"OFXHEADER:100\nVERSION:102\n", {}},
        {"OFXHEADER:100\n<ofx>", {}},
        {"<OFX>\nA:1\n<OFX>", {}},
        {"A:1\n<OFX>B:2\n<OFX>C:3", {{"A", "1"}}},
        {"A:1<OFX>", {{"A", "1"}}},
        {"A:1\n<X>B:2\n<OFX>", {{"A", "1"}, {"<X>B", "2"}}},
    });
}

TEST_CASE("only header lines with exactly one colon count") {
    checkAll(std::initializer_list<SgmlRow>{
        {"VERSION:102\nX:a:b\n<OFX>", {{"VERSION", "102"}}},
        {"no colon\nA:1\n<OFX>", {{"A", "1"}}},
        {"OFXHEADER:100 DATA:OFXSGML\nA:1\n<OFX>", {{"A", "1"}}},
        {"A::1\n::\n:\nB:2\n<OFX>", {{"B", "2"}}},
    });
}

TEST_CASE("a header value may be empty, a header name may not") {
    checkAll(std::initializer_list<SgmlRow>{
        {"SECURITY:\n<OFX>", {{"SECURITY", ""}}},
        {"SECURITY: \t \n<OFX>", {{"SECURITY", ""}}},
        {":value\n \t:value\nA:1\n<OFX>", {{"A", "1"}}},
    });
}

TEST_CASE("spaces and tabs are trimmed from header names and values, and nothing else") {
    checkAll(std::initializer_list<SgmlRow>{
        {" \tVERSION \t: \t102\t \n<OFX>", {{"VERSION", "102"}}},
        {"A b: c  d \n<OFX>", {{"A b", "c  d"}}},
        {"\u00A0VERSION:\u00A0"
         "102\n<OFX>",
         {{"\u00A0VERSION",
           "\u00A0"
           "102"}}},
    });
}

TEST_CASE("every other character at the ends of header names and values stays") {
    const std::string_view lineBreaksAndColon = "\n\v\f\r:";
    for (int byte = 0; byte < 0x80; ++byte) {
        const char character = static_cast<char>(byte);
        if (lineBreaksAndColon.find(character) != std::string_view::npos) continue;
        CAPTURE(byte);
        const std::string around(1, character);
        const bool isBlank = character == ' ' || character == '\t';
        const std::string name = isBlank ? "A" : around + "A" + around;
        const std::string text = around + "A" + around + ":" + around + "A" + around + "\n<OFX>";
        CHECK(TvOFXParser::parseSGMLHeader(text) == ParseDictionary{{name, name}});
    }
}

TEST_CASE("a later header line of a name replaces the earlier one in its place") {
    const ParseDictionary header = TvOFXParser::parseSGMLHeader("A:1\nB:2\nX y:3\nA:4\nX y:5\n<OFX>");
    CHECK(treeText(header) == R"({"A": "4", "B": "2", "X y": "5"})");
}

TEST_CASE("header lines end at any line break") {
    for (const std::string_view end :
         {"\n", "\r", "\r\n", "\v", "\f", "\u0085", "\u2028", "\u2029", "\n\n\r"}) {
        const std::string text = std::string("A:1").append(end).append("B:2").append(end).append("<OFX>");
        CAPTURE(text);
        CHECK(TvOFXParser::parseSGMLHeader(text) == ParseDictionary{{"A", "1"}, {"B", "2"}});
    }
}

TEST_CASE("the usual version 2 header is read with the encoding of its declaration") {
    ParseDictionary header;
    const std::string_view text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n"
        "<?OFX OFXHEADER=\"200\" VERSION=\"211\" SECURITY=\"NONE\" OLDFILEUID=\"NONE\" "
        "NEWFILEUID=\"NONE\"?>\n"
        "<OFX></OFX>";
    const std::size_t body = TvOFXParser::parseXmlHeader(text, &header);
    CHECK(text.substr(body) == "\n<OFX></OFX>");
    CHECK(treeText(header) ==
          R"({"ENCODING": "UTF-8", "OFXHEADER": "200", "VERSION": "211", "SECURITY": "NONE", )"
          R"("OLDFILEUID": "NONE", "NEWFILEUID": "NONE"})");
}

TEST_CASE("the declaration's encoding is what is in double quotes after encoding=") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?xml encoding=\"A\"?><?OFX V=\"1\"?>b", {{"ENCODING", "A"}, {"V", "1"}}, "b"},
        {"<?xml encoding=\" a b \"?><?OFX V=\"1\"?>b", {{"ENCODING", " a b "}, {"V", "1"}}, "b"},
        {"<?xml encoding=\"\"?><?OFX V=\"1\"?>b", {{"ENCODING", ""}, {"V", "1"}}, "b"},
        {"<?xml xencoding=\"A\"?><?OFX V=\"1\"?>b", {{"ENCODING", "A"}, {"V", "1"}}, "b"},
        {"<?xml encoding='A' encoding=\"B\"?><?OFX V=\"1\"?>b", {{"ENCODING", "B"}, {"V", "1"}}, "b"},
        {"<?xml encoding=\"A\" encoding=\"B\"?><?OFX V=\"1\"?>b", {{"ENCODING", "A"}, {"V", "1"}}, "b"},
        {"<?xmlencoding=\"A\"?><?OFX V=\"1\"?>b", {{"ENCODING", "A"}, {"V", "1"}}, "b"},
        {"<?xml encoding=\"A\"?>b", {{"ENCODING", "A"}}, ""},
    });
}

TEST_CASE("a declaration without an encoding in double quotes records none and is skipped") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?xml version=\"1.0\"?><?OFX V=\"1\"?>b", {{"V", "1"}}, "b"},
        {"<?xml encoding='A'?><?OFX V=\"1\"?>b", {{"V", "1"}}, "b"},
        {"<?xml encoding = \"A\"?><?OFX V=\"1\"?>b", {{"V", "1"}}, "b"},
        {"<?xml ENCODING=\"A\"?><?OFX V=\"1\"?>b", {{"V", "1"}}, "b"},
        {"<?xml?><?OFX V=\"1\"?><A encoding=\"x\">b", {{"V", "1"}}, "<A encoding=\"x\">b"},
        {"<?xml?><?OFX encoding=\"A\"?>b", {{"encoding", "A"}}, "b"},
    });
}

TEST_CASE("an upper-case declaration is passed over with its encoding") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?XML encoding=\"A\"?><?OFX V=\"1\"?>b", {{"V", "1"}}, "b"},
        {"<?OFX V=\"1\"?>b", {{"V", "1"}}, "b"},
        {"anything <?OFX V=\"1\"?>b", {{"V", "1"}}, "b"},
    });
}

TEST_CASE("an encoding without a closing quote runs on to the next quote, and reading goes on there") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?xml encoding=\"A?><?OFX V=\"1\"?>b", {{"ENCODING", "A?><?OFX V="}}, ""},
        {"<?xml encoding=\"A?><x a=\"1\"><?OFX V=\"1\"?>b", {{"ENCODING", "A?><x a="}, {"V", "1"}}, "b"},
        {"<?xml encoding=\"A?>b", {{"ENCODING", "A?>b"}}, ""},
        {"<?xml encoding=\"", {{"ENCODING", ""}}, ""},
    });
}

TEST_CASE("an instruction inside the declaration is found only after its encoding") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?xml encoding=\"A\" <?OFX V=\"1\"?>b", {{"ENCODING", "A"}, {"V", "1"}}, "b"},
        {"<?xml <?OFX V=\"1\" encoding=\"A\"?>b", {{"ENCODING", "A"}}, ""},
        {"<?xml <?OFX V=\"1\"?>b", {}, ""},
        {"<?xml <?OFX V=\"1\"?><?OFX V=\"2\"?>b", {{"V", "2"}}, "b"},
    });
}

TEST_CASE("of several instructions the first is read, and the body begins at its end") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?OFX V=\"1\"?><?OFX V=\"2\"?>b", {{"V", "1"}}, "<?OFX V=\"2\"?>b"},
        {"<?OFX V=\"1\" <?OFX W=\"2\"?>b?>c", {{"V", "1"}, {"W", "2"}}, "b?>c"},
    });
}

TEST_CASE("a declaration that does not end reaches to the end of the text") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?xml encoding=\"A\"", {{"ENCODING", "A"}}, ""},
        {"<?xml <?OFX V=\"1\" ", {}, ""},
        {"<?xml", {}, ""},
    });
}

TEST_CASE("the instruction is split at spaces and line feeds") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?OFX A=\"1\" B=\"2\"\nC=\"3\"  \n D=\"4\" ?>b",
         {{"A", "1"}, {"B", "2"}, {"C", "3"}, {"D", "4"}},
         "b"},
        {"<?OFX A=\"1\"\r\nB=\"2\"?>b", {{"A", "1\"\r"}, {"B", "2"}}, "b"},
        {"<?OFX A=\"1\"\tB=\"2\"?>b", {{"A", "1\"\tB"}}, "b"},
        {"<?OFX A=\"1 2\"?>b", {{"A", "1"}}, "b"},
        {"<?OFXA=\"1\"?>b", {{"A", "1"}}, "b"},
    });
}

TEST_CASE("a piece of the instruction is a name, an equals sign and a value in quotes or none") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?OFX A=1 B='2'?>b", {{"A", "1"}, {"B", "'2'"}}, "b"},
        {"<?OFX A=\"\"\"1\"\" B=\"2 C=3\"?>b", {{"A", "1"}, {"B", "2"}, {"C", "3"}}, "b"},
        {"<?OFX A=1\"2?>b", {{"A", "1\"2"}}, "b"},
        {"<?OFX A=1=2 B==2 C?>b", {{"A", "1"}}, "b"},
        {"<?OFX A= =1 = B=\"\" C=\"\"\" D=2?>b", {{"D", "2"}}, "b"},
        {"<?OFX A=\"1\" A=\"2\"?>b", {{"A", "2"}}, "b"},
        {"<?xml encoding=\"A\"?><?OFX ENCODING=\"B\"?>b", {{"ENCODING", "B"}}, "b"},
    });
}

TEST_CASE("every other character of the instruction belongs to the name or value that it stands in") {
    for (int byte = 0; byte < 0x80; ++byte) {
        const char character = static_cast<char>(byte);
        if (character == ' ' || character == '\n' || character == '=' || character == '"') continue;
        CAPTURE(byte);
        const std::string around(1, character);
        const std::string part = around + "1" + around;
        const std::string text = "<?OFX " + part + "=\"" + part + "\" B=" + part + " C=2?>b";
        ParseDictionary found;
        CHECK(text.substr(TvOFXParser::parseXmlHeader(text, &found)) == "b");
        CHECK(found == ParseDictionary{{part, part}, {"B", part}, {"C", "2"}});
    }
}

TEST_CASE("without an instruction the body is empty") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?xml version=\"1.0\"?><OFX><A>1</OFX>", {}, ""},
        {"<OFX>", {}, ""},
        {"<?xml version=\"1.0\"?><?ofx V=\"1\"?>b", {}, ""},
        {"<?OFX", {}, ""},
    });
}

TEST_CASE("after an empty instruction the body begins at its end") {
    checkAll(std::initializer_list<XmlRow>{{"<?OFX?><OFX>b", {}, "?><OFX>b"}});
}

TEST_CASE("an instruction of blanks alone is one, and holds nothing") {
    checkAll(std::initializer_list<XmlRow>{{"<?OFX ?><OFX>b", {}, "<OFX>b"}});
}

TEST_CASE("an instruction that does not end reaches to the end of the text") {
    checkAll(std::initializer_list<XmlRow>{
        {"<?OFX V=\"1\"", {{"V", "1"}}, ""},
        {"<?OFX V=\"1\" ><OFX>", {{"V", "1"}}, ""},
        {"<?OFX V=\"1\"?", {{"V", "1\"?"}}, ""},
    });
}

TEST_CASE("without text or dictionary no header is read") {
    ParseDictionary header{{"A", "1"}};
    CHECK(TvOFXParser::parseXmlHeader("", &header) == 0);
    CHECK(header == ParseDictionary{{"A", "1"}});
    CHECK(TvOFXParser::parseXmlHeader("<?OFX V=\"1\"?>b", nullptr) == 0);
}

TEST_CASE("header values are added to those that the dictionary holds") {
    ParseDictionary header{{"A", "1"}, {"B", "2"}};
    TvOFXParser::parseXmlHeader("<?OFX B=\"3\" C=\"4\"?>", &header);
    CHECK(treeText(header) == R"({"A": "1", "B": "3", "C": "4"})");
}
