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
