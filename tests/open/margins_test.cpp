// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <algorithm>

/// What a repair delivers is neither said to be missing nor to be no part of the document.

using namespace brackwell;

namespace {

bool has(const OpenedFile& file, FindingKind kind) {
    return std::ranges::find(file.findings(), kind, &Finding::kind) != file.findings().end();
}

}  // namespace

TEST_CASE("what a repair takes in is no text around the document, and what ends is not cut off") {
    const std::string header = "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\n\n";
    const std::string one = "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240101<TRNAMT>-1<FITID>a</STMTTRN>";
    const std::string list = "<BANKTRANLIST><DTSTART>20240101<DTEND>20240131" + one + "</BANKTRANLIST>";
    const std::string statement =
        "<STMTRS><CURDEF>USD<BANKACCTFROM><BANKID>1<ACCTID>2</BANKACCTFROM>" + list + "</STMTRS>";
    const std::string set = "<BANKMSGSRSV1><STMTTRNRS>" + statement + "</STMTTRNRS></BANKMSGSRSV1>";
    struct Row {
        std::string name;
        std::string text;
        bool isAround = false;
        bool isCut = false;
    };
    for (const Row& row : {Row{"a transaction after the end", "<OFX>" + set + "</OFX>" + one},
                           {"all after the end", "<OFX></OFX>" + set},
                           {"a list as the root", list},
                           {"a statement as the root", statement},
                           {"transactions as the root", one + one},
                           {"other text after the end", "<OFX>" + set + "</OFX>bye", true, false},
                           {"other text after a transaction after the end",
                            "<OFX>" + set + "</OFX>" + one + "bye", true, false},
                           {"other text after a statement as the root", statement + "Thank you", true, false},
                           {"no end", "<OFX>" + set, false, true},
                           {"a list as the root, without an end",
                            list.substr(0, list.find("</BANKTRANLIST>")), false, true}}) {
        CAPTURE(row.name);
        const OpenedFile file = openData(Data::view(header + row.text));
        REQUIRE(file);
        CHECK_FALSE(file.statements().empty());
        CHECK(has(file, FindingKind::textAround) == row.isAround);
        CHECK(has(file, FindingKind::cutOff) == row.isCut);
    }
}

TEST_CASE("other text before a transaction after the end is named") {
    const std::string_view text =
        "OFXHEADER:100\n\n<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><CURDEF>USD<BANKTRANLIST></BANKTRANLIST></"
        "STMTRS>"
        "</STMTTRNRS></BANKMSGSRSV1></OFX>bye<STMTTRN><DTPOSTED>20240101<TRNAMT>-1<FITID>a</STMTTRN>";
    CHECK(has(openData(Data::view(text)), FindingKind::looseText));
}

TEST_CASE("text before the first element is named, and what belongs to a document is none") {
    const std::string fields =
        "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\nSECURITY:NONE\nENCODING:USASCII\n"
        "CHARSET:1252\nCOMPRESSION:NONE\nOLDFILEUID:NONE\nNEWFILEUID:NONE\n";
    const std::string instruction =
        "<?OFX OFXHEADER=\"200\" VERSION=\"211\" SECURITY=\"NONE\" OLDFILEUID=\"NONE\" "
        "NEWFILEUID=\"NONE\"?>\n";
    const std::string body =
        "<OFX><SIGNONMSGSRSV1><SONRS><STATUS><CODE>0<SEVERITY>INFO</STATUS></SONRS>"
        "</SIGNONMSGSRSV1></OFX>\n";
    const std::string begin = "Text before the beginning of the document is not part of it: ";
    struct Row {
        std::string name;
        std::string text;
        std::string shown;  ///< empty: nothing is named
        std::size_t line = 0;
        std::size_t column = 0;
    };
    for (const Row& row : std::vector<Row>{
             {"a letter", "Dear customer,\n\n" + fields + "\n" + body, "\"Dear customer\".", 1, 1},
             {"a header of mail", "Content-Type: application/x-ofx\n\n" + fields + body,
              "\"Content-Type: application/x-ofx\".", 1, 1},
             {"words in a page", "<html><body>\n  My bank <br>" + fields + body, "\"My bank\".", 2, 3},
             {"a cookie", "Set-Cookie: session=1234\n\n" + fields + body, "(not shown).", 1, 1},
             {"a payment between two documents", fields + body + "paid -5.00\n" + fields + body,
              "\"paid -5.00\".", 11, 1},
             {"a line after the header", fields + "\npaid -5.00 for bread\n" + body,
              "\"paid -5.00 for bread\".", 11, 1},
             {"a line with a time in it", fields + "at 12:30: -5.00\n" + body, "\"at 12:30: -5.00\".", 10, 1},
             {"a line before an instruction", "<?xml version=\"1.0\"?>\npaid -5.00\n" + instruction + body,
              "\"paid -5.00\".", 2, 1},
             {"a line after an instruction", instruction + "paid -5.00\n" + body, "\"paid -5.00\".", 2, 1},
             {"only tags", "<html><body><pre>\n" + fields + body, ""},
             {"a byte order mark, zeros and blanks",
              std::string("\0\0\xEF\xBB\xBF\n\xC2\xA0", 8) + fields + body, ""},
             {"a header in one line", "OFXHEADER:100 DATA:OFXSGML VERSION:102 SECURITY:NONE " + body, ""},
             {"a field of the institution", fields + "COPYRIGHT:my bank\n" + body, ""},
             {"a comment", fields + "<!-- made > today -->\n" + body, ""},
             {"a declaration with a subset",
              "<?xml version=\"1.0\"?><!DOCTYPE OFX [<!ELEMENT OFX ANY>]>\n" + instruction + body, ""},
             {"no header", body, ""},
         }) {
        CAPTURE(row.name);
        const OpenedFile file = openData(Data::view(row.text));
        REQUIRE(file);
        CHECK(file.signOn() != nullptr);
        const auto finding = std::ranges::find(file.findings(), FindingKind::textAround, &Finding::kind);
        REQUIRE((finding != file.findings().end()) == !row.shown.empty());
        if (row.shown.empty()) continue;
        CHECK(finding->text == begin + row.shown);
        CHECK(finding->severity == FindingSeverity::note);
        CHECK(finding->line == row.line);
        CHECK(finding->column == row.column);
    }
}
