// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include <bit>

#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;
using namespace std::string_literals;
using namespace std::string_view_literals;

namespace {

const Error kNoData{"Brackwell", 1, "no data to parse", "OFX Parser Error"};
const Error kUndecodable{"Brackwell", 1, "Data is not OFX or unknown character encoding.",
                         "OFX Parser Error"};

constexpr TextEncoding kHostUTF16 =
    std::endian::native == std::endian::little ? TextEncodingUTF16LittleEndian : TextEncodingUTF16BigEndian;
constexpr TextEncoding kOtherUTF16 =
    std::endian::native == std::endian::little ? TextEncodingUTF16BigEndian : TextEncodingUTF16LittleEndian;

constexpr std::string_view kDocument = "<OFX><NAME>\u00C4</NAME></OFX>";
const ParseDictionary kTree{{"OFX", ParseDictionary{{"NAME", "\u00C4"}}}};

std::string encoded(std::string_view text, TextEncoding encoding) {
    const std::optional<Data> data = encodeText(text, encoding);
    REQUIRE(data);
    return std::string(data->bytes());
}

/// What one run of the parser did.
struct Run {
    std::shared_ptr<TvOFXParserResult> result;
    TextEncoding encoding;
    std::string data;
    Error error;
};

Run parse(std::string_view bytes, TextEncoding preset = TextEncodingNone) {
    TvOFXParser parser(Data::copy(bytes));
    parser.setStringEncoding(preset);
    Run run;
    run.result = parser.parseWithError(&run.error);
    run.encoding = parser.stringEncoding();
    run.data = std::string(parser.data()->bytes());
    return run;
}

/// A run that must give a tree.
ParseDictionary treeOf(const Run& run) {
    REQUIRE_MESSAGE(run.result, run.error.description);
    REQUIRE(run.result->ofxData);
    return *run.result->ofxData;
}

void checkNotOFX(const Run& run) {
    REQUIRE_MESSAGE(run.result, run.error.description);
    CHECK_FALSE(run.result->ofxHeader);
    CHECK_FALSE(run.result->ofxData);
    CHECK(run.error == Error());
}

}  // namespace

TEST_CASE("a parser keeps its data and has no encoding at first") {
    const Data data = Data::copy("abc");
    const std::shared_ptr<TvOFXParser> parser = TvOFXParser::initWithData(data);
    CHECK(parser->data() == data);
    CHECK(parser->stringEncoding() == TextEncodingNone);
    parser->setStringEncoding(TextEncodingWindows1252);
    CHECK(parser->stringEncoding() == TextEncodingWindows1252);
    CHECK_FALSE(TvOFXParser::initWithData(std::nullopt)->data());
}

TEST_CASE("absent or empty data is an error") {
    for (const std::optional<Data>& data : {std::optional<Data>(), std::optional<Data>(Data())}) {
        TvOFXParser parser(data);
        Error error;
        CHECK(parser.parseWithError(&error) == nullptr);
        CHECK(error == kNoData);
        CHECK(parser.parseWithError() == nullptr);
    }
}

TEST_CASE("a mark at the beginning tells the encoding and is removed") {
    struct Row {
        std::string mark;
        TextEncoding encoding;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"\xBF\xBB\xBF", TextEncodingUTF8},
             {"\x00\x00\xFE\xFF"s, TextEncodingUTF32BigEndian},
             {"\xFE\xFF", TextEncodingUTF16BigEndian},
             {"\xFF\xFE", TextEncodingUTF16LittleEndian},
         }) {
        CAPTURE(row.encoding);
        const std::string document = encoded(kDocument, row.encoding);
        const Run run = parse(row.mark + document);
        CHECK(treeOf(run) == kTree);
        CHECK(run.encoding == row.encoding);
        CHECK(run.data == document);
    }
}

TEST_CASE("a preset encoding wins over the mark, which is removed all the same") {
    struct Row {
        std::string mark;
        TextEncoding preset;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"\xFE\xFF", TextEncodingUTF8},
             {"\xFF\xFE", TextEncodingUTF8},
             {"\xBF\xBB\xBF", TextEncodingUTF16BigEndian},
             {"\x00\x00\xFE\xFF"s, TextEncodingISOLatin1},
             {"\xFE\xFF", TextEncodingUTF16LittleEndian},
         }) {
        CAPTURE(row.preset);
        const std::string document = encoded(kDocument, row.preset);
        const Run run = parse(row.mark + document, row.preset);
        CHECK(treeOf(run) == kTree);
        CHECK(run.encoding == row.preset);
        CHECK(run.data == document);
    }
}

TEST_CASE("with a preset UTF-16 the mark is removed and the rest is in the host's byte order") {
    const std::string_view hostMark = kHostUTF16 == TextEncodingUTF16LittleEndian ? "\xFF\xFE" : "\xFE\xFF";
    const std::string_view otherMark = kHostUTF16 == TextEncodingUTF16LittleEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const std::string_view mark : {hostMark, otherMark})
        CHECK(treeOf(parse(std::string(mark) + encoded(kDocument, kHostUTF16), TextEncodingUTF16)) == kTree);
    checkNotOFX(parse(std::string(otherMark) + encoded(kDocument, kOtherUTF16), TextEncodingUTF16));
}

TEST_CASE("with a preset UTF-16 a second mark decides nothing") {
    const std::string_view otherMark = kHostUTF16 == TextEncodingUTF16LittleEndian ? "\xFE\xFF" : "\xFF\xFE";
    const std::string document = encoded(kDocument, kOtherUTF16);
    CHECK(treeOf(parse(std::string(otherMark) + document)) == kTree);
    checkNotOFX(parse(std::string(otherMark).append(otherMark) + document, TextEncodingUTF16));
}

TEST_CASE("the mark FF FE 00 00 is that of UTF-16") {
    const Run run = parse("\xFF\xFE\x00\x00<\x00\x00\x00"sv);
    checkNotOFX(run);
    CHECK(run.encoding == TextEncodingUTF16LittleEndian);
    CHECK(run.data == "\x00\x00<\x00\x00\x00"sv);
}

TEST_CASE("only one mark is removed") {
    const Run run = parse("\xFE\xFF\xFE\xFF" + encoded(kDocument, TextEncodingUTF16BigEndian));
    CHECK(run.data.substr(0, 2) == "\xFE\xFF");
    CHECK(run.encoding == TextEncodingUTF16BigEndian);
}

TEST_CASE("a byte order mark with nothing after it is an empty text, which is not OFX") {
    for (const std::string& mark : {"\xBF\xBB\xBF"s, "\x00\x00\xFE\xFF"s, "\xFE\xFF"s, "\xFF\xFE"s}) {
        const Run run = parse(mark);
        checkNotOFX(run);
        CHECK(run.data.empty());
        CHECK(run.encoding != TextEncodingNone);
    }
}

TEST_CASE("the usual mark of UTF-8 is left to the decoder, which drops it") {
    const std::string bytes = "\xEF\xBB\xBF" + std::string(kDocument);
    const Run run = parse(bytes);
    CHECK(treeOf(run) == kTree);
    CHECK(run.encoding == TextEncodingUTF8);
    CHECK(run.data == bytes);
}

TEST_CASE("without mark and preset UTF-8 is tried first, then UTF-16") {
    const Run utf8 = parse(kDocument);
    CHECK(treeOf(utf8) == kTree);
    CHECK(utf8.encoding == TextEncodingUTF8);
    const Run utf16 = parse(encoded(kDocument, kHostUTF16));
    CHECK(treeOf(utf16) == kTree);
    CHECK(utf16.encoding == TextEncodingUTF16);
}

TEST_CASE("bytes that are UTF-8 but do not begin like OFX are tried as UTF-16") {
    const std::string bytes = encoded("<OFX><NAME>A</NAME></OFX>", kHostUTF16);
    REQUIRE(isValidUTF8(bytes));
    const Run run = parse(bytes);
    CHECK(treeOf(run) == ParseDictionary{{"OFX", ParseDictionary{{"NAME", "A"}}}});
    CHECK(run.encoding == TextEncodingUTF16);
    checkNotOFX(parse(encoded("<OFX><NAME>A</NAME></OFX>", kOtherUTF16)));
}

TEST_CASE("text that is not OFX is tried as ASCII in the end, and is no error") {
    for (const std::string_view text : {"hello", "hello!", " ", "<ofx>", "<?Xml version=\"1.0\"?>",
                                        "OFXHEADER", "xOFXHEADER:100", "QXIF: a file of another kind"}) {
        CAPTURE(std::string(text));
        const Run run = parse(text);
        checkNotOFX(run);
        CHECK(run.encoding == TextEncodingASCII);
    }
}

TEST_CASE("bytes that are neither OFX in UTF-8 or UTF-16 nor ASCII are an error") {
    const std::string latin = encoded("<OFX><NAME>\u00C4</NAME></OFX>", TextEncodingISOLatin1);
    for (const std::string& bytes : {latin, "\xEF\xBB\xBF"s, "caf\xE9 "s, "caf\xE9"s,
                                     "\xEF\xBB\xBF"
                                     "caf\u00E9"s}) {
        CAPTURE(bytes);
        TvOFXParser parser(Data::copy(bytes));
        Error error;
        CHECK(parser.parseWithError(&error) == nullptr);
        CHECK(error == kUndecodable);
        CHECK(parser.stringEncoding() == TextEncodingNone);
        CHECK(parser.parseWithError() == nullptr);
    }
}

TEST_CASE("a preset encoding is the only one that is tried") {
    const Run latin = parse(encoded(kDocument, TextEncodingISOLatin1), TextEncodingISOLatin1);
    CHECK(treeOf(latin) == kTree);
    CHECK(latin.encoding == TextEncodingISOLatin1);
    const Run windows = parse("<OFX><NAME>\x80\x96", TextEncodingWindows1252);
    CHECK(treeOf(windows)["OFX"]["NAME"].text() == "\u20AC\u2013");
    struct Row {
        std::string_view bytes;
        TextEncoding preset;
    };
    for (const Row& row : {Row{kDocument, kHostUTF16}, Row{"hello", TextEncodingUTF8},
                           Row{"hello", TextEncodingWindows1252}}) {
        CAPTURE(row.preset);
        const Run run = parse(row.bytes, row.preset);
        checkNotOFX(run);
        CHECK(run.encoding == row.preset);
    }
}

TEST_CASE("a preset encoding that fails is an error and leaves no encoding") {
    struct Row {
        std::string bytes;
        TextEncoding preset;
    };
    for (const Row& row : std::initializer_list<Row>{
             {std::string(kDocument), TextEncodingASCII},
             {"<OFX>\xFF", TextEncodingUTF8},
             {"<OFX>", TextEncodingUTF16LittleEndian},
             {"<OFX>", TextEncodingUTF32BigEndian},
             {"<OFX>\x81", TextEncodingWindows1252},
             {"<OFX>\x8D", TextEncodingWindows1252},
             {"<OFX>\x8F", TextEncodingWindows1252},
             {"<OFX>\x90", TextEncodingWindows1252},
             {"<OFX>\x9D", TextEncodingWindows1252},
             {"<OFX>", 0x12345678},
         }) {
        CAPTURE(row.bytes);
        CAPTURE(row.preset);
        const Run run = parse(row.bytes, row.preset);
        CHECK(run.result == nullptr);
        CHECK(run.error == kUndecodable);
        CHECK(run.encoding == TextEncodingNone);
    }
}

TEST_CASE("the header's own encoding is recorded and decides nothing") {
    const Run run = parse("OFXHEADER:100\nENCODING:USASCII\nCHARSET:1252\n\n" + std::string(kDocument));
    CHECK(treeOf(run) == kTree);
    CHECK(run.encoding == TextEncodingUTF8);
    CHECK((*run.result->ofxHeader)["ENCODING"].text() == "USASCII");
    CHECK((*run.result->ofxHeader)["CHARSET"].text() == "1252");
    const Run xml = parse("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><?OFX VERSION=\"211\"?>" +
                          std::string(kDocument));
    CHECK(treeOf(xml) == kTree);
    CHECK(xml.encoding == TextEncodingUTF8);
    CHECK((*xml.result->ofxHeader)["ENCODING"].text() == "ISO-8859-1");
}

TEST_CASE("a text begins like OFX with one of five prefixes after white space") {
    struct Row {
        std::string_view text;
        bool valid;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"<?xml", true},
             {"<?XML", true},
             {"OFXHEADER:", true},
             {"<OFX>", true},
             {"<?OFX", true},
             {"<?xmlx", true},
             {"<?OFXx", true},
             {"OFXHEADER:100", true},
             {"<OFX>x", true},
             {" \r\n\t<OFX>", true},
             {"\u00A0\u3000\u2028<?xml", true},
             {"", false},
             {" ", false},
             {"<?Xml", false},
             {"<?ofx", false},
             {"<ofx>", false},
             {"<OFX", false},
             {"<OFX >", false},
             {"OFXHEADER", false},
             {"OfxHeader:", false},
             {"x<OFX>", false},
             {"< OFX>", false},
             {"\uFEFF<OFX>", false},
             {"<?xm", false},
             {"?xml", false},
             {"OFXHEADER :", false},
             {"OFXHEADER \n:", false},
         }) {
        CAPTURE(std::string(row.text));
        CHECK(TvOFXParser::stringHasValidOfxHeaderPrefix(row.text) == row.valid);
    }
}

TEST_CASE("each shape of document is read in its own way") {
    struct Row {
        std::string_view document;
        std::optional<ParseDictionary> header;
        ParseDictionary tree;
    };
    const ParseDictionary tree{{"OFX", ParseDictionary{{"A", "1"}}}};
    for (const Row& row : std::initializer_list<Row>{
             {"OFXHEADER:100\nVERSION:102\n\n<OFX><A>1</OFX>",
              ParseDictionary{{"OFXHEADER", "100"}, {"VERSION", "102"}}, tree},
             {"\r\n\r\n \u00A0OFXHEADER:100\r\n<OFX><A>1</OFX>\r\n", ParseDictionary{{"OFXHEADER", "100"}},
              tree},
             {"OFXHEADER:100\n<X><A>1</X>", ParseDictionary(), {{"X", ParseDictionary{{"A", "1"}}}}},
             {"<?xml version=\"1.0\" encoding=\"UTF-8\"?><?OFX VERSION=\"211\"?><OFX><A>1</A></OFX>",
              ParseDictionary{{"ENCODING", "UTF-8"}, {"VERSION", "211"}}, tree},
             {"<?XML version=\"1.0\" encoding=\"UTF-8\"?><?OFX VERSION=\"211\"?><OFX><A>1</A></OFX>",
              ParseDictionary{{"VERSION", "211"}}, tree},
             {"\n<?OFX VERSION=\"211\"?><OFX><A>1</A></OFX>\n", ParseDictionary{{"VERSION", "211"}}, tree},
             {"<?xml version=\"1.0\"?><OFX><A>1</A></OFX>", ParseDictionary(), {}},
             {"<?OFX?><OFX><A>1</A></OFX>", ParseDictionary(), tree},
             {"\n <OFX><A>1</OFX> \n", std::nullopt, tree},
             {"<OFX>\nVERSION:102\n<OFX><A>1",
              std::nullopt,
              {{"OFX", ParseValue::array({"VERSION:102", ParseDictionary{{"A", "1"}}})}}},
         }) {
        CAPTURE(std::string(row.document));
        const Run run = parse(row.document);
        CHECK(treeOf(run) == row.tree);
        CHECK(run.result->ofxHeader.has_value() == row.header.has_value());
        if (row.header && run.result->ofxHeader) CHECK(*run.result->ofxHeader == *row.header);
    }
}

TEST_CASE("white space at both ends is no part of the body") {
    // The last character of the trimmed body is the bracket, which stays.
    CHECK(treeOf(parse("  <OFX>\n\n")) == ParseDictionary{{"OFX", ">"}});
    CHECK(treeOf(parse("<OFX><STMTTRN><A>1\n\u3000\n"))["OFX"]["STMTTRN"]["TVOFX_ORIGINAL_STRING"].text() ==
          "<A>1");
}

TEST_CASE("an error in the body ends parsing when there is a place for it") {
    TvOFXParser parser(Data::copy("OFXHEADER:100\n<OFX><A>1</B></OFX>"));
    Error error;
    CHECK(parser.parseWithError(&error) == nullptr);
    CHECK(error == Error{"Brackwell", 1,
                         "Found close tag </B> without opening tag.\n"
                         "Maybe there is a close tag missing for <OFX>",
                         "OFX Parser Error"});
    CHECK(parser.stringEncoding() == TextEncodingUTF8);
}

TEST_CASE("without a place for it an error in the body gives a result with the header alone") {
    TvOFXParser parser(Data::copy("OFXHEADER:100\n<OFX><A>1</B></OFX>"));
    const std::shared_ptr<TvOFXParserResult> result = parser.parseWithError();
    REQUIRE(result);
    CHECK(result->ofxHeader == ParseDictionary{{"OFXHEADER", "100"}});
    CHECK_FALSE(result->ofxData);
    CHECK(parser.stringEncoding() == TextEncodingUTF8);
}

TEST_CASE("success leaves the place for an error alone") {
    TvOFXParser parser(Data::copy("<OFX><A>1</OFX>"));
    Error error{"mine", 7, "untouched", "none"};
    CHECK(parser.parseWithError(&error));
    CHECK(error == Error{"mine", 7, "untouched", "none"});
}

TEST_CASE("a parser may parse again, with the encoding that it found") {
    TvOFXParser parser(Data::copy("\xFE\xFF" + encoded(kDocument, TextEncodingUTF16BigEndian)));
    for (int i = 0; i < 2; ++i) {
        const std::shared_ptr<TvOFXParserResult> result = parser.parseWithError();
        REQUIRE(result);
        REQUIRE(result->ofxData);
        CHECK(*result->ofxData == kTree);
        CHECK(parser.stringEncoding() == TextEncodingUTF16BigEndian);
    }
}

TEST_CASE("data without a header is parsed as UTF-8 and nothing else") {
    struct Row {
        std::string bytes;
        std::optional<ParseDictionary> tree;
    };
    for (const Row& row : std::initializer_list<Row>{
             {std::string(kDocument), kTree},
             {"  " + std::string(kDocument) + "\n", kTree},
             {"OFXHEADER:100\n" + std::string(kDocument), kTree},
             {"\xEF\xBB\xBF" + std::string(kDocument), kTree},
             {"<A>1</A>", ParseDictionary{{"A", "1"}}},
             {"no tags", ParseDictionary()},
             {"<OFX> ", ParseDictionary{{"OFX", ParseDictionary()}}},
             {"<?OFX V=\"1\"?><A>1</A>", ParseDictionary{{"?OFX V=\"1\"?", ParseDictionary{{"A", "1"}}}}},
             {"", std::nullopt},
             {"\xEF\xBB\xBF", std::nullopt},
             {"<A>1</B>", std::nullopt},
             {"<A>\xFF", std::nullopt},
             {"\xBF\xBB\xBF<A>1</A>", std::nullopt},
         }) {
        CAPTURE(row.bytes);
        const TvOFXParser parser(Data::copy(row.bytes));
        const std::optional<ParseDictionary> found = parser.parseDataAndIgnoreOfxHeader();
        CHECK(found.has_value() == row.tree.has_value());
        if (found && row.tree) CHECK(*found == *row.tree);
    }
    CHECK_FALSE(TvOFXParser(std::nullopt).parseDataAndIgnoreOfxHeader());
}
