// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>
#include <doctest/doctest.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <map>
#include <thread>
#include <unordered_map>

#include "support/documents.h"
#include "support/temporary_folder.h"
#include "support/transcript.h"

/// \file
/// Opening files and bytes: what comes back, in which encoding, in how many documents, and within which
/// limits.

using namespace brackwell;
using namespace brackwell::tests;

namespace opened_files {

namespace {

std::string statement(const std::string& account, const std::string& transactions) {
    return "<STMTTRNRS><TRNUID>1<STATUS><CODE>0<SEVERITY>INFO</"
           "STATUS><STMTRS><CURDEF>EUR<BANKACCTFROM><BANKID>1"
           "<ACCTID>" +
           account + "<ACCTTYPE>CHECKING</BANKACCTFROM><BANKTRANLIST><DTSTART>20240101<DTEND>20240131" +
           transactions + "</BANKTRANLIST></STMTRS></STMTTRNRS>";
}

std::string document(const std::string& memo, const std::string& account = "1") {
    return "OFXHEADER:100\nDATA:OFXSGML\nCHARSET:1252\n\n<OFX><BANKMSGSRSV1>" +
           statement(account, "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240105<TRNAMT>-5.00<FITID>1<MEMO>" + memo +
                                  "</STMTTRN>") +
           "</BANKMSGSRSV1></OFX>\n";
}

OpenedFile opened(const std::string& bytes, const OpenOptions& options = {}) {
    return openData(Data::copy(bytes), options);
}

std::vector<std::string> memosOf(const OpenedFile& file) {
    std::vector<std::string> memos;
    for (const auto& statement : file.statements())
        for (const auto& transaction : statement->statementTransactions())
            memos.emplace_back(transaction->memo().value_or("?"));
    return memos;
}

/// Text of ASCII with so many bytes to a character.
std::string wide(const std::string& text, bool isBigEndian, std::size_t unit = 2) {
    const std::string zeros(unit - 1, '\0');
    std::string bytes;
    for (const char c : text) bytes += isBigEndian ? zeros + c : c + zeros;
    return bytes;
}

const std::string kMark32BigEndian("\0\0\xFE\xFF", 4);
const std::string kMark32LittleEndian("\xFF\xFE\0\0", 4);

bool has(const OpenedFile& file, FindingKind kind) {
    return std::ranges::any_of(file.findings(), [kind](const Finding& found) { return found.kind == kind; });
}

bool isInside(std::string_view part, std::string_view whole) {
    return std::less_equal<>()(whole.data(), part.data()) &&
           std::less_equal<>()(part.data() + part.size(), whole.data() + whole.size());
}

}  // namespace

TEST_CASE("an example opens with its statements, sign-on, message and no finding") {
    const OpenedFile file = openData(exampleData("checking.ofx"));
    REQUIRE(file);
    CHECK(file.error().code == OpenErrorCode::none);
    CHECK(file.findings().empty());
    REQUIRE(file.documents().size() == 1);
    const auto message = importedExample("checking.ofx");
    REQUIRE(file.statements().size() == message->bankAccountsFound().size());
    REQUIRE(file.statements().size() == 1);
    CHECK(file.statements()[0]->statementTransactions().size() ==
          message->statementsForBankAccount(message->bankAccountsFound()[0])->statementTransactions().size());
    CHECK(file.signOn() != nullptr);
    CHECK(file.profile() == nullptr);
    CHECK(file.responses().size() == 2);
    CHECK(file.message()->ofxVersion() == message->ofxVersion());
    CHECK(file.documents()[0].changes().empty());
    CHECK(file.documents()[0].text() == exampleData("checking.ofx"));
    CHECK(file.documents()[0].readText() == file.documents()[0].text());
}

TEST_CASE("the message of an opened document has the very responses of the document") {
    const OpenedFile file = openData(exampleData("checking.ofx"));
    const auto message = file.message();
    REQUIRE(message->bankAccountsFound().size() == 1);
    CHECK(message->statementsForBankAccount(message->bankAccountsFound()[0]) == file.statements()[0]);
    CHECK(message->bankingMsgSet() == file.documents()[0].interpreter()->bankingMsgSetResponses());
}

TEST_CASE("paths and file URLs are opened in every form, and the file outlives nothing") {
    const TemporaryFolder folder;
    const std::string path = folder.file("a b%.ofx", document("tea"));
    const std::string inURL = folder.path() + "a%20b%25.ofx";
    CHECK(memosOf(openFile(path)) == std::vector<std::string>{"tea"});
    CHECK(memosOf(openFile(path.c_str())) == std::vector<std::string>{"tea"});
    CHECK(memosOf(openFile(std::string_view(path))) == std::vector<std::string>{"tea"});
    CHECK(memosOf(openFile(std::filesystem::path(path))) == std::vector<std::string>{"tea"});
    for (const char* const begin : {"file:", "file://", "file://localhost", "FILE://LocalHost"}) {
        CAPTURE(begin);
        CHECK(memosOf(openFile(begin + inURL)) == std::vector<std::string>{"tea"});
    }
}

TEST_CASE("what cannot be opened has a code and says what it is") {
    const TemporaryFolder folder;
    struct Row {
        std::string name;
        OpenErrorCode code;
        std::string text;
    };
    const std::string missing = folder.path("none.ofx");
    for (const Row& row : std::vector<Row>{
             {missing, OpenErrorCode::notFound, "The file at " + missing + " was not found."},
             {folder.file("plain", "x") + "/x", OpenErrorCode::notFound, "was not found."},
             {std::string("a\0b", 3), OpenErrorCode::notFound, "was not found."},
             {folder.path(), OpenErrorCode::isFolder, folder.path() + " is a folder."},
             {"", OpenErrorCode::notFound, "The file at  was not found."},
             {folder.file("empty", ""), OpenErrorCode::empty, "no data to parse"},
             {"file://example.com/july.ofx", OpenErrorCode::otherComputer,
              "The URL names another computer: example.com."},
             {"https://example.com/july.ofx", OpenErrorCode::otherComputer,
              "The URL has a scheme other than file: https://example.com/july.ofx"},
             {"ofx+x.1-y://", OpenErrorCode::otherComputer, "The URL has a scheme other than file: ofx"},
             {"://july.ofx", OpenErrorCode::notFound, "was not found."},
             {"1st://july.ofx", OpenErrorCode::notFound, "was not found."},
             {"a b://july.ofx", OpenErrorCode::notFound, "was not found."},
             {"file://" + missing, OpenErrorCode::notFound, "was not found."},
             {"FILE:" + missing, OpenErrorCode::notFound, "was not found."},
             {"file:july.ofx", OpenErrorCode::invalidURL, "The URL names no file: file:july.ofx"},
             {"file:///a%2", OpenErrorCode::invalidURL, "The URL names no file"},
             {"file:///a%zz", OpenErrorCode::invalidURL, "The URL names no file"},
             {"file:///a%00b", OpenErrorCode::invalidURL, "The URL names no file"},
             {"file://localhost", OpenErrorCode::invalidURL, "The URL names no file"},
         }) {
        CAPTURE(row.name);
        const OpenedFile file = openFile(row.name);
        CHECK_FALSE(file);
        CHECK(nameOf(file.error().code) == nameOf(row.code));
        CHECK(file.error().text.find(row.text) != std::string::npos);
        CHECK_FALSE(file.error().remedy.empty());
        CHECK(file.statements().empty());
        CHECK(file.responses().empty());
        CHECK(file.message() == nullptr);
        CHECK(file.signOn() == nullptr);
        CHECK(file.findings().empty());
    }
    CHECK(openFile(static_cast<const char*>(nullptr)).error().code == OpenErrorCode::notFound);
}

TEST_CASE("bytes that are no OFX document are named as what they are") {
    struct Row {
        std::string bytes;
        OpenErrorCode code;
        std::string cause;
    };
    for (const Row& row : std::vector<Row>{
             {"<!doctype HTML><html><body>Sign in</body></html>", OpenErrorCode::html, "web page"},
             {"<HTML>Sign in", OpenErrorCode::html, "web page"},
             {"<!-- saved --><html>Sign in</html>", OpenErrorCode::html, "web page"},
             {"%PDF-1.4\n...", OpenErrorCode::otherFormat, "PDF"},
             {"PK\x03\x04\xFF", OpenErrorCode::otherFormat, "ZIP"},
             {"\x1F\x8B\x08", OpenErrorCode::otherFormat, "gzip"},
             {"\xD0\xCF\x11\xE0\xA1", OpenErrorCode::otherFormat, "office"},
             {"!Type:Bank\nD01/02/24\n", OpenErrorCode::otherFormat, "QIF"},
             {":20:STARTUMS\n", OpenErrorCode::otherFormat, "MT940"},
             {"{\"a\": 1}", OpenErrorCode::otherFormat, "JSON"},
             {"<OFC><DTD>2</OFC>", OpenErrorCode::ofc, "OFC"},
             {"Dear customer, nothing to see", OpenErrorCode::notOFX, "begins with \"Dear customer"},
             {" \n ", OpenErrorCode::notOFX, "only white space"},
             {std::string("\xFF\xFF\x00\xD8", 4), OpenErrorCode::undecodable, ""},
         }) {
        CAPTURE(row.bytes);
        const OpenedFile file = opened(row.bytes);
        CHECK_FALSE(file);
        CHECK(nameOf(file.error().code) == nameOf(row.code));
        CHECK(file.error().cause.find(row.cause) != std::string::npos);
        CHECK_FALSE(file.error().remedy.empty());
        CHECK(file.error().description().find(file.error().cause) != std::string::npos);
        CHECK(file.error().description().ends_with(file.error().remedy));
    }
}

TEST_CASE("an error is short and without control characters, whatever the document") {
    const std::string document = "<OFX><A>1</\x1B[31m" + std::string(10'000'000, 'X') + ">";
    const OpenedFile file = opened(document, OpenOptions::asIs());
    CHECK(file.error().code == OpenErrorCode::tagsDoNotMatch);
    CHECK(file.error().description().size() < 1000);
    CHECK(file.error().description().find('\x1B') == std::string::npos);
    CHECK(opened(std::string(100, '\x1B')).error().description().find('\x1B') == std::string::npos);
}

TEST_CASE("tags that do not match have both places, a cause and a remedy when repairs are not wanted") {
    const std::string document = "OFXHEADER:100\n\n<OFX>\n<STATUS>\n<CODE>0\n</STATUSS>\n</OFX>";
    const OpenedFile file = opened(document, OpenOptions::asIs());
    CHECK_FALSE(file);
    const OpenError& error = file.error();
    CHECK(error.code == OpenErrorCode::tagsDoNotMatch);
    CHECK(error.text ==
          "Found close tag </STATUSS> without opening tag. Maybe there is a close tag missing for <STATUS>.");
    CHECK(error.line == 6);
    CHECK(error.column == 1);
    CHECK(document.substr(error.offset, 10) == "</STATUSS>");
    REQUIRE(error.openedAt);
    CHECK(document.substr(*error.openedAt, 8) == "<STATUS>");
    CHECK(error.cause == "The close tag is misspelt, or belongs to another element than <STATUS>.");
    CHECK_FALSE(error.remedy.empty());
    CHECK(error.isRepairable);
    REQUIRE(file.documents().size() == 1);
    CHECK(file.documents()[0].error().code == OpenErrorCode::tagsDoNotMatch);
    CHECK((*file.documents()[0].content().ofxHeader)["OFXHEADER"].text() == "100");
}

TEST_CASE("a secret in a tag is not quoted") {
    const OpenedFile file = opened("<OFX><USERPASS>a<b>c</USERPASS></OFX>", OpenOptions::asIs());
    CHECK(file.error().code == OpenErrorCode::tagsDoNotMatch);
    CHECK(file.error().description().find("<b>") == std::string::npos);
}

TEST_CASE("the encoding is found out, and said when it is a guess") {
    const OpenedFile windows = opened(document("Caf\xE9 \x80"));
    REQUIRE(windows);
    CHECK(memosOf(windows) == std::vector<std::string>{"Café €"});
    CHECK(windows.documents()[0].encoding() == TextEncodingWindows1252);
    CHECK(windows.findings().empty());

    OpenOptions latin;
    latin.encoding = TextEncodingISOLatin1;
    const OpenedFile chosen = opened(document("Caf\xE9"), latin);
    CHECK(memosOf(chosen) == std::vector<std::string>{"Café"});
    CHECK(chosen.findings().empty());

    const OpenedFile marked = opened("\xEF\xBB\xBF" + document("tea"));
    CHECK(marked.documents()[0].mark() == "\xEF\xBB\xBF");
    CHECK(marked.findings().empty());
    CHECK(openData(exampleData("utf_16.ofx")).documents()[0].encoding() != TextEncodingUTF8);
}

TEST_CASE("an encoding is a finding where it is not the one that the document names") {
    const auto sgml = [](const std::string& charset, const std::string& memo,
                         const std::string& encoding = "") {
        std::string text = document(memo);
        const std::string field = encoding.empty() ? "" : "\nENCODING:" + encoding;
        return text.replace(text.find("1252"), 4, charset + field);
    };
    const auto xml = [](const std::string& encoding, const std::string& memo) {
        const std::string text = document(memo);
        return "<?xml version=\"1.0\"" + encoding + "?><?OFX OFXHEADER=\"200\"?>" +
               text.substr(text.find("<OFX>"));
    };
    const std::string latin = "Caf\xE9";
    const std::string utf8 = "Café";
    const std::string contradicted = ", but its bytes are not in that encoding; it is read as ";
    const std::string unknown = ", which is not supported; it is read as ";
    const FindingSeverity warning = FindingSeverity::warning;
    struct Row {
        std::string bytes;
        std::string text;  ///< of the finding, after its beginning; empty: there is none
        FindingSeverity severity = FindingSeverity::note;
    };
    for (const Row& row : std::vector<Row>{
             {sgml("1252", latin), ""},
             {sgml("8859-1", latin, "USASCII"), ""},
             {sgml("NONE", latin), "does not name its text encoding; it is read as windows-1252."},
             {sgml("NONE", latin, "USASCII"),
              "names the text encoding \"USASCII\"" + contradicted + "windows-1252."},
             {sgml("UTF-8", latin), "names the text encoding \"UTF-8\"" + contradicted + "windows-1252."},
             {sgml("UNICODE", latin), "names the text encoding \"UNICODE\"" + contradicted + "windows-1252."},
             {sgml("936", latin),
              "names the text encoding \"936\"" + unknown +
                  "windows-1252, so letters beyond ASCII may be wrong.",
              warning},
             {sgml("8859-15", latin), ""},
             {sgml("8859-7", latin),
              "names the text encoding \"8859-7\"" + unknown +
                  "windows-1252, so letters beyond ASCII may be wrong.",
              warning},
             {sgml("936", utf8), "names the text encoding \"936\"" + unknown + "UTF-8."},
             {sgml("1252", utf8), "names the text encoding \"1252\"" + contradicted + "UTF-8."},
             {sgml("1252", utf8, "UTF-8"), ""},
             {sgml("CSUNICODE", utf8), ""},
             {sgml("NONE", utf8), ""},
             {sgml("1252", "tea"), ""},
             {sgml("936", "tea"), ""},
             {"\xEF\xBB\xBF" + sgml("1252", utf8), ""},
             {xml(" encoding=\"ISO-8859-1\"", latin), ""},
             {xml(" encoding=\"ISO-8859-1\"", utf8),
              "names the text encoding \"ISO-8859-1\"" + contradicted + "UTF-8."},
             {xml(" encoding=\"UTF-16\"", utf8),
              "names the text encoding \"UTF-16\"" + contradicted + "UTF-8."},
             {xml(" encoding=\"UTF-8\"", utf8), ""},
             {xml("", utf8), ""},
         }) {
        CAPTURE(row.bytes);
        const OpenedFile file = opened(row.bytes);
        REQUIRE(file);
        CHECK(file.findings().size() == (row.text.empty() ? 0 : 1));
        for (const Finding& finding : file.findings()) {
            CHECK(finding.kind == FindingKind::encodingGuessed);
            CHECK(finding.text == "The document " + row.text);
            CHECK(finding.severity == row.severity);
        }
    }
}

TEST_CASE("marks that stand twice, and UTF-16 of the other order, are read") {
    struct Row {
        std::string why, bytes, memo, mark;
    };
    const std::string utf8 = "\xEF\xBB\xBF";
    for (const Row& row : std::vector<Row>{
             {"two marks", utf8 + utf8 + document("Café"), "Café", utf8 + utf8},
             {"three marks", utf8 + utf8 + utf8 + document("Café"), "Café", utf8 + utf8 + utf8},
             {"two before windows-1252", utf8 + utf8 + document("Caf\xE9"), "Café", utf8 + utf8},
             {"two of UTF-16", "\xFF\xFE\xFF\xFE" + wide(document("tea"), false), "tea", "\xFF\xFE\xFF\xFE"},
             {"big-endian, with a mark", "\xFE\xFF" + wide(document("tea"), true), "tea", "\xFE\xFF"},
             {"big-endian, without", wide(document("tea"), true), "tea", ""},
             {"little-endian, without", wide(document("tea"), false), "tea", ""},
             {"little-endian of four bytes", kMark32LittleEndian + wide(document("tea"), false, 4), "tea",
              kMark32LittleEndian},
             {"big-endian of four bytes", kMark32BigEndian + wide(document("tea"), true, 4), "tea",
              kMark32BigEndian},
         }) {
        CAPTURE(row.why);
        for (const OpenOptions& options : {OpenOptions(), OpenOptions::asIs()}) {
            const OpenedFile file = opened(row.bytes, options);
            REQUIRE(file);
            CHECK(memosOf(file) == std::vector<std::string>{row.memo});
            CHECK(file.documents()[0].mark() == row.mark);
            CHECK(file.documents()[0].text().bytes().starts_with("OFXHEADER"));
            CHECK(file.findings().empty());
        }
    }
    const OpenError cut = opened("\xFF\xFE" + wide(document("tea"), false) + "x").error();
    CHECK(cut.code == OpenErrorCode::undecodable);
    CHECK(cut.cause ==
          "It is UTF-16, which consists of pairs of bytes, but it ends in the middle of a pair.");
}

TEST_CASE("a chosen encoding with two byte orders has the one that the mark tells") {
    const TextEncoding utf32 = textEncodingNamed("UTF-32");
    struct Row {
        TextEncoding chosen;
        std::string mark;
        bool isBigEndian;
        std::size_t unit;
        std::string used;
    };
    for (const Row& row : std::vector<Row>{
             {TextEncodingUTF16, "\xFE\xFF", true, 2, "UTF-16BE"},
             {TextEncodingUTF16, "\xFF\xFE", false, 2, "UTF-16LE"},
             {TextEncodingUTF16BigEndian, "\xFE\xFF", true, 2, "UTF-16BE"},
             {utf32, kMark32BigEndian, true, 4, "UTF-32BE"},
             {utf32, kMark32LittleEndian, false, 4, "UTF-32LE"},
         }) {
        CAPTURE(row.used);
        OpenOptions options;
        options.encoding = row.chosen;
        const OpenedFile file = opened(row.mark + wide(document("tea"), row.isBigEndian, row.unit), options);
        REQUIRE(file);
        CHECK(memosOf(file) == std::vector<std::string>{"tea"});
        CHECK(nameOfTextEncoding(file.documents()[0].encoding()) == row.used);
        CHECK(file.documents()[0].mark() == row.mark);
    }
}

TEST_CASE("bytes that are no document in the chosen encoding name those in which they are one") {
    const auto errorIn = [](TextEncoding chosen, const std::string& bytes) {
        OpenOptions options;
        options.encoding = chosen;
        return opened(bytes, options).error();
    };
    const auto isNamed = [](const OpenError& error, TextEncoding encoding) {
        return std::ranges::find(error.readingEncodings, encoding) != error.readingEncodings.end();
    };
    // An even number of ASCII letters are half as many characters in UTF-16.
    const std::string even = document("teas").size() % 2 == 0 ? document("teas") : document("tea");
    const OpenError other = errorIn(TextEncodingUTF16BigEndian, even);
    CHECK(other.code == OpenErrorCode::notOFX);
    CHECK(other.cause == "It is not OFX when it is read as UTF-16BE.");
    CHECK(isNamed(other, TextEncodingUTF8));
    CHECK(other.remedy.starts_with("These encodings can read it: "));

    const OpenError undecodable = errorIn(TextEncodingWindows1252, document("\x81"));
    CHECK(undecodable.code == OpenErrorCode::undecodable);
    CHECK(undecodable.cause == "Its bytes are not text in windows-1252.");
    CHECK(isNamed(undecodable, TextEncodingISOLatin1));

    const OpenError unknown = errorIn(TextEncoding{4711}, document("tea"));
    CHECK(unknown.cause == "Its bytes are not text in text encoding 4711.");
    CHECK(isNamed(unknown, TextEncodingUTF8));

    const OpenError nothing = errorIn(TextEncodingISOLatin1, "Dear customer");
    CHECK(nothing.cause == "It begins with \"Dear customer\".");
    CHECK(nothing.readingEncodings.empty());
}

TEST_CASE("a text that reads and has no OFX in it is an error that names it") {
    const std::string header = document("tea").substr(0, document("tea").find("<OFX>"));
    struct Row {
        std::string bytes;
        OpenErrorCode code;
        std::string cause;
    };
    for (const Row& row : std::vector<Row>{
             {"<?xml version=\"1.0\"?><Document xmlns=\"x\"><A/></Document>", OpenErrorCode::otherFormat,
              "<Document>"},
             {"<?xml version=\"1.0\"?>\n<!-- x -->\n<?style x?><ss:Workbook></ss:Workbook>",
              OpenErrorCode::otherFormat, "<Workbook>"},
             {"<?xml version=\"1.0\"?><rss></rss>", OpenErrorCode::otherFormat, "<rss>"},
             {"<?xml version=\"1.0\"?><error>no session</error>", OpenErrorCode::otherFormat, "<error>"},
             {"<?xml version=\"1.0\"?><!DOCTYPE html><html></html>", OpenErrorCode::html, "web page"},
             {header + "<HTML><BODY>Sign in</BODY></HTML>", OpenErrorCode::html, "web page"},
             {header + "<OFC><DTD>2<ACCTSTMT></ACCTSTMT></OFC>", OpenErrorCode::ofc, "OFC"},
             {"<OFC version=\"2\"><DTD>2</OFC>", OpenErrorCode::ofc, "OFC"},
             {"<ofc ><DTD>2</ofc>", OpenErrorCode::ofc, "OFC"},
             {"Content-Type: x\n\n<OFC><DTD>2</OFC>", OpenErrorCode::ofc, "OFC"},
             {"<!-- <x> -->\n<OFC><DTD>2</OFC>", OpenErrorCode::ofc, "OFC"},
             {"<?xml version=\"1.0\"?><OFC><DTD>2</OFC>", OpenErrorCode::ofc, "OFC"},
             {"\xEF\xBB\xBF<OFC><DTD>2</OFC>", OpenErrorCode::ofc, "OFC"},
             {"<OFC><MEMO>\xE9</OFC>", OpenErrorCode::ofc, "OFC"},
         })
        for (const OpenOptions& options : {OpenOptions(), OpenOptions::asIs()}) {
            CAPTURE(row.bytes);
            const OpenedFile file = opened(row.bytes, options);
            CHECK_FALSE(file);
            CHECK(nameOf(file.error().code) == nameOf(row.code));
            CHECK(file.error().cause.find(row.cause) != std::string::npos);
            CHECK_FALSE(file.error().remedy.empty());
            CHECK(file.findings().empty());
        }
}

TEST_CASE("a document without the instruction of its XML, or without its root, is OFX all the same") {
    const std::string body = document("tea").substr(document("tea").find("<OFX>"));
    for (const std::string& bytes :
         {"<?xml version=\"1.0\"?>" + body, "<?xml version=\"1.0\"?>" + body.substr(5, body.size() - 12)}) {
        CAPTURE(bytes);
        CHECK(opened(bytes, OpenOptions::asIs()));
        CHECK(memosOf(opened(bytes)) == std::vector<std::string>{"tea"});
    }
}

TEST_CASE("the header of a document is read whole, or a finding says that it is not") {
    const std::string body = document("tea").substr(document("tea").find("<OFX>"));
    struct Row {
        std::string why;
        std::string header;
        std::int32_t headerVersion;
        std::int32_t ofxVersion;
    };
    for (const Row& row : std::vector<Row>{
             {"in one line", "OFXHEADER:100 DATA:OFXSGML VERSION:102 SECURITY:NONE CHARSET:1252 ", 100, 102},
             {"comments between fields", "OFXHEADER:100\n<!-- x -->VERSION:102\n<!-- y -->SECURITY:NONE\n",
              100, 102},
             {"the end of a comment", "OFXHEADER:100 -->\nVERSION:102\nSECURITY:NONE\n", 100, 102},
             {"small letters", "ofxheader:100\ndata:OFXSGML\nversion:102\nsecurity:NONE\n", 100, 102},
             {"small letters after the first line", "OFXHEADER:100\nVersion:102\nSecurity : NONE\n", 100,
              102},
             {"blanks before the colons", "OFXHEADER : 100\nVERSION : 102\nSECURITY\t: NONE\n", 100, 102},
             {"small letters and one line", "ofxheader:100 data:OFXSGML version:102 security:NONE\n", 100,
              102},
             {"an instruction in small letters",
              "<?ofx OFXHEADER=\"200\" VERSION=\"211\" SECURITY=\"NONE\"?>", 200, 211},
             {"attributes in small letters",
              "<?xml version=\"1.0\"?>\n<?OFX ofxheader=\"200\" version=\"211\" security=\"NONE\"?>", 200,
              211},
             {"apostrophes", "<?xml version='1.0'?>\n<?OFX OFXHEADER='200' VERSION='211' SECURITY='NONE'?>",
              200, 211},
             {"blanks around equals signs",
              "<?OFX OFXHEADER = \"200\" VERSION = \"211\" SECURITY=\"NONE\" ?>", 200, 211},
             {"lines of their own", "<?OFX OFXHEADER=\"200\"\r\n\tVERSION=\"211\"\r\n\tSECURITY=\"NONE\"?>",
              200, 211},
             {"a declaration before a header of OFX 1",
              "<?xml version=\"1.0\"?>\nOFXHEADER:100\nVERSION:102\nSECURITY:NONE\n\n", 100, 102},
         }) {
        CAPTURE(row.why);
        const OpenedFile file = opened(row.header + body);
        REQUIRE(file);
        CHECK(memosOf(file) == std::vector<std::string>{"tea"});
        CHECK(file.message()->headerVersion() == row.headerVersion);
        CHECK(file.message()->ofxVersion() == row.ofxVersion);
        CHECK(file.message()->ofxSecurity().value_or("") == "NONE");
        REQUIRE(file.findings().size() == 1);
        CHECK(file.findings()[0].kind == FindingKind::repaired);
        const OpenedFile asIs = opened(row.header + body, OpenOptions::asIs());
        CHECK((!asIs || has(asIs, FindingKind::notDelivered) || has(asIs, FindingKind::noContent)));
    }
    for (const std::string& header : std::vector<std::string>{
             "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\nSECURITY:NONE\nNEWFILEUID:NONE\n\n",
             "OFXHEADER: 100\r\nVERSION : 102\r\n", "<?OFX OFXHEADER=\"200\" VERSION=\"211\"?>\n", "<?OFX?>",
             "",
             "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n<?OFX "
             "VERSION=\"211\"\nSECURITY=\"NONE\"?>"}) {
        CAPTURE(header);
        CHECK(opened(header + body).findings().empty());
    }
}

TEST_CASE("a document that does not read is repaired, unless that is not wanted") {
    std::string broken = document("tea");
    broken.replace(broken.find("</STMTTRN>"), 10, "</STMTRN>");
    const OpenedFile repaired = opened(broken);
    REQUIRE(repaired);
    CHECK(memosOf(repaired) == std::vector<std::string>{"tea"});
    REQUIRE(has(repaired, FindingKind::repaired));
    const OpenedDocument& read = repaired.documents()[0];
    REQUIRE(read.changes().size() == 1);
    CHECK(read.text().bytes() == broken);
    CHECK(read.readText().bytes() == document("tea"));
    OpenOptions never;
    never.repair = OpenRepair::never;
    CHECK(opened(broken, never).error().code == OpenErrorCode::tagsDoNotMatch);
}

TEST_CASE("a document that a repair does not improve is opened as it stands") {
    const std::string account = "<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>CHECKING</BANKACCTFROM>";
    const std::string list =
        "<BANKTRANLIST><DTSTART>20240101<DTEND>20240131<STMTTRN><TRNTYPE>POS<DTPOSTED>20240105<TRNAMT>-5.00"
        "<FITID>1<NAME>Tea</STMTTRN></BANKTRANLIST>";
    const auto with = [&account](const std::string& before, const std::string& content) {
        return "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\n\n<OFX>" + before +
               "<BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS><CURDEF>USD" + account + content +
               "</STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>\n";
    };
    for (const std::string& text :
         {with(account, list), with("", "<CCACCTFROM><ACCTID>9</CCACCTFROM>" + list),
          with("", "<CURDEF>EUR" + list), with("<DTSERVER>20240101", list)}) {
        CAPTURE(text);
        OpenOptions never;
        never.repair = OpenRepair::never;
        const OpenedFile asItStands = opened(text, never);
        const OpenedFile file = opened(text);
        REQUIRE(file.statements().size() == 1);
        CHECK(file.statements()[0]->statementTransactions().size() == 1);
        CHECK(file.documents()[0].changes().empty());
        CHECK(file.documents()[0].readText().bytes() == text);
        CHECK_FALSE(file.findings().empty());
        CHECK(transcriptOf(*file.message()) == transcriptOf(*asItStands.message()));
    }
}

TEST_CASE("every document of a file is opened, each in its own encoding and with its own places") {
    const std::string first = document("Caf\xE9", "1");
    const std::string second = "\xEF\xBB\xBF" + document("Th\xC3\xA9", "2");
    std::string third = document("rum", "3");
    third.replace(third.find("-5.00"), 5, "-5.x0");
    const OpenedFile file = opened(first + second + "\n" + third);
    REQUIRE(file);
    REQUIRE(file.documents().size() == 3);
    CHECK(memosOf(file) == std::vector<std::string>{"Café", "Thé", "rum"});
    CHECK(file.documents()[0].encoding() == TextEncodingWindows1252);
    CHECK(file.documents()[1].encoding() == TextEncodingUTF8);
    CHECK(file.findings()[0].kind == FindingKind::severalDocuments);
    CHECK(file.findings()[0].count == 3);
    const auto odd = std::ranges::find(file.findings(), FindingKind::unreadableValue, &Finding::kind);
    REQUIRE(odd != file.findings().end());
    CHECK(odd->line == 16);
    CHECK(file.message()->bankAccountsFound().size() == 1);
}

TEST_CASE("several documents in UTF-16 are opened, too") {
    const std::string text = document("one") + document("two");
    const auto wide = encodeText(text, TextEncodingUTF16LittleEndian);
    REQUIRE(wide);
    const OpenedFile file = opened("\xFF\xFE" + std::string(wide->bytes()));
    CHECK(memosOf(file) == std::vector<std::string>{"one", "two"});
}

TEST_CASE("a document that was cut off does not swallow the next one") {
    std::string cut = document("one");
    cut.resize(cut.find("</STMTTRN>"));
    const OpenedFile file = opened(cut + "\n" + document("two"));
    CHECK(memosOf(file) == std::vector<std::string>{"one", "two"});
    CHECK(has(file, FindingKind::cutOff));
    CHECK(has(file, FindingKind::severalDocuments));
}

TEST_CASE("a document that was cut off anywhere does not swallow the next one, whatever that begins with") {
    const std::string whole = document("two", "2");
    const std::string body = whole.substr(whole.find("<OFX>"));
    const std::string xml = "<?xml version=\"1.0\"?>\n<?OFX OFXHEADER=\"200\"?>\n";
    for (const std::string& next : {whole, body, xml + body})
        for (const std::string end :
             {"-5.00", "<MEMO>one", "</BANKTRANLIST>", "</STMTTRN></BANKTRANLIST></STMTRS>"})
            for (const std::string& header : {std::string(), xml}) {
                CAPTURE(next);
                CAPTURE(end);
                std::string cut = header.empty()
                                      ? document("one")
                                      : header + document("one").substr(document("one").find("<OFX>"));
                cut.resize(cut.find(end) + end.size());
                const OpenedFile file = opened(cut + next);
                CHECK(file.documents().size() == 2);
                CHECK(file.statements().size() == 2);
                CHECK(has(file, FindingKind::cutOff));
                CHECK(has(file, FindingKind::severalDocuments));
                CHECK(accountOf(*file.statements().back()).accountID() == "2");
                CHECK(memosOf(file).back() == "two");
            }
}

TEST_CASE("a statement leads to its account") {
    const OpenedFile bank = opened(document("tea", "17"));
    const StatementAccount account = accountOf(*bank.statements().at(0));
    REQUIRE(account.bank);
    CHECK_FALSE(account.card);
    CHECK(account.accountID() == "17");
    const OpenedFile card = openData(exampleData("card.ofx"));
    CHECK(accountOf(*card.statements().at(0)).card);
    CHECK_FALSE(accountOf(*card.statements().at(0)).bank);
    CHECK(accountOf(*card.statements().at(0)).accountID().has_value());
    const OpenedFile nameless =
        opened("<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>");
    CHECK_FALSE(accountOf(*nameless.statements().at(0)).accountID());
}

TEST_CASE("the accounts of statements are keys by what they say") {
    const OpenedFile first = opened(document("tea", "17"));
    const OpenedFile again = opened(document("milk", "17"));
    const OpenedFile other = opened(document("tea", "18"));
    const OpenedFile card = openData(exampleData("card.ofx"));
    const auto keyOf = [](const OpenedFile& file) { return accountOf(*file.statements().front()); };
    const StatementAccount none;
    const std::vector<StatementAccount> ascending{none, keyOf(card), keyOf(first), keyOf(other)};
    for (std::size_t i = 0; i < ascending.size(); ++i)
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            CHECK((ascending[i] <=> ascending[j]) == (i <=> j));
            CHECK((ascending[i] == ascending[j]) == (i == j));
            CHECK((std::hash<StatementAccount>()(ascending[i]) ==
                   std::hash<StatementAccount>()(ascending[j])) == (i == j));
        }
    CHECK(keyOf(first).bank != keyOf(again).bank);
    CHECK(keyOf(first) == keyOf(again));

    std::map<StatementAccount, int> ordered;
    std::unordered_map<StatementAccount, int> hashed;
    for (const OpenedFile* file : {&first, &again, &other, &card}) {
        ++ordered[keyOf(*file)];
        ++hashed[keyOf(*file)];
    }
    CHECK(ordered.size() == 3);
    CHECK(ordered.at(keyOf(again)) == 2);
    CHECK(hashed.size() == 3);
    CHECK(hashed.at(keyOf(again)) == 2);
}

TEST_CASE("the lists of a temporary file are safe to walk over") {
    std::size_t count = 0;
    for (const Security& security : openData(exampleData("investments.ofx")).securities().all())
        count += security.name() ? 1U : 0U;
    CHECK(count == openData(exampleData("investments.ofx")).securities().all().size());
}

TEST_CASE("text after the end that the repair takes in is no text after the end") {
    const std::string whole = document("one");
    const std::string more =
        "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240106<TRNAMT>-6.00<FITID>2<MEMO>two</STMTTRN>";
    const OpenedFile file = opened(whole + more);
    CHECK(memosOf(file) == std::vector<std::string>{"one", "two"});
    CHECK_FALSE(has(file, FindingKind::textAround));
    CHECK(has(opened(whole + more + "Dear customer"), FindingKind::repaired));
    CHECK(has(opened(whole + "Dear customer"), FindingKind::textAround));
}

TEST_CASE("a document with another root, or none, is cut off only where its own close tag is missing") {
    const std::string whole = document("one");
    const std::size_t begin = whole.find("<STMTRS>");
    const std::string root = whole.substr(begin, whole.find("</STMTTRNRS>") - begin);
    const OpenedFile file = opened(root);
    CHECK(memosOf(file) == std::vector<std::string>{"one"});
    CHECK_FALSE(has(file, FindingKind::cutOff));
    CHECK(has(opened(root.substr(0, root.find("</STMTRS>"))), FindingKind::cutOff));
    const OpenedFile rootless = opened(whole.substr(whole.find("<BANKMSGSRSV1>")));
    CHECK(memosOf(rootless) == std::vector<std::string>{"one"});
    CHECK_FALSE(has(rootless, FindingKind::cutOff));
    CHECK_FALSE(has(rootless, FindingKind::textAround));
}

TEST_CASE("a text that begins with a transaction is a document") {
    const std::string whole = document("one");
    const std::size_t begin = whole.find("<STMTTRN>");
    const std::string transaction = whole.substr(begin, whole.find("</BANKTRANLIST>") - begin);
    CHECK(memosOf(opened(transaction)) == std::vector<std::string>{"one"});
    CHECK(opened("Dear customer, see <STMTTRN>.").error().code == OpenErrorCode::notOFX);
}

TEST_CASE("tags with the prefix of a namespace are read") {
    std::string text = "<?xml version=\"1.0\"?><?OFX OFXHEADER=\"200\" VERSION=\"211\"?>" +
                       document("tea").substr(document("tea").find("<OFX>"));
    for (std::size_t at = text.find("<OFX>"); at != std::string::npos; at = text.find('<', at + 1))
        text.insert(at + (text[at + 1] == '/' ? 2 : 1), "ofx:");
    const OpenedFile file = opened(text);
    CHECK(memosOf(file) == std::vector<std::string>{"tea"});
    CHECK(file.findings().size() == 1);
    const OpenedFile asIs = opened(text, OpenOptions::asIs());
    CHECK_FALSE(has(asIs, FindingKind::cutOff));
    CHECK_FALSE(asIs.findings().empty());
    std::string rootOnly = document("tea");
    rootOnly.replace(rootOnly.find("<OFX>"), 5, "<ofx:OFX xmlns:ofx=\"x\">");
    rootOnly.replace(rootOnly.find("</OFX>"), 6, "</ofx:OFX>");
    CHECK(memosOf(opened(rootOnly)) == std::vector<std::string>{"tea"});
    CHECK_FALSE(has(opened(rootOnly), FindingKind::cutOff));
}

TEST_CASE("a document of a header alone, or with a text after it, says so") {
    const std::string header = document("tea").substr(0, document("tea").find("<OFX>"));
    struct Row {
        std::string bytes, text;
    };
    for (const Row& row : std::vector<Row>{
             {header, "The document ends after its header. Download it again."},
             {header + "An error has occurred\n",
              "The document has no elements after its header, but the text \"An error has occurred\"."},
             {header + "&lt;OFX&gt;&lt;/OFX&gt;",
              "The document has no elements after its header, but the text \"&lt;OFX&gt;&lt;/OFX&gt;\"."}}) {
        CAPTURE(row.bytes);
        const OpenedFile file = opened(row.bytes);
        REQUIRE(file);
        REQUIRE(file.findings().size() == 1);
        CHECK(file.findings()[0].kind == FindingKind::noContent);
        CHECK(file.findings()[0].text == row.text);
    }
}

TEST_CASE("a document that does not read is a finding when another one of the file reads") {
    std::string broken = document("one");
    broken.replace(broken.find("</STMTTRN>"), 10, "</STMTRN>");
    const OpenedFile file = opened(document("two") + broken, OpenOptions::asIs());
    REQUIRE(file);
    CHECK(memosOf(file) == std::vector<std::string>{"two"});
    REQUIRE(has(file, FindingKind::unreadDocument));
    CHECK_FALSE(file.documents()[1]);
    CHECK(file.findings()[1].severity == FindingSeverity::error);
    CHECK(file.findings()[1].line == 10);
}

TEST_CASE("of many documents that are no text only the first ones name the encodings that read them") {
    std::string bytes;
    for (int i = 0; i < 6; ++i) bytes += "<OFX><A>\xFF\x81</OFX>\n";
    const OpenedFile file = opened(bytes);
    REQUIRE(file.documents().size() == 6);
    for (std::size_t i = 0; i < 6; ++i) {
        CAPTURE(i);
        const OpenError& error = file.documents()[i].error();
        CHECK(error.code == OpenErrorCode::undecodable);
        CHECK(error.remedy.starts_with(i < 4 ? "These encodings can read it: "
                                             : "Give the encoding that it is in."));
        CHECK(error.readingEncodings.empty() == (i >= 4));
        for (const TextEncoding encoding : error.readingEncodings) {
            OpenOptions options;
            options.encoding = encoding;
            CHECK(opened("<OFX><A>\xFF\x81</OFX>\n", options));
            CHECK(error.remedy.find(*nameOfTextEncoding(encoding)) != error.remedy.npos);
        }
    }
}

TEST_CASE("some members of a struct can be named, and the others are empty, without a warning") {
    CHECK_FALSE(OpenOptions{.maximumSize = 1}.numberFormatter);
    CHECK_FALSE(OpenOptions{.maximumSize = 1}.dateFormatter);
    CHECK(Finding{.kind = FindingKind::refused}.text.empty());
    CHECK(OpenError{.code = OpenErrorCode::empty}.description().empty());
    CHECK(Error{.code = 1}.description.empty());
    CHECK(StatementAccount{.bank = nullptr} == StatementAccount{.card = nullptr});
    CHECK_FALSE(TvOFXParserResult{.ofxData = ParseDictionary()}.ofxHeader);
    CHECK(ArchiveListItem{.kind = ArchiveListItem::Kind::beginList, .count = 1}.text.empty());
}

TEST_CASE("limits on size and depth are held") {
    OpenOptions limited;
    limited.maximumSize = 100;
    CHECK(opened(document("tea"), limited).error().code == OpenErrorCode::tooLarge);
    CHECK_FALSE(opened(document("tea"), limited).error().remedy.empty());
    const TemporaryFolder folder;
    CHECK(openFile(folder.file("a", document("tea")), limited).error().code == OpenErrorCode::tooLarge);
    limited.maximumSize = 10'000;
    limited.maximumDepth = 6;  // OFX, message set, wrapper, statement, list, transaction
    CHECK(opened(document("tea"), limited));
    limited.maximumDepth = 5;
    const OpenedFile deep = opened(document("tea"), limited);
    CHECK(deep.error().code == OpenErrorCode::tooDeep);
    CHECK(deep.error().remedy == "Raise OpenOptions::maximumDepth if you trust the sender.");
    CHECK(deep.statements().empty());
}

TEST_CASE("of a file that does not tell its size, no more is read than the limit takes to see") {
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    REQUIRE(::mkfifo(path.c_str(), 0600) == 0);
    std::size_t written = 0;
    std::thread writer([&] {
        std::ofstream pipe(path, std::ios::binary);
        for (const std::string piece(10'000, 'x');
             written < 10'000'000 && pipe.write(piece.data(), 10'000).flush();)
            written += piece.size();
    });
    const auto previous = std::signal(SIGPIPE, SIG_IGN);  // what the writer gets once nobody reads
    OpenOptions limited;
    limited.maximumSize = 100;
    CHECK(openFile(path, limited).error().code == OpenErrorCode::tooLarge);
    writer.join();
    std::signal(SIGPIPE, previous);
    CHECK(written < 1'000'000);

    CHECK(openFile("/proc/self/maps", limited).error().code == OpenErrorCode::tooLarge);
    CHECK(openFile("/dev/null", limited).error().code == OpenErrorCode::empty);
    CHECK(openFile(folder.path(""), limited).error().code == OpenErrorCode::isFolder);
    limited.maximumSize = 1'000'000;
    CHECK(openFile("/proc/self/maps", limited).error().code == OpenErrorCode::notOFX);
}

TEST_CASE("the caller's formatters go before everything else") {
    OpenOptions options;
    options.numberFormatter = std::make_shared<DecimalNumberFormatter>(
        NumberFormat{.decimalSeparator = ",", .groupingSeparator = "."});
    options.dateFormatter = std::make_shared<PatternDateFormatter>("ddMMyyyy");
    std::string text = document("tea");
    text.replace(text.find("-5.00"), 5, "-5,25");
    text.replace(text.find("20240105"), 8, "05012024");
    const OpenedFile file = opened(text, options);
    const auto& transaction = *file.statements()[0]->statementTransactions()[0];
    CHECK(transaction.amount()->toString() == "-5.25");
    CHECK(dateDescription(*transaction.datePosted()) == "2024-01-05 00:00:00 +0000");
}

TEST_CASE("amounts and dates are read as they are written, unless that is not wanted") {
    std::string text = document("tea");
    text.replace(text.find("-5.00"), 5, "-0,99");
    text.replace(text.find("20240105"), 8, "30/06/2024");
    const OpenedFile file = opened(text);
    const auto& transaction = *file.statements()[0]->statementTransactions()[0];
    CHECK(transaction.amount()->toString() == "-0.99");
    CHECK(dateDescription(*transaction.datePosted()) == "2024-06-30 00:00:00 +0000");
    CHECK(has(file, FindingKind::doubtfulValue));
    const OpenedFile asIs = opened(text, OpenOptions::asIs());
    const auto& prescribed = *asIs.statements()[0]->statementTransactions()[0];
    CHECK(prescribed.amount()->toString() == "-99");
    CHECK_FALSE(prescribed.datePosted());
    CHECK(has(asIs, FindingKind::doubtfulValue));
}

TEST_CASE("an account list gives the blocks that its records leave out") {
    const OpenedFile file = opened(
        "<OFX><SIGNUPMSGSRSV1><ACCTINFOTRNRS><TRNUID>1<ACCTINFORS><DTACCTUP>20240101<ACCTINFO><DESC>Both"
        "<BANKACCTINFO><BANKACCTFROM><BANKID>1<ACCTID>11<ACCTTYPE>CHECKING</BANKACCTFROM><SUPTXDL>Y<XFERSRC>Y"
        "<XFERDEST>N<SVCSTATUS>ACTIVE</BANKACCTINFO><CCACCTINFO><CCACCTFROM><ACCTID>22</CCACCTFROM><SUPTXDL>Y"
        "<XFERSRC>N<XFERDEST>N<SVCSTATUS>ACTIVE</CCACCTINFO></ACCTINFO><ACCTINFO><INVACCTINFO><INVACCTFROM>"
        "<BROKERID>b<ACCTID>33</INVACCTFROM><USPRODUCTTYPE>OTHER<CHECKING>N<SVCSTATUS>ACTIVE</INVACCTINFO>"
        "</ACCTINFO></ACCTINFORS></ACCTINFOTRNRS></SIGNUPMSGSRSV1></OFX>");
    const std::vector<ListedAccount> accounts = file.accounts();
    REQUIRE(accounts.size() == 2);
    CHECK(accounts[0].record->accountDescription() == "Both");
    CHECK(accounts[0].bank->bankAcctFrom()->accountID() == "11");
    CHECK(accounts[0].card->accountID() == "22");
    CHECK(accounts[0].investment == nullptr);
    CHECK(accounts[1].bank == nullptr);
    CHECK(accounts[1].card == nullptr);
    CHECK(accounts[1].investment->investmentAccount()->accountID() == "33");
    CHECK(file.findings().empty());
}

TEST_CASE("what was taken from a file stays when the file is gone") {
    std::vector<std::shared_ptr<TvOFXAccountStatement>> statements;
    {
        const OpenedFile file = opened(document("tea"));
        statements = file.statements();
    }
    CHECK(statements[0]->statementTransactions()[0]->memo() == "tea");
}

TEST_CASE("a detached transaction is equal, and refers to nothing of its document") {
    const OpenedFile file = openData(exampleData("checking.ofx"));
    const std::string_view text = file.documents()[0].text().bytes();
    for (const auto& transaction : file.statements()[0]->statementTransactions()) {
        const auto copy = detached(transaction);
        CHECK(copy->isEqualOFXStatementTransaction(transaction.get()));
        CHECK(copy->description() == transaction->description());
        CHECK(copy->originalDataString() == transaction->originalDataString());
        REQUIRE(copy->fiTransactionID());
        CHECK(isInside(*transaction->fiTransactionID(), text));
        CHECK_FALSE(isInside(*copy->fiTransactionID(), text));
        CHECK_FALSE(isInside(*copy->originalDataString(), text));
    }
    CHECK(detached(std::shared_ptr<const TvOFXStatementTransaction>()) == nullptr);
}

TEST_CASE("a detached transaction has what was set since it was read") {
    const OpenedFile file = opened(document("tea"));
    const auto& transaction = file.statements()[0]->statementTransactions()[0];
    transaction->setFiTransactionID("mine");
    transaction->setDatePosted(std::nullopt);
    const auto copy = detached(transaction);
    CHECK(copy->fiTransactionID() == "mine");
    CHECK_FALSE(copy->datePosted());
    // One that was not read from a document is copied, too.
    const auto archived = restored(*transaction);
    CHECK(detached(archived)->memo() == "tea");
}

TEST_CASE("a detached statement has account, balances, transactions and status of its own") {
    for (const char* const example : {"checking.ofx", "card.ofx"}) {
        CAPTURE(example);
        const OpenedFile file = openData(exampleData(example));
        const std::string_view text = file.documents()[0].text().bytes();
        REQUIRE_FALSE(file.statements().empty());
        const auto& statement = file.statements()[0];
        const auto copy = detached(statement);
        CHECK(copy->className() == statement->className());
        CHECK(copy->description() == statement->description());
        CHECK(copy->transactionUID() == statement->transactionUID());
        CHECK(copy->transactionWrapperName() == statement->transactionWrapperName());
        REQUIRE(statement->status());
        REQUIRE(copy->status());
        CHECK(copy->status()->code() == statement->status()->code());
        CHECK_FALSE(isInside(*copy->defaultCurrency(), text));
        CHECK_FALSE(isInside(*copy->status()->severity(), text));
        REQUIRE(copy->statementTransactions().size() == statement->statementTransactions().size());
        CHECK_FALSE(isInside(*copy->statementTransactions()[0]->transactionType(), text));
    }
    CHECK(detached(std::shared_ptr<const TvOFXAccountStatement>()) == nullptr);
}

TEST_CASE("a place counts lines of every kind and characters, not bytes") {
    const std::string_view text = "a\nb\r\nc\rdé€x";
    struct Row {
        std::size_t offset;
        TextPlace place;
    };
    for (const Row& row : {Row{0, {1, 1}}, Row{1, {1, 2}}, Row{2, {2, 1}}, Row{5, {3, 1}}, Row{7, {4, 1}},
                           Row{8, {4, 2}}, Row{10, {4, 3}}, Row{13, {4, 4}}, Row{99, {4, 5}}}) {
        CAPTURE(row.offset);
        CHECK(placeInText(text, row.offset).line == row.place.line);
        CHECK(placeInText(text, row.offset).column == row.place.column);
    }
}

TEST_CASE("every kind, severity and code has a name of its own") {
    std::vector<std::string_view> names;
    for (int kind = 0; kind <= static_cast<int>(FindingKind::repaired); ++kind)
        names.push_back(nameOf(static_cast<FindingKind>(kind)));
    for (int code = 0; code <= static_cast<int>(OpenErrorCode::tooDeep); ++code)
        names.push_back(nameOf(static_cast<OpenErrorCode>(code)));
    for (int severity = 0; severity <= static_cast<int>(FindingSeverity::error); ++severity)
        names.push_back(nameOf(static_cast<FindingSeverity>(severity)));
    for (const std::string_view name : names) CHECK_FALSE(name.empty());
    std::ranges::sort(names);
    CHECK(std::ranges::adjacent_find(names) == names.end());
}

TEST_CASE("a header whose fields share a line or stand in comments is read whole") {
    const std::string body = document("m").substr(document("m").find("<OFX>"));
    for (const std::string header :
         {"OFXHEADER:100 DATA:OFXSGML VERSION:102 SECURITY:NONE ",
          "OFXHEADER:100\nDATA:OFXSGML VERSION:102\n"
          "SECURITY:NONE\n",
          "OFXHEADER:100\n<!-- x -->DATA:OFXSGML\nVERSION:102\n<!-- y -->SECURITY:NONE\n",
          "OFXHEADER:100 <!-- x --> DATA:OFXSGML <!-- y --> VERSION:102 SECURITY:NONE\n",
          "OFXHEADER:100\nDATA:OFXSGML\n<!-- VERSION:102\nSECURITY:NONE\n"}) {
        CAPTURE(header);
        const OpenedFile file = opened(header + body);
        REQUIRE(file);
        const auto message = file.documents()[0].message();
        CHECK(message->headerVersion() == 100);
        CHECK(message->ofxVersion() == 102);
        CHECK(message->ofxSecurity() == "NONE");
        CHECK(memosOf(file) == std::vector<std::string>{"m"});
        CHECK(has(file, FindingKind::repaired));
        CHECK_FALSE(has(file, FindingKind::cutOff));
        OpenOptions asIs;
        asIs.repair = OpenRepair::never;
        CHECK(opened(header + body, asIs).documents()[0].changes().empty());
    }
}

TEST_CASE("parts of a profile and of an account list that are not read are mended or told") {
    const std::string profile(exampleData("profile.ofx").bytes());
    const auto part = [&profile](const std::string& name) {
        const std::size_t begin = profile.find("<" + name + ">");
        const std::string close = "</" + name + ">";
        return profile.substr(begin, profile.find(close, begin) + close.size() - begin);
    };
    const auto with = [&profile](const std::string& was, const std::string& now) {
        std::string text = profile;
        return text.replace(text.find(was), was.size(), now);
    };
    const std::string list = part("MSGSETLIST");
    const auto without = [](std::string text, const std::string& piece) {
        return text.erase(text.find(piece), piece.size());
    };
    const std::string sets = list.substr(12, list.size() - 25);
    struct Row {
        std::string name;
        std::string text;
        FindingKind kind;
    };
    const std::string accounts(exampleData("account_information.ofx").bytes());
    for (const Row& row : {Row{"two lists of message sets",
                               with(list, "<MSGSETLIST>" + part("SIGNONMSGSET") + "</MSGSETLIST>" +
                                              without(list, part("SIGNONMSGSET"))),
                               FindingKind::repaired},
                           {"two lists of realms",
                            with(part("SIGNONINFOLIST"), part("SIGNONINFOLIST") + part("SIGNONINFOLIST")),
                            FindingKind::repaired},
                           {"message sets without their list", with(list, sets), FindingKind::repaired},
                           {"two profiles of a message set",
                            with(part("SIGNONMSGSET"), part("SIGNONMSGSET") + part("SIGNONMSGSET")),
                            FindingKind::notDelivered}}) {
        CAPTURE(row.name);
        const OpenedFile file = opened(row.text);
        REQUIRE(file);
        CHECK(has(file, row.kind));
        REQUIRE(file.documents()[0].profile() != nullptr);
    }
    const OpenedFile bare = opened(
        "OFXHEADER:100\n\n<OFX><SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS><ACCTINFO><DESC>x<BANKACCTFROM>"
        "<BANKID>1<ACCTID>2</BANKACCTFROM></ACCTINFO></ACCTINFORS></ACCTINFOTRNRS></SIGNUPMSGSRSV1></OFX>");
    CHECK(has(bare, FindingKind::repaired));
    CHECK(bare.accounts().size() == 1);
    CHECK_FALSE(has(openData(exampleData("profile.ofx")), FindingKind::notDelivered));
    CHECK_FALSE(has(openData(exampleData("every_element.ofx")), FindingKind::repaired));
    CHECK_FALSE(has(opened(accounts), FindingKind::notDelivered));
}

}  // namespace opened_files
