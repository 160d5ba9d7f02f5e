// SPDX-License-Identifier: Apache-2.0
#include <brackwell/anonymize.h>
#include <brackwell/open.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/documents.h"

using namespace brackwell;

namespace {

std::string anonymous(std::string_view text, const AnonymizeOptions& options = {}) {
    const AnonymizedDocument document = Anonymizer(options).anonymize(Data::view(text));
    return std::string(document.bytes.bytes());
}

/// What every character is, so that two texts of one shape are the same: "A", "a", "9", or itself.
std::string shapeOf(std::string_view text) {
    std::string shape(text);
    for (char& c : shape) {
        if (c >= 'A' && c <= 'Z') c = 'A';
        if (c >= 'a' && c <= 'z') c = 'a';
        if (c >= '0' && c <= '9') c = '9';
    }
    return shape;
}

/// Texts of a document of which some stay where they are, and some do not.
struct Parts {
    std::string why;
    std::string before;
    std::vector<const char*> stay;
    std::vector<const char*> go;
};

void checkParts(const std::vector<Parts>& rows) {
    for (const Parts& row : rows) {
        CAPTURE(row.why);
        const std::string after = anonymous(row.before);
        CAPTURE(after);
        CHECK(after.size() == row.before.size());
        for (const char* text : row.stay) {
            REQUIRE(row.before.find(text) != row.before.npos);
            CHECK(after.find(text) == row.before.find(text));
        }
        for (const char* text : row.go) {
            REQUIRE(row.before.find(text) != row.before.npos);
            CHECK(after.find(text) != row.before.find(text));
        }
    }
}

}  // namespace

TEST_CASE("a value that says who becomes another of its shape, and one of the standard stays") {
    struct Row {
        std::string element;
        std::string value;
        bool stays;
    };
    const Row rows[] = {
        {"NAME", "Jane Miller", false},
        {"MEMO", "Rent May, flat 12/b (4711)", false},
        {"ACCTID", "DE89 3704 0044 0532 0130 00", false},
        {"FITID", "20240301-0001", false},
        {"CHECKNUM", "1024", false},
        {"TRNUID", "9f1c2d7a-0b3e-4c55-8f6a-1d2e3f4a5b6c", false},
        {"USERKEY", "k7Gf-33aZ", false},
        {"ADDR1", "12 Alder Street", false},
        {"PHONE", "+1 (555) 010-4477", false},
        {"EMAIL", "jane.miller@example.com", false},
        {"SECNAME", "Example Growth Fund", false},
        {"UNIQUEID", "037833100", false},
        {"MESSAGE", "Welcome, Ms Miller", false},
        {"TRNAMT", "-1234.56", false},
        {"BALAMT", "1.234,56", false},
        {"BALAMT", "$1,234.56 CR", false},
        {"UNITS", "12.345678", false},
        {"X.SECRET", "something", false},
        {"DTPOSTED", "4111111111111111", false},
        {"DTPOSTED", "4111 1111 1111 1111", false},
        {"DTPOSTED", "12.5Robert", false},
        {"TRNTYPE", "Robert", false},
        {"TRNAMT", "Bob", false},
        {"NAME", "", true},
        {"NAME", "--", true},
        {"TRNAMT", "0.00", true},
        {"TRNAMT", "-", true},
        {"TRNTYPE", "DIRECTDEBIT", true},
        {"TRNTYPE", "Jane Miller", false},
        {"ACCTTYPE", "CHECKING", true},
        {"CURDEF", "EUR", true},
        {"CURRENCY", "USD", true},
        {"CODE", "15500", true},
        {"CODE", "5550104477", false},
        {"SEVERITY", "INFO", true},
        {"LANGUAGE", "ENG", true},
        {"DTPOSTED", "20240301120000.000[-5:EST]", true},
        {"DTPOSTED", "2024-03-01", true},
        {"DTPOSTED", "00000000", true},
        {"DTPOSTED", "Jane Miller's birthday", false},
        {"CHGPINFIRST", "N", true},
        {"UNIQUEIDTYPE", "CUSIP", true},
        {"ORG", "Example Bank", true},
        {"FID", "1234", true},
        {"BANKID", "121000248", true},
        {"INTU.BID", "04711", true},
    };
    for (const Row& row : rows) {
        CAPTURE(row.element);
        CAPTURE(row.value);
        const std::string element = row.element;
        const std::string before = "<OFX><" + element + ">" + row.value + "</" + element + "></OFX>";
        const std::string after = anonymous(before);
        CHECK((after == before) == row.stays);
        CHECK(shapeOf(after) == shapeOf(before));
        CHECK(after.size() == before.size());
    }
}

TEST_CASE("no word of four letters or digits stays where it was, whatever the key is") {
    const std::vector<std::string> words{
        "Jane", "Miller", "4711",   "0000",
        "aaaa", "ZZZZ",   "x1y2z3", "1234567890123456789012345678901234567890123456"};
    std::string before = "<OFX><MEMO>";
    for (const std::string& word : words) before += word + " ";
    for (int key = 0; key < 500; ++key) {
        const std::string after = anonymous(before);
        for (const std::string& word : words) {
            CAPTURE(word);
            const std::size_t at = before.find(" " + word) == before.npos ? 11 : before.find(" " + word) + 1;
            CHECK(after.substr(at, word.size()) != word);
            CHECK(shapeOf(after.substr(at, word.size())) == shapeOf(word));
        }
    }
}

TEST_CASE("one account number becomes one other, in all documents of one object") {
    const Anonymizer anonymizer;
    const std::string first = "<OFX><ACCTID>4711081500</ACCTID><MEMO>to 4711081500</MEMO></OFX>";
    const std::string second = "<OFX><ACCTID>\n4711081500 <NAME>x</OFX>";
    const std::string a(anonymizer.anonymize(Data::view(first)).bytes.bytes());
    const std::string b(anonymizer.anonymize(Data::view(second)).bytes.bytes());
    const std::string number = a.substr(a.find("<ACCTID>") + 8, 10);
    CHECK(number != "4711081500");
    CHECK(a.find("4711081500") == a.npos);
    CHECK(a.substr(a.find("</MEMO>") - 10, 10) == number);
    CHECK(b.substr(b.find('\n') + 1, 10) == number);
    const Anonymizer copy = anonymizer;
    CHECK(copy.anonymize(Data::view(first)).bytes.bytes() == a);
    CHECK(anonymous(first) != a);
}

TEST_CASE("one letter known does not tell the others") {
    const std::string after = anonymous("<OFX><NAME>A B C D E F G H I J K L</NAME></OFX>");
    std::set<int> distances;
    for (int i = 0; i < 12; ++i)
        distances.insert((after[11 + 2 * static_cast<std::size_t>(i)] - 'A' - i + 26) % 26);
    CHECK(distances.size() > 2);
}

TEST_CASE("an object that was moved from has its key still") {
    Anonymizer first;
    const std::string before = anonymous("<OFX><NAME>Jane</NAME></OFX>");
    const Anonymizer second = std::move(first);
    const Data bytes = Data::view(before);
    // NOLINTNEXTLINE(bugprone-use-after-move): the header promises it
    CHECK(first.anonymize(bytes).bytes.bytes() == second.anonymize(bytes).bytes.bytes());
}

TEST_CASE("the case of a word does not make it another one") {
    const std::string after = anonymous("<OFX><NAME>Grocer</NAME><MEMO>GROCER grocer</MEMO></OFX>");
    std::string name = after.substr(11, 6);
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::toupper(c); });
    const std::size_t memo = after.find("<MEMO>") + 6;
    CHECK(after.substr(memo, 6) == name);
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::tolower(c); });
    CHECK(after.substr(memo + 7, 6) == name);
}

TEST_CASE("different identifiers become different ones, and equal amounts equal ones") {
    std::string text = "<OFX>";
    for (int i = 0; i < 2000; ++i) text += "<FITID>" + std::to_string(1000 + i) + "</FITID>";
    const std::string after = anonymous(text);
    std::set<std::string> seen;
    for (std::size_t at = after.find("<FITID>"); at != after.npos; at = after.find("<FITID>", at + 1))
        seen.insert(after.substr(at + 7, 4));
    CHECK(seen.size() == 2000);

    const std::string amounts =
        anonymous("<OFX><TRNAMT>-20.05</TRNAMT><TRNAMT>20.05</TRNAMT><TRNAMT>+0.05</TRNAMT></OFX>");
    CHECK(amounts.substr(14, 5) == amounts.substr(36, 5));
    CHECK(amounts[14] != '0');
    CHECK(amounts.substr(58, 4) == "+0.0");
    CHECK(amounts[62] != '0');
}

TEST_CASE("the institution is replaced when somebody wants it") {
    AnonymizeOptions options;
    options.institution = true;
    for (const char* name : {"ORG", "FID", "BANKID", "BROKERID", "FINAME", "URL", "INTU.BID", "CSPHONE"}) {
        CAPTURE(name);
        const std::string before = std::string("<OFX><") + name + ">Bank4711</" + name + "></OFX>";
        CHECK(anonymous(before) == before);
        const std::string after = anonymous(before, options);
        CHECK(after != before);
        CHECK(shapeOf(after) == shapeOf(before));
    }
}

TEST_CASE("dates are moved by days, in their form, and those that stay are counted") {
    struct Row {
        std::int32_t days;
        const char* before;
        const char* after;
        std::size_t unmoved = 0;
    };
    const Row rows[] = {
        {0, "20240228", "20240228"},
        {2, "20240228", "20240301"},
        {-60, "20240229235959.123[-5:EST]", "20231231235959.123[-5:EST]"},
        {1, " 20231231\n", " 20240101\n"},
        {1, "21991231", "22000101"},
        {1, "2024-02-28", "2024-02-29"},
        {2, "2024-02-28T10:00:00+02:00", "2024-03-01T10:00:00+02:00"},
        {-1, "2024/03/01", "2024/02/29"},
        {1, "31.03.2024", "01.04.2024"},
        {1, "31.03.2024 23:30", "01.04.2024 23:30"},
        {1, "31/12/2023", "01/01/2024"},
        {1, "12/31/2023", "01/01/2024"},
        {-1, "30.4.2024", "29.4.2024"},
        {-1, "01.04.2024</DTPOSTED><DTPOSTED>31.03.2024", "31.03.2024</DTPOSTED><DTPOSTED>30.03.2024"},
        {1, "04/04/2024</DTPOSTED><DTPOSTED>12/31/2023", "04/05/2024</DTPOSTED><DTPOSTED>01/01/2024"},
        {2950550, "19210901", "99991231"},
        {1, "00000000", "00000000"},           // says no day
        {0, "2024-02-30", "2024-02-30"},       // nothing is to be moved
        {1, "20230229", "20230229", 1},        // no day
        {1, "2023-02-29", "2023-02-29", 1},    // no day
        {1, "01.04.2024", "01.04.2024", 1},    // ambiguous
        {1, "04.04.2024", "04.04.2024", 1},    // which number is to grow is, too
        {1, "30.9.2024", "30.9.2024", 1},      // no room for October
        {1, "240305", "240305", 1},            // not in a form that is known
        {1, "120000", "120000", 1},            // the same
        {3000000, "20240101", "20240101", 1},  // after 9999
        {2147483647, "20240228", "20240228", 1},
        {-2147483647 - 1, "2024-02-28", "2024-02-28", 1},
    };
    for (const Row& row : rows) {
        CAPTURE(row.days);
        CAPTURE(row.before);
        AnonymizeOptions options;
        options.shiftDays = row.days;
        const auto documentWith = [](const char* date) {
            return std::string("<OFX><DTPOSTED>") + date + "</DTPOSTED></OFX>";
        };
        const std::string before = documentWith(row.before);
        const AnonymizedDocument document = Anonymizer(options).anonymize(Data::view(before));
        CHECK(document.bytes.bytes() == documentWith(row.after));
        CHECK(document.unmovedDates == row.unmoved);
    }
}

TEST_CASE("a time of day is no date that could be moved") {
    AnonymizeOptions options;
    options.shiftDays = 1;
    const std::string before = "<OFX><PROCENDTM>170000.000[-5:EST]</PROCENDTM></OFX>";
    const AnonymizedDocument document = Anonymizer(options).anonymize(Data::view(before));
    CHECK(document.bytes.bytes() == before);
    CHECK(document.unmovedDates == 0);
}

TEST_CASE("what stands outside of elements is replaced, and the header stays but for identifiers of files") {
    checkParts({
        {"a header of OFX 1",
         "OFXHEADER:100\r\nDATA:OFXSGML\r\nCHARSET:1252\r\nOLDFILEUID:NONE\r\nNEWFILEUID:"
         "Jane20240301\r\n\r\n<OFX>",
         {"OFXHEADER:100\r\n", "DATA:OFXSGML", "CHARSET:1252", "OLDFILEUID:NONE", "NEWFILEUID:", "<OFX>"},
         {"Jane", "20240301"}},
        {"one in a line, without blanks",
         "OFXHEADER:100DATA:OFXSGMLVERSION:102OLDFILEUID:Jane4711NEWFILEUID:NONE<OFX>",
         {"OFXHEADER:100DATA:OFXSGMLVERSION:102OLDFILEUID:", "NEWFILEUID:NONE<OFX>"},
         {"Jane", "4711"}},
        {"a header of OFX 2",
         "<?xml version=\"1.0\"?>\n<?OFX OFXHEADER=\"200\" VERSION='211' OLDFILEUID=\"NONE\" "
         "NEWFILEUID=\"Jane 4711\"?><OFX>",
         {"<?xml version=\"1.0\"?>", "OFXHEADER=\"200\"", "VERSION='211'", "OLDFILEUID=\"NONE\"",
          "NEWFILEUID=\""},
         {"Jane", "4711"}},
        {"one without quotation marks",
         "<?OFX OFXHEADER=200 NEWFILEUID=Jane4711 VERSION=211?><OFX>",
         {"OFXHEADER=200", "VERSION=211?>"},
         {"Jane", "4711"}},
        {"an instruction in the body",
         "<OFX><?note Jane 4711?><NAME>x",
         {"<OFX><?", "?><NAME>"},
         {"note", "Jane", "4711"}},
        {"an attribute that no header has",
         "<?xml version=\"1.0\" author=\"Jane\"?><OFX>",
         {"<?xml version=\"1.0\" author=\"", "\"?><OFX>"},
         {"Jane"}},
        {"text before the document",
         "From: jane.miller@example.com\n\n<OFX>",
         {": ", ".", "@", "\n\n<OFX>"},
         {"jane", "miller", "example"}},
        {"an address before the header",
         "From: Jane Doe <jane.doe@mail.example>\n\nOFXHEADER:100\nCHARSET:1252\n\n<OFX>",
         {": ", " <", "@", ">\n\nOFXHEADER:100\nCHARSET:1252\n\n<OFX>"},
         {"Jane", "Doe", "jane", "doe", "mail", "example"}},
        {"tags before the header",
         "<html><body><p>Jane</p><code>OFXHEADER:100\nNEWFILEUID:471108\n\n<OFX>",
         {"OFXHEADER:100\nNEWFILEUID:", "\n\n<OFX>"},
         {"Jane", "471108"}},
        {"a header after a document",
         "<OFX></OFX>\nOFXHEADER:100\nVERSION:102\n<OFX><MEMO>VERSION:102",
         {"</OFX>\nOFXHEADER:100\nVERSION:102\n<OFX><MEMO>"},
         {}},
        {"what looks like a header in a document",
         "<OFX></MEMO>VERSION:4711",
         {"<OFX></MEMO>"},
         {"VERSION", "4711"}},
        {"a comment",
         "<OFX><!-- Jane Miller > 4711 --><NAME>x",
         {"<!-- ", " > ", " --><NAME>"},
         {"Jane", "Miller", "4711"}},
        {"a header in a comment",
         "<!-- OFXHEADER:100 NEWFILEUID:Jane -->\n<OFX>",
         {"<!-- OFXHEADER:100 NEWFILEUID:", " -->\n<OFX>"},
         {"Jane"}},
        {"a comment without an end", "<OFX><!-- Jane Miller", {"<OFX><!-- "}, {"Jane", "Miller"}},
        {"character data",
         "<OFX><NAME><![CDATA[Jane <Miller & 4711]]></NAME>",
         {"<![CDATA[", " <", "]]></NAME>"},
         {"Jane", "Miller", "4711"}},
        {"elements in character data",
         "<OFX><![CDATA[<STMTTRN><NAME>Jane</STMTTRN>]]>",
         {"<![CDATA[<STMTTRN><NAME>", "</STMTTRN>]]>"},
         {"Jane"}},
        {"a declaration",
         "<!DOCTYPE OFX SYSTEM \"jane4711.dtd\"><OFX>",
         {"<!", "\"><OFX>"},
         {"jane", "4711"}},
        {"an attribute",
         "<OFX><NAME owner=\"Jane\">Miller</NAME>",
         {"<OFX><NAME ", "=\"", "\">", "</NAME>"},
         {"Jane", "Miller"}},
        {"text after a close tag", "<OFX><NAME>x</NAME>Jane<MEMO>y", {"</NAME>", "<MEMO>"}, {"Jane"}},
    });
}

TEST_CASE("mistakes in tags stay, and do not hide a value") {
    checkParts({
        {"no close tags",
         "<OFX><NAME>Jane\n<ACCTID>471108\n",
         {"<OFX><NAME>", "\n<ACCTID>"},
         {"Jane", "471108"}},
        {"small letters", "<ofx><name>Jane</name>", {"<ofx><name>", "</name>"}, {"Jane"}},
        {"a prefix", "<n:OFX><n:NAME>Jane</n:NAME>", {"<n:OFX><n:NAME>", "</n:NAME>"}, {"Jane"}},
        {"a tag without its end",
         "<OFX><TRNAMT-88.31<NAMEjane4711</NAME>",
         {"<OFX><TRNAMT-", ".", "<NAME", "</NAME>"},
         {"88.31", "jane", "4711"}},
        {"tags without their beginnings",
         "<OFX><SEVERITY>INFO/SEVERITY>\nSTMTTRN>\n<TRNTYPE>DEBITDTPOSTED>20240301/DTPOSTED>NAME>Jane",
         {"<OFX><SEVERITY>INFO/SEVERITY>\nSTMTTRN>\n<TRNTYPE>DEBITDTPOSTED>20240301/DTPOSTED>"},
         {"Jane"}},
        {"a name before a mark, in a text",
         "<OFX><MEMO>Jane>DATE> SMITH>",
         {"<OFX><MEMO>", ">"},
         {"Jane", "SMITH"}},
        {"the first tag without its beginning",
         "VERSION:102\n\nOFX>\n<NAME>Jane",
         {"VERSION:102\n\nOFX>\n<NAME>"},
         {"Jane"}},
        {"one letter in a name that is another",
         "<OFX><qTATUS><CODE>0</=TATUS><STMTjRN><NAMq>Jane</STM-TRN>",
         {"<OFX><qTATUS><CODE>0</=TATUS><STMTjRN><NAMq>", "</STM-TRN>"},
         {"Jane"}},
        {"two letters in a name that are others", "<OFX><MEMO><SqqTUS>", {"<OFX><MEMO><"}, {"SqqTUS"}},
        {"an unknown name in a close tag without its end",
         "<OFX><X.BRANCH>4711</X.BRANCH\n<NAME>Jane</ZURICH\n<MEMO>",
         {"<OFX><X.BRANCH>", "</X.BRANCH\n<NAME>", "</", "\n<MEMO>"},
         {"4711", "Jane", "ZURICH"}},
        {"a tag that ends the text", "<OFX><NAME>Jane<MEMO", {"<OFX><NAME>", "<MEMO"}, {"Jane"}},
        {"blanks in a tag", "<OFX>< NAME >Jane</ NAME >", {"<OFX>< NAME >", "</ NAME >"}, {"Jane"}},
        {"a less-than sign in a value",
         "<OFX><MEMO>Jane < 4711 <Miller</MEMO>",
         {"<OFX><MEMO>", " < ", " <", "</MEMO>"},
         {"Jane", "4711", "Miller"}},
        {"an address in brackets",
         "<OFX><MEMO>Jane <jane.miller@example.com></MEMO>",
         {"<MEMO>", " <", "@", "></MEMO>"},
         {"Jane", "jane", "miller", "example"}},
        {"a word in brackets", "<OFX><MEMO>see <jane></MEMO>", {"<MEMO>", " <", "></MEMO>"}, {"jane"}},
        {"entities",
         "<OFX><NAME>Jane&amp;Miller&#38;&#9;&lt;x</NAME>",
         {"<NAME>", "&amp;", "&#9;&lt;"},
         {"Jane", "Miller"}},
        {"a name in numbers",
         "<OFX><NAME>&#74;&#97;&#110;&#x65;&#0000074;</NAME>",
         {"&#", "&#x", ";</NAME>"},
         {"74;&#97", "#110", "x65", "0000074"}},
    });
}

TEST_CASE("elements that nobody knows are named, and their values are replaced") {
    const std::string text =
        "<OFX><X.JANE>Miller</X.JANE><NAME>a</NAME><FOO>b<X.JANE>c</X.JANE><jane>d</jane></OFX>";
    const AnonymizedDocument document = Anonymizer().anonymize(Data::view(text));
    CHECK(document.unknown == std::vector<UnknownElements>{{"X.JANE", 2}, {"FOO", 1}});
    CHECK(document.bytes.bytes().find("Miller") == std::string_view::npos);
    std::string many = "<OFX>";
    for (int i = 0; i < 100; ++i) many += "<X." + std::to_string(i) + ">";
    CHECK(Anonymizer().anonymize(Data::view(many)).unknown.size() == 20);
}

TEST_CASE("how many values were replaced is counted") {
    const auto count = [](std::string_view text) {
        return Anonymizer().anonymize(Data::view(text)).replaced;
    };
    CHECK(count("") == 0);
    CHECK(count("<OFX><CODE>0</CODE><NAME></NAME></OFX>") == 0);
    CHECK(count("<OFX><NAME>Jane</NAME>\n<TRNAMT>1.00\n<MEMO>x</OFX>") == 3);
}

TEST_CASE("other letters are replaced by letters of the document, in its encoding") {
    struct Row {
        const char* why;
        TextEncoding encoding;
        const char* text;
        const char* gone;
    };
    const Row rows[] = {
        {"UTF-8", TextEncodingUTF8, "<OFX><NAME>Zoë Müller – Größe</NAME>", "Müller"},
        {"Windows-1252", TextEncodingWindows1252, "<OFX><NAME>Zoë Müller – Größe</NAME>", "Müller"},
        {"Latin-1", TextEncodingISOLatin1, "<OFX><NAME>Zoë Müller - Größe</NAME>", "Müller"},
        {"UTF-16", TextEncodingUTF16LittleEndian, "<OFX><NAME>Zoë Müller – 東京都</NAME>", "東京都"},
        {"UTF-16, big-endian", TextEncodingUTF16BigEndian, "<OFX><NAME>Zoë Иван Пётр</NAME>", "Иван"},
        {"UTF-32", TextEncodingUTF32BigEndian, "<OFX><NAME>Zoë 😀😎</NAME>", "😀😎"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.why);
        const Data bytes = encodeText(row.text, row.encoding).value();
        const AnonymizedDocument document = Anonymizer().anonymize(bytes, row.encoding);
        CHECK(document.bytes.size() == bytes.size());
        const auto text = decodeText(document.bytes, row.encoding);
        REQUIRE(text);
        CHECK(text->bytes().starts_with("<OFX><NAME>"));
        CHECK(text->bytes().ends_with("</NAME>"));
        CHECK(text->bytes().find(row.gone) == std::string_view::npos);
        CHECK(text->bytes().size() == std::string_view(row.text).size());
    }
}

TEST_CASE("a letter that is the only one of its kind stays, as there is none to take its place") {
    const std::string after = anonymous("<OFX><NAME>é</NAME>");
    CHECK(after == "<OFX><NAME>é</NAME>");
}

TEST_CASE("the encoding is found out, and bytes of none count as one for a character") {
    const auto encoded = [](TextEncoding encoding) {
        return std::string(encodeText("<OFX><NAME>Jane Müller</NAME>", encoding)->bytes());
    };
    struct Row {
        const char* why;
        std::string bytes;
        TextEncoding given;
    };
    const Row rows[] = {
        {"UTF-8", encoded(TextEncodingUTF8), TextEncodingNone},
        {"a mark of UTF-8", "\xEF\xBB\xBF" + encoded(TextEncodingUTF8), TextEncodingNone},
        {"a mark of UTF-8 before another encoding", "\xEF\xBB\xBF" + encoded(TextEncodingWindows1252),
         TextEncodingUTF8},
        {"a mark of UTF-16", "\xFF\xFE" + encoded(TextEncodingUTF16LittleEndian), TextEncodingNone},
        {"the other mark of UTF-16", "\xFE\xFF" + encoded(TextEncodingUTF16BigEndian), TextEncodingUTF8},
        {"UTF-16 without a mark", encoded(TextEncodingUTF16LittleEndian), TextEncodingNone},
        {"the other UTF-16 without a mark", encoded(TextEncodingUTF16BigEndian), TextEncodingNone},
        {"UTF-16, whichever, with a mark", "\xFE\xFF" + encoded(TextEncodingUTF16BigEndian),
         textEncodingNamed("UTF-16")},
        {"UTF-32 with a mark", std::string("\xFF\xFE\0\0", 4) + encoded(textEncodingNamed("UTF-32LE")),
         TextEncodingNone},
        {"UTF-32 without a mark", encoded(TextEncodingUTF32BigEndian), TextEncodingNone},
        {"half a character of UTF-16", "\xFF\xFE" + encoded(TextEncodingUTF16LittleEndian) + "x",
         TextEncodingUTF16LittleEndian},
        {"the wrong encoding", encoded(TextEncodingWindows1252), TextEncodingUTF8},
        {"an encoding that is not known", encoded(TextEncodingUTF8), 0x7FFFFFFF},
    };
    for (const Row& row : rows) {
        CAPTURE(row.why);
        const AnonymizedDocument document = Anonymizer().anonymize(Data::view(row.bytes), row.given);
        CHECK(document.bytes.size() == row.bytes.size());
        CHECK(document.bytes.bytes() != row.bytes);
        CHECK(document.replaced > 0);
        std::string ascii(document.bytes.bytes());
        std::erase_if(ascii, [](char c) { return c == '\0'; });
        CHECK(ascii.find("<OFX><NAME>") != ascii.npos);
        CHECK(ascii.find("Jane") == ascii.npos);
    }
}

TEST_CASE("an example reads as before, but for what its values say") {
    for (const tests::Example& example : tests::examples()) {
        CAPTURE(example.name);
        const Data bytes = tests::exampleData(example.name);
        const OpenedFile before = openData(bytes);
        const TextEncoding encoding =
            before.documents().empty() ? TextEncodingNone : before.documents()[0].encoding();
        const AnonymizedDocument document = Anonymizer().anonymize(bytes, encoding);
        CHECK(document.bytes.size() == bytes.size());
        const OpenedFile after = openData(document.bytes);
        CHECK(static_cast<bool>(after) == static_cast<bool>(before));
        REQUIRE(after.documents().size() == before.documents().size());
        CHECK(after.error().code == before.error().code);
        CHECK(after.error().line == before.error().line);
        CHECK(after.statements().size() == before.statements().size());
        CHECK(after.investmentStatements().size() == before.investmentStatements().size());
        CHECK(after.securities().all().size() == before.securities().all().size());
        for (std::size_t i = 0; i < after.statements().size(); ++i)
            CHECK(after.statements()[i]->statementTransactions().size() ==
                  before.statements()[i]->statementTransactions().size());
        const auto kindsOf = [](const OpenedFile& file) {
            std::map<FindingKind, std::size_t> kinds;
            for (const Finding& finding : file.findings())
                // The totals of investments cannot be true.
                if (finding.kind != FindingKind::doesNotAddUp || file.investmentStatements().empty())
                    kinds[finding.kind] += finding.count;
            return kinds;
        };
        CHECK(kindsOf(after) == kindsOf(before));
    }
}
