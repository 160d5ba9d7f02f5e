// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>
#include <doctest/doctest.h>

#include "support/documents.h"

/// \file
/// A survey goes through a record quickly when it has the same elements as one before. What is found in it
/// is the same wherever it stands.

using namespace brackwell;

namespace {

/// Elements of transactions of more shapes than are remembered, all of them sound.
std::string plainRecord(std::size_t number) {
    const std::string identifier = std::to_string(1000 + number);
    std::string record =
        "<STMTTRN><TRNTYPE>DEBIT</TRNTYPE><DTPOSTED>20240105</DTPOSTED><TRNAMT>-5.00</TRNAMT><FITID>" +
        identifier + "</FITID>";
    const char* const more[] = {"<CHECKNUM>1</CHECKNUM>", "<REFNUM>2</REFNUM>", "<NAME>Tea</NAME>",
                                "<MEMO>Green</MEMO>"};
    for (std::size_t i = 0; i < std::size(more); ++i)
        if ((number >> i & 1U) != 0) record += more[i];
    return record + "</STMTTRN>";
}

std::string document(const std::vector<std::string>& records) {
    std::string text =
        "<?xml version=\"1.0\"?><?OFX OFXHEADER=\"200\" VERSION=\"220\" SECURITY=\"NONE\" "
        "OLDFILEUID=\"NONE\" "
        "NEWFILEUID=\"NONE\"?><OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1</TRNUID><STATUS><CODE>0</CODE>"
        "<SEVERITY>INFO</SEVERITY></STATUS><STMTRS><CURDEF>EUR</CURDEF><BANKACCTFROM><BANKID>1</BANKID>"
        "<ACCTID>2</ACCTID><ACCTTYPE>CHECKING</ACCTTYPE></BANKACCTFROM><BANKTRANLIST>"
        "<DTSTART>20240101</DTSTART><DTEND>20240131</DTEND>\n";
    for (const std::string& record : records) text += record + "\n";
    return text + "</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>\n";
}

/// What is found, but for where.
std::string findingsOf(const std::vector<std::string>& records) {
    std::string all;
    const OpenedFile file = openData(Data::copy(document(records)));
    REQUIRE(file);
    for (const Finding& finding : file.findings())
        all += std::string(nameOf(finding.kind)) + " " + std::to_string(finding.count) + " " + finding.text +
               "\n";
    return all;
}

std::string record(const std::string& elements) {
    return "<STMTTRN><TRNTYPE>DEBIT</TRNTYPE>" + elements + "</STMTTRN>";
}
const std::string kDate = "<DTPOSTED>20240105</DTPOSTED>";
const std::string kAmount = "<TRNAMT>-5.00</TRNAMT>";
const std::string kIdentifier = "<FITID>7</FITID>";
const std::string kRate = "<CURRATE>1.10</CURRATE>";
const std::string kSymbol = "<CURSYM>USD</CURSYM>";

}  // namespace

TEST_CASE("what is found in a record does not depend on the records before it") {
    struct Row {
        const char* why;
        std::string elements;
        bool isSound = false;
    };
    const Row rows[] = {
        {"nothing", kDate + kAmount + kIdentifier, true},
        {"a currency", kDate + kAmount + kIdentifier + "<CURRENCY>" + kRate + kSymbol + "</CURRENCY>", true},
        {"an amount that is none", kDate + "<TRNAMT>five</TRNAMT>" + kIdentifier},
        {"an amount that means another", kDate + "<TRNAMT>-1.234,56</TRNAMT>" + kIdentifier},
        {"a date that is none", "<DTPOSTED>soon</DTPOSTED>" + kAmount + kIdentifier},
        {"a date with marks", "<DTPOSTED>31/01/2024</DTPOSTED>" + kAmount + kIdentifier},
        {"a date with an odd rest", "<DTPOSTED>20240131T2</DTPOSTED>" + kAmount + kIdentifier},
        {"no amount", kDate + kIdentifier},
        {"an empty amount", kDate + "<TRNAMT></TRNAMT>" + kIdentifier},
        {"no date", kAmount + kIdentifier},
        {"two amounts", kDate + kAmount + kAmount + kIdentifier},
        {"the identifier of another", kDate + "<TRNAMT>-6.00</TRNAMT><FITID>1003</FITID>"},
        {"an element of another aggregate", kDate + kAmount + kIdentifier + "<DTASOF>20240131</DTASOF>"},
        {"an element of the standard that no class reads",
         kDate + kAmount + kIdentifier + "<IMAGEDATA>1</IMAGEDATA>"},
        {"an element of nobody", kDate + kAmount + kIdentifier + "<COLOUR>red</COLOUR>"},
        {"an element that moved out of its aggregate",
         kDate + kAmount + kIdentifier + "<CURRENCY>" + kRate + "</CURRENCY>" + kSymbol},
        {"a record in a record", kDate + kAmount + kIdentifier + plainRecord(40)},
    };
    std::vector<std::string> sound;
    for (std::size_t i = 0; i < 20; ++i) sound.push_back(plainRecord(i));
    sound.push_back(
        record(kDate + kAmount + "<FITID>999</FITID><CURRENCY>" + kRate + kSymbol + "</CURRENCY>"));
    CHECK(findingsOf(sound) == "");
    for (const Row& row : rows) {
        CAPTURE(std::string(row.why));
        const auto withRowAt = [&](std::size_t place) {
            std::vector<std::string> records = sound;
            records.insert(records.begin() + static_cast<std::ptrdiff_t>(place), record(row.elements));
            return findingsOf(records);
        };
        const std::string first = withRowAt(0);
        CHECK(first.empty() == row.isSound);
        for (const std::size_t place : {1U, 2U, 3U, 17U, 20U, 21U}) {
            CAPTURE(place);
            CHECK(withRowAt(place) == first);
        }
    }
}

TEST_CASE("what is found in many records of one shape is what is found in one, as often") {
    const OpenedFile one = openData(Data::copy(document({plainRecord(3), record(kDate + kIdentifier)})));
    std::vector<std::string> records(1, plainRecord(3));
    for (int i = 0; i < 50; ++i)
        records.push_back(record(kDate + "<FITID>" + std::to_string(2000 + i) + "</FITID>"));
    const OpenedFile many = openData(Data::copy(document(records)));
    REQUIRE(one.findings().size() == 1);
    REQUIRE(many.findings().size() == 1);
    CHECK(one.findings().front().kind == many.findings().front().kind);
    CHECK(one.findings().front().count == 1);
    CHECK(many.findings().front().count == 50);
}
