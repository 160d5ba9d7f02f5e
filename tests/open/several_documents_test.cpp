// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>
#include <doctest/doctest.h>

#include <algorithm>

#include "support/shown.h"

/// \file
/// What the documents of one file have in common: a limit of findings, and the order of day and month.

using namespace brackwell;
using namespace brackwell::tests;

namespace several_documents {

namespace {

std::string transaction(const std::string& date, const std::string& amount = "-5.00") {
    return "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>" + date + "<TRNAMT>" + amount + "</STMTTRN>\n";
}

std::string document(const std::string& transactions) {
    return "OFXHEADER:100\nDATA:OFXSGML\n\n<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS><CURDEF>EUR"
           "<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>CHECKING</BANKACCTFROM><BANKTRANLIST>\n" +
           transactions + "</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>\n";
}

std::string repeated(const std::string& piece, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += piece;
    return all;
}

std::vector<Finding> ofKind(const OpenedFile& file, FindingKind kind) {
    std::vector<Finding> found;
    std::ranges::copy_if(file.findings(), std::back_inserter(found),
                         [kind](const Finding& finding) { return finding.kind == kind; });
    return found;
}

std::string dateOf(const OpenedFile& file, std::size_t statement) {
    const auto& transactions = file.statements().at(statement)->statementTransactions();
    return shown(transactions.at(0)->datePosted()).substr(0, 10);
}

}  // namespace

TEST_CASE("the limit of findings of a kind is that of the file, however many documents it has") {
    const std::string odd = document(transaction("20240105", "abc") + transaction("20240105", "-0,99"));
    const OpenedFile file = openData(Data::copy(repeated(odd, 300)));
    REQUIRE(file.documents().size() == 300);
    CHECK(file.findings().size() == 1 + 2 * 21);
    for (const FindingKind kind : {FindingKind::unreadableValue, FindingKind::doubtfulValue}) {
        const std::vector<Finding> found = ofKind(file, kind);
        REQUIRE(found.size() == 21);
        std::size_t count = 0;
        for (const Finding& finding : found) count += finding.count;
        CHECK(count == 300);
        CHECK(found.back().text == "There are 280 more of the same kind.");
        CHECK(found.back().line == 0);
        CHECK(found.front().line < found[19].line);
    }
}

TEST_CASE("how many documents more do not read is said in one finding") {
    const OpenedFile file =
        openData(Data::copy(document(transaction("20240105")) + repeated("<OFX></B></OFX>\n", 100)),
                 OpenOptions::asIs());
    REQUIRE(file);
    const std::vector<Finding> unread = ofKind(file, FindingKind::unreadDocument);
    REQUIRE(unread.size() == 21);
    CHECK(unread.back().text == "There are 80 more of the same kind.");
    CHECK(unread.back().severity == FindingSeverity::error);
}

TEST_CASE("what a document has more than the limit is added to that of the others") {
    std::string refusals;
    for (int i = 0; i < 50; ++i)
        refusals += "<STMTTRNRS><TRNUID>1<STATUS><CODE>3000<SEVERITY>WARN</STATUS></STMTTRNRS>";
    const std::string one = "OFXHEADER:100\n\n<OFX><BANKMSGSRSV1>" + refusals + "</BANKMSGSRSV1></OFX>\n";
    const std::vector<Finding> refused = ofKind(openData(Data::copy(one + one)), FindingKind::refused);
    REQUIRE(refused.size() == 21);
    CHECK(refused.back().text == "There are 80 more of the same kind.");
    CHECK(refused.back().count == 80);
}

TEST_CASE("changes of a repair have their lines in the file, and their offsets in their document") {
    const std::string whole = document(transaction("20240105"));
    std::string cut = whole;
    cut.erase(cut.find("</BANKTRANLIST>"), 15);
    const OpenedFile file = openData(Data::copy(whole + cut));
    REQUIRE(file.documents().size() == 2);
    REQUIRE(file.documents()[0].changes().empty());
    REQUIRE(file.documents()[1].changes().size() == 1);
    const RepairChange& change = file.documents()[1].changes()[0];
    const std::vector<Finding> said = ofKind(file, FindingKind::repaired);
    REQUIRE(said.size() == 1);
    CHECK(change.line == 12);
    CHECK(change.line == said[0].line);
    CHECK(change.column == said[0].column);
    CHECK(file.documents()[1].text().bytes().substr(change.offset).starts_with("</STMTRS>"));
}

TEST_CASE("a date that can mean two days is read as another document of the file shows, and that is said") {
    struct Row {
        std::string other;
        std::string date;
        std::string text;
    };
    const std::vector<Row> rows = {
        {"30/06/2025", "2025-06-05",
         "The date \"05/06/2025\" is not in OFX format; it is read as 2025-06-05, with the day first, like "
         "the other dates of the file."},
        {"06/30/2025", "2025-05-06",
         "The date \"05/06/2025\" is not in OFX format; it is read as 2025-05-06, with the month first, like "
         "the other dates of the file."},
    };
    for (const Row& row : rows) {
        CAPTURE(row.other);
        const std::string bytes = document(transaction("05/06/2025")) + document(transaction(row.other));
        const OpenedFile file = openData(Data::copy(bytes));
        REQUIRE(file.statements().size() == 2);
        CHECK(dateOf(file, 0) == row.date);
        const std::vector<Finding> dates = ofKind(file, FindingKind::doubtfulValue);
        REQUIRE(dates.size() == 2);
        CHECK(dates[0].text == row.text);
        CHECK(dates[0].line == 5);
        CHECK(dates[1].line > 5);
        CHECK(ofKind(file, FindingKind::unreadableValue).empty());
    }
}

TEST_CASE("a document that shows an order itself keeps it, whatever the others of the file show") {
    const std::string dayFirst = document(transaction("05/06/2025") + transaction("30/06/2025"));
    const std::string monthFirst = document(repeated(transaction("06/30/2025"), 9));
    const OpenedFile file = openData(Data::copy(monthFirst + dayFirst));
    REQUIRE(file.statements().size() == 2);
    CHECK(dateOf(file, 1) == "2025-06-05");
}

TEST_CASE("a date that can mean two days is left out where no document of the file shows an order") {
    const OpenedFile file = openData(Data::copy(
        document(transaction("05/06/2025") + transaction("07/06/2025")) + document(transaction("20250630"))));
    const std::vector<Finding> unread = ofKind(file, FindingKind::unreadableValue);
    REQUIRE(unread.size() == 1);
    CHECK(unread[0].text ==
          "2 dates such as \"05/06/2025\" can mean two days, this one 2025-06-05 or 2025-05-06; the other "
          "dates of the file do not show which, so they are left out.");
    CHECK(unread[0].count == 2);
}

}  // namespace several_documents
