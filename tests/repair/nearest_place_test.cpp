// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

/// Which of several places an element goes to that stands where it cannot: what is delivered stands with the
/// account that it belongs to.

using namespace brackwell;

namespace nearest_place {

namespace {

const std::string kHeader = "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\n\n";
const std::string kPeriod = "<DTSTART>20240101<DTEND>20240131";
const std::string kBalance = "<LEDGERBAL><BALAMT>5<DTASOF>20240131</LEDGERBAL>";

std::string in(const std::string& name, const std::string& content) {
    return "<" + name + ">" + content + "</" + name + ">";
}
std::string transaction(const std::string& id) {
    return in("STMTTRN", "<TRNTYPE>DEBIT<DTPOSTED>20240101<TRNAMT>-1<FITID>" + id);
}
std::string list(const std::string& content) { return in("BANKTRANLIST", content); }
std::string account(const std::string& id) { return in("BANKACCTFROM", "<BANKID>1<ACCTID>" + id); }
std::string cardAccount(const std::string& id) { return in("CCACCTFROM", "<ACCTID>" + id); }
std::string wrapped(const std::string& content) { return in("STMTTRNRS", in("STMTRS", content)); }
std::string bank(const std::string& content) { return in("BANKMSGSRSV1", content); }
std::string card(const std::string& content) {
    return in("CREDITCARDMSGSRSV1", in("CCSTMTTRNRS", in("CCSTMTRS", cardAccount("9") + content)));
}
std::string ofx(const std::string& content) { return kHeader + in("OFX", content); }
std::string signUp(const std::string& content) {
    return ofx(in("SIGNUPMSGSRSV1", in("ACCTINFOTRNRS", in("ACCTINFORS", content))));
}
std::string bankInfo(const std::string& id) {
    return in("BANKACCTINFO", account(id) + "<SUPTXDL>Y<XFERSRC>N<XFERDEST>N<SVCSTATUS>ACTIVE");
}

struct PlaceRow {
    const char* name;
    std::string before;
    std::string after;
};

void checkRows(const std::vector<PlaceRow>& rows) {
    for (const PlaceRow& row : rows) {
        CAPTURE(row.name);
        const RepairedText repaired = repairOFXText(row.before, RepairScope::structure);
        CHECK(repaired.text == row.after);
        CHECK(repaired.remaining.empty());
        CHECK(repairOFXText(repaired.text, RepairScope::structure).changes.empty());
        for (const RepairChange& change : repaired.changes) CHECK_FALSE(change.reason.empty());
    }
}

const std::string kA = transaction("a");
const std::string kB = transaction("b");
const std::string kC = transaction("c");

}  // namespace

TEST_CASE("a transaction outside of all statements goes to the one before it") {
    const std::string first = account("2") + list(kPeriod + kA);
    const std::string both = account("2") + list(kPeriod + kA + kB + kC);
    checkRows({
        {"after its wrapper", ofx(bank(wrapped(first) + kB + kC)), ofx(bank(wrapped(both)))},
        {"after its message set", ofx(bank(wrapped(first)) + kB + kC), ofx(bank(wrapped(both)))},
        {"after the document", ofx(bank(wrapped(first))) + kB + kC, ofx(bank(wrapped(both)))},
        {"after the second statement", ofx(bank(wrapped(first) + wrapped(account("3") + list(kB)) + kC)),
         ofx(bank(wrapped(first) + wrapped(account("3") + list(kB + kC))))},
        {"after a card's", ofx(bank(wrapped(first)) + card(list(kB))) + kC,
         ofx(bank(wrapped(first)) + card(list(kB + kC)))},
        {"after one without a list", ofx(bank(wrapped(account("2") + kBalance) + kA + kB)),
         ofx(bank(wrapped(account("2") + kBalance + list(kA + kB))))},
        {"a balance", ofx(bank(wrapped(first) + kBalance)), ofx(bank(wrapped(first + kBalance)))},
        {"a balance, of which the statement has one", ofx(bank(wrapped(first + kBalance) + kBalance)),
         ofx(bank(wrapped(first + kBalance) + wrapped(kBalance)))},
    });
}

TEST_CASE("however many transactions stand without a statement, they get one") {
    checkRows({
        {"as the root", kHeader + kA + kB + kC, ofx(bank(wrapped(list(kA + kB + kC))))},
        {"in the root", ofx(kA + kB + kC), ofx(bank(wrapped(list(kA + kB + kC))))},
        {"in a message set", ofx(bank(kA + kB)), ofx(bank(wrapped(list(kA + kB))))},
        {"accounts of a list as the root",
         kHeader + in("ACCTINFO", bankInfo("1")) + in("ACCTINFO", bankInfo("2")),
         signUp(in("ACCTINFO", bankInfo("1")) + in("ACCTINFO", bankInfo("2")))},
        {"securities as the root", kHeader + in("MFINFO", "<YIELD>1") + in("MFINFO", "<YIELD>2"),
         ofx(in("SECLISTMSGSRSV1", in("SECLIST", in("MFINFO", "<YIELD>1") + in("MFINFO", "<YIELD>2"))))},
    });
}

TEST_CASE("an account that is listed gets the records around it, each its own") {
    checkRows({
        {"a bank account in ACCTINFO",
         signUp(
             in("ACCTINFO", "<DESC>x" + account("1") + "<SUPTXDL>Y<XFERSRC>N<XFERDEST>N<SVCSTATUS>ACTIVE")),
         signUp(in("ACCTINFO", "<DESC>x" + bankInfo("1")))},
        {"a card in ACCTINFO", signUp(in("ACCTINFO", cardAccount("1"))),
         signUp(in("ACCTINFO", in("CCACCTINFO", cardAccount("1"))))},
        {"investments in ACCTINFO", signUp(in("ACCTINFO", in("INVACCTFROM", "<BROKERID>b"))),
         signUp(in("ACCTINFO", in("INVACCTINFO", in("INVACCTFROM", "<BROKERID>b"))))},
        {"two BANKACCTINFO in ACCTINFORS", signUp(bankInfo("1") + bankInfo("2")),
         signUp(in("ACCTINFO", bankInfo("1")) + in("ACCTINFO", bankInfo("2")))},
        {"each with a description", signUp("<DESC>x" + bankInfo("1") + "<DESC>y" + bankInfo("2")),
         signUp(in("ACCTINFO", "<DESC>x" + bankInfo("1")) + in("ACCTINFO", "<DESC>y" + bankInfo("2")))},
    });
}

TEST_CASE("a statement with two accounts is parted at the second") {
    const std::string one = "<CURDEF>USD" + account("2") + list(kPeriod + kA) + kBalance;
    const std::string two = account("3") + list(kPeriod + kB) + kBalance;
    const std::string three = account("4") + list(kPeriod + kC) + kBalance;
    checkRows({
        {"two", ofx(bank(wrapped(one + two))), ofx(bank(wrapped(one) + wrapped(two)))},
        {"three", ofx(bank(wrapped(one + two + three))),
         ofx(bank(wrapped(one) + wrapped(two) + wrapped(three)))},
        {"with its currency", ofx(bank(wrapped(one + "<CURDEF>EUR" + two + "<CURDEF>CHF" + three))),
         ofx(bank(wrapped(one) + wrapped("<CURDEF>EUR" + two) + wrapped("<CURDEF>CHF" + three)))},
    });
    const std::string twice = ofx(bank(wrapped("<CURDEF>USD" + account("2") + account("2") + list(kA))));
    CHECK(repairOFXText(twice, RepairScope::structure).text == twice);
}

TEST_CASE("the period of two lists that become one begins with the first and ends with the last") {
    struct Period {
        const char* first;
        const char* second;
        const char* start;
        const char* end;
    };
    const PatternDateFormatter day("yyyy-MM-dd", TimeZone(), "C");
    for (const Period& row :
         {Period{"<DTSTART>20240101<DTEND>20240131", "<DTSTART>20240201<DTEND>20240229", "2024-01-01",
                 "2024-02-29"},
          {"<DTSTART>20240201<DTEND>20240229", "<DTSTART>20240101<DTEND>20240131", "2024-01-01",
           "2024-02-29"},
          {"<DTSTART>20240101<DTEND>20240131", "<DTSTART>20240101<DTEND>20240131", "2024-01-01",
           "2024-01-31"},
          {"<DTSTART>20240101<DTEND>20240131", "<DTSTART>20230101<DTEND>later", "2023-01-01", "2024-01-31"},
          {"<DTSTART>20240101<DTEND>20240131", "<DTEND>20240229", "2024-01-01", "2024-02-29"}}) {
        CAPTURE(row.first);
        CAPTURE(row.second);
        const std::string text =
            ofx(bank(wrapped(account("2") + list(row.first + kA) + list(row.second + kB))));
        const RepairedText repaired = repairOFXText(text, RepairScope::structure);
        const OpenedFile file = openData(Data::view(text));
        REQUIRE(file.statements().size() == 1);
        const auto& statement = file.statements()[0];
        REQUIRE(statement);
        CHECK(statement->statementTransactions().size() == 2);
        REQUIRE(statement->transactionStartDateTime());
        REQUIRE(statement->transactionEndDateTime());
        CHECK(day.stringFromDate(*statement->transactionStartDateTime()) == row.start);
        CHECK(day.stringFromDate(*statement->transactionEndDateTime()) == row.end);
        // What has no place any more is told.
        CHECK(repaired.remaining.size() == (std::string_view(row.second).starts_with("<DTEND>") ? 1 : 2));
    }
}

TEST_CASE("two lists of securities become one, and two sign-ons stay, which are told") {
    const std::string one = in("MFINFO", "<YIELD>1");
    const std::string two = in("MFINFO", "<YIELD>2");
    checkRows({{"SECLIST", ofx(in("SECLISTMSGSRSV1", in("SECLIST", one) + in("SECLIST", two))),
                ofx(in("SECLISTMSGSRSV1", in("SECLIST", one + two)))}});
    const std::string signOns =
        ofx(in("SIGNONMSGSRSV1", in("SONRS", "<DTSERVER>1") + in("SONRS", "<DTSERVER>2")));
    const RepairedText repaired = repairOFXText(signOns, RepairScope::structure);
    CHECK(repaired.changes.empty());
    CHECK(repaired.remaining.size() == 1);
}

TEST_CASE("an aggregate beside a leaf of its name is told") {
    const std::string text =
        ofx(bank(wrapped(account("2") + list(in("STMTTRN", "<FITID>a<PAYEE>x" + in("PAYEE", "<NAME>y"))))));
    const RepairedText repaired = repairOFXText(text, RepairScope::structure);
    CHECK(repaired.text == text);
    REQUIRE(repaired.remaining.size() == 2);
    CHECK(repaired.remaining[0].reason == "<PAYEE> has text, which only a leaf may have");
    CHECK(repaired.remaining[1].reason == "a second <PAYEE> is not allowed in <STMTTRN>");
}

TEST_CASE("an open tag inside of what belongs in it is moved, and leaves nothing empty") {
    const std::string account = "<BANKACCTFROM><BANKID>1<ACCTID>2</BANKACCTFROM>";
    const std::string whole = signUp(in("ACCTINFO", "<DESC>x" + in("BANKACCTINFO", account + "<SUPTXDL>Y")));
    for (const std::string tag : {"<BANKACCTINFO>", "<BANKACCTINFO >"}) {
        CAPTURE(tag);
        std::string text = whole;
        text.erase(text.find("<BANKACCTINFO>"), std::string_view("<BANKACCTINFO>").size());
        text.insert(text.find("<ACCTID>"), tag);
        const RepairedText repaired = repairOFXText(text, RepairScope::structure);
        CHECK(repaired.text == whole);
        REQUIRE(repaired.changes.size() == 2);
        CHECK(repaired.changes[1].was == tag);
        CHECK(repaired.changes[1].reason ==
              "<BANKACCTINFO> is nested too deep; it starts at the first element that belongs in it");
    }
}

}  // namespace nearest_place
