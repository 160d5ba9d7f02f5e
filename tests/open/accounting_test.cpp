// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>
#include <doctest/doctest.h>

#include <algorithm>

#include "support/documents.h"
#include "support/shown.h"

/// \file
/// What is said of elements that no class reads, and of text that is in none.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

constexpr FindingSeverity kNote = FindingSeverity::note;
constexpr FindingSeverity kWarning = FindingSeverity::warning;
constexpr FindingSeverity kError = FindingSeverity::error;

const std::string kAccount = "<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>CHECKING</BANKACCTFROM>";
const std::string kStatus = "<STATUS><CODE>0<SEVERITY>INFO</STATUS>";

std::string document(const std::string& messageSets) {
    return "OFXHEADER:100\nDATA:OFXSGML\n\n<OFX>\n" + messageSets + "</OFX>\n";
}

/// The elements of a transaction, a line each; they begin in line 9.
std::string transaction(const std::string& elements) {
    return document("<BANKMSGSRSV1><STMTTRNRS><TRNUID>1" + kStatus + "\n<STMTRS><CURDEF>EUR" + kAccount +
                    "\n<BANKTRANLIST><DTSTART>20240101<DTEND>20240131\n<STMTTRN>\n" + elements +
                    "</STMTTRN>\n</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1>\n");
}
const std::string kTransaction = "<TRNTYPE>DEBIT\n<DTPOSTED>20240105\n<TRNAMT>-5.00\n<FITID>7\n<NAME>Tea\n";

std::string withInvestments(const std::string& elements) {
    return document("<INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>1" + kStatus +
                    "\n<INVSTMTRS><DTASOF>20240131<CURDEF>EUR<INVACCTFROM><BROKERID>b<ACCTID>2"
                    "</INVACCTFROM>\n" +
                    elements + "</INVSTMTRS></INVSTMTTRNRS></INVSTMTMSGSRSV1>\n");
}
std::string bought(const std::string& identifier, const std::string& units) {
    return "<BUYSTOCK><INVBUY><INVTRAN><FITID>" + identifier + "<DTTRADE>20240105</INVTRAN><UNITS>" + units +
           "</INVBUY><BUYTYPE>BUY</BUYSTOCK>\n";
}

struct Row {
    std::string why;
    std::string document;
    FindingKind kind;
    FindingSeverity severity;
    std::size_t line;
    std::string text;
};

/// Checks that a document has exactly this finding, but for notes of a repair.
void check(const Row& row) {
    CAPTURE(row.why);
    const OpenedFile file = openData(Data::copy(row.document));
    CHECK(file);
    std::vector<Finding> findings = file.findings();
    std::erase_if(findings, [](const Finding& finding) { return finding.kind == FindingKind::repaired; });
    for (const Finding& finding : findings) CAPTURE(finding.text);
    REQUIRE(findings.size() == 1);
    CHECK(nameOf(findings[0].kind) == nameOf(row.kind));
    CHECK(nameOf(findings[0].severity) == nameOf(row.severity));
    CHECK(findings[0].line == row.line);
    CHECK(findings[0].text == row.text);
}

std::vector<Finding> findingsOf(const std::string& text) { return openData(Data::copy(text)).findings(); }

}  // namespace

TEST_CASE("elements under names that the standard does not have are named") {
    const FindingKind kind = FindingKind::unknownElement;
    const Row rows[] = {
        {"a misspelt leaf", transaction(kTransaction + "<MEMOX>note\n"), kind, kWarning, 14,
         "1 element is not read: <MEMOX> is not in the OFX standard, which has <MEMO>."},
        {"no name is near", transaction(kTransaction + "<CATEGORY>food\n"), kind, kWarning, 14,
         "1 element is not read: <CATEGORY> is not in the OFX standard."},
        {"an aggregate", transaction(kTransaction + "<SPLITS><PART>1.00<PART>2.00</SPLITS>\n"), kind,
         kWarning, 14,
         "1 element is not read: <SPLITS> is not in the OFX standard; in it: 2 amounts and 2 values."},
        {"a kind of investment",
         withInvestments("<INVTRANLIST><DTSTART>20240101<DTEND>20240131\n<BUYCOIN><INVBUY>"
                         "<INVTRAN><FITID>1<DTTRADE>20240105</INVTRAN><UNITS>5</INVBUY>"
                         "</BUYCOIN></INVTRANLIST>\n"),
         kind, kWarning, 8,
         "1 element is not read: <BUYCOIN> is not in the OFX standard; in it: 1 transaction, 1 amount "
         "and 3 values."},
        {"a word of a text", transaction("<MEMO>see <REF> 12<CHECKNUM>4\n" + kTransaction), kind, kWarning, 9,
         "1 element is not read: <REF> is not in the OFX standard; it cuts off the text of <MEMO> before "
         "it."},
        {"a private aggregate", transaction(kTransaction + "<ABC.SPLIT><ABC.PART>1.00</ABC.SPLIT>\n"), kind,
         kWarning, 14,
         "1 private element of the institution is not read: <ABC.SPLIT>; in it: 1 amount and 1 value."},
        {"a private aggregate without amounts", transaction(kTransaction + "<ABC.X><ABC.Y>blue</ABC.X>\n"),
         kind, kNote, 14, "1 private element of the institution is not read: <ABC.X>; in it: 1 value."},
    };
    for (const Row& row : rows) check(row);
    CHECK(findingsOf(transaction(kTransaction + "<INTU.NICK>blue\n<ABC.X>green\n")).empty());
    CHECK(findingsOf(transaction(kTransaction + "<CATEGORY></CATEGORY>\n")).empty());
}

TEST_CASE("elements of the standard that have no class are named") {
    const FindingKind kind = FindingKind::treeOnly;
    const Row rows[] = {
        {"beside a transaction", transaction(kTransaction + "<EXTDNAME>Tea and more\n"), kind, kNote, 14,
         "1 element is available only in the parse tree: <EXTDNAME>."},
        {"the telephone of a payee",
         transaction("<TRNTYPE>DEBIT<DTPOSTED>20240105<TRNAMT>1<FITID>7\n<PAYEE><NAME>x<PHONE>5</PAYEE>\n"),
         kind, kNote, 10, "1 element is available only in the parse tree: <PHONE>."},
        {"a closing statement",
         document("<BANKMSGSRSV1><STMTENDTRNRS><TRNUID>1" + kStatus + "<STMTENDRS><CURDEF>EUR" + kAccount +
                  "<CLOSING><FITID>1<BALCLOSE>7.00</CLOSING></STMTENDRS></STMTENDTRNRS></BANKMSGSRSV1>\n"),
         kind, kWarning, 5,
         "1 element is available only in the parse tree: <STMTENDTRNRS>; in it: 1 account number, 1 "
         "amount and 6 values."},
        {"an answer of a message set that is not listed",
         document("<LOANMSGSRSV1><LOANSTMTTRNRS><TRNUID>1" + kStatus +
                  "<LOANSTMTRS><CURDEF>EUR</LOANSTMTRS></LOANSTMTTRNRS></LOANMSGSRSV1>\n"),
         kind, kNote, 5, "1 element is available only in the parse tree: <LOANSTMTTRNRS>."},
        {"open orders",
         withInvestments("<INVOOLIST><OOBUYSTOCK><OO><FITID>1<UNITS>5</OO></OOBUYSTOCK></INVOOLIST>\n"), kind,
         kWarning, 7,
         "1 element is available only in the parse tree: <INVOOLIST>; in it: 1 order, 1 amount and 2 "
         "values."},
    };
    for (const Row& row : rows) check(row);
    // An answer without content, which the server does not refuse, holds nothing.
    CHECK(findingsOf(
              document("<BANKMSGSRSV1><INTRATRNRS><TRNUID>1" + kStatus + "</INTRATRNRS></BANKMSGSRSV1>\n"))
              .empty());
}

TEST_CASE("broken tags and text between elements are named, with the first place") {
    const Row rows[] = {
        {"text after a close tag", transaction(kTransaction + "<MEMO>x</MEMO>-7.00\n"),
         FindingKind::looseText, kWarning, 14, "1 text is between elements and belongs to none: \"-7.00\"."},
        {"a \"<\" in a word", transaction(kTransaction + "<MEMO>a<8 b\n"), FindingKind::brokenTag, kWarning,
         14, "1 \"<\" does not start a tag and is read as text: \"a<8 b\"."},
        {"a tag after capitals",
         transaction("<TRNTYPE>DEBITDTUSER>20240105\n<DTPOSTED>20240105\n<TRNAMT>-5.00\n"),
         FindingKind::brokenTag, kWarning, 9,
         "1 text seems to contain a tag that has lost its \"<\": \"DEBITDTUSER>20240105\" of <TRNTYPE>."},
        {"a date with a rest", transaction("<DTPOSTED>20240105T1200\n<TRNAMT>-5.00\n"),
         FindingKind::doubtfulValue, kWarning, 9,
         "1 date has text after its day that is not a time and is ignored: \"20240105T1200\"."},
        {"a text in an aggregate",
         withInvestments(
             "<INVPOSLIST><POSSTOCK><INVPOS>\n<SECID>C3\n<UNITS>1</INVPOS></POSSTOCK></INVPOSLIST>\n"),
         FindingKind::notDelivered, kWarning, 8,
         "1 aggregate has text instead of elements, so it is not read: <SECID>, \"C3\"."},
    };
    for (const Row& row : rows) check(row);
}

TEST_CASE("tags in small letters and tags without a bracket are mended") {
    for (const std::string& elements :
         {std::string("<trntype>DEBIT\n<DTPOSTED>20240105\n<TrnAmt>-5.00\n<FITID>7\n<NAME>Tea\n"),
          std::string("<TRNTYPE>DEBIT\n<DTPOSTED>20240105\n<TRNAMT-5.00\n<FITID>7\n<NAME>Tea\n"),
          std::string("<TRNTYPE>DEBIT\n<DTPOSTED>20240105\nTRNAMT>-5.00\n<FITID>7\n<NAME>Tea\n"),
          std::string("<TRNTYPE>DEBIT<DTPOSTED>20240105TRNAMT>-5.00<FITID>7<NAME>Tea\n"),
          std::string("<TRNTYPE>DEBIT\n<DTPOSTED>20240105\n<TRN<AMT>-5.00\n<FITID>7\n<NAME>Tea\n"),
          std::string(
              "<![CDATA[<TRNTYPE>DEBIT\n<DTPOSTED>20240105\n<TRNAMT>-5.00\n<FITID>7\n<NAME>Tea]]>\n")}) {
        CAPTURE(elements);
        const OpenedFile file = openData(Data::copy(transaction(elements)));
        REQUIRE(file.statements().size() == 1);
        REQUIRE(file.statements()[0]->statementTransactions().size() == 1);
        const TvOFXStatementTransaction& read = *file.statements()[0]->statementTransactions()[0];
        CHECK(read.transactionType() == "DEBIT");
        REQUIRE(read.amount());
        CHECK(read.amount()->toString() == "-5");
        CHECK(read.fiTransactionID() == "7");
        CHECK(read.payeeName() == "Tea");
        for (const Finding& finding : file.findings()) CHECK(finding.severity == kNote);
    }
}

TEST_CASE("words in angle brackets stay in the text of a leaf") {
    struct Row {
        std::string memo;
        std::string read;
    };
    for (const Row& row :
         {Row{"from <me@example.com> thanks", "from <me@example.com> thanks"},
          Row{"see <REF> 123", "see <REF> 123"}, Row{"pay <b>bold</b> now", "pay <b>bold</b> now"}}) {
        CAPTURE(row.memo);
        const OpenedFile file = openData(Data::copy(transaction(kTransaction + "<MEMO>" + row.memo + "\n")));
        REQUIRE(file.statements().size() == 1);
        CHECK(file.statements()[0]->statementTransactions()[0]->memo() == row.read);
        for (const Finding& finding : file.findings()) CHECK(finding.kind == FindingKind::repaired);
    }
}

TEST_CASE("records without amount or date are named") {
    const FindingKind kind = FindingKind::missingValue;
    const Row rows[] = {
        {"no amount", transaction("<TRNTYPE>DEBIT\n<DTPOSTED>20240105\n"), kind, kWarning, 8,
         "1 transaction has no amount: <TRNAMT> is missing or empty."},
        {"an empty date", transaction("<DTPOSTED></DTPOSTED><TRNAMT>1\n"), kind, kWarning, 8,
         "1 transaction has no date: <DTPOSTED> is missing or empty."},
        {"a balance",
         document("<BANKMSGSRSV1><STMTTRNRS><TRNUID>1" + kStatus + "\n<STMTRS><CURDEF>EUR" + kAccount +
                  "\n<LEDGERBAL><DTASOF>20240131</LEDGERBAL></STMTRS></STMTTRNRS></BANKMSGSRSV1>\n"),
         kind, kWarning, 7, "1 balance has no amount: <BALAMT> is missing or empty."},
    };
    for (const Row& row : rows) check(row);
}

TEST_CASE("answers that do not say that all is well are named") {
    const FindingKind kind = FindingKind::refused;
    const auto answer = [](const std::string& status) {
        return document("<BANKMSGSRSV1><STMTTRNRS><TRNUID>1\n<STATUS>" + status +
                        "</STATUS></STMTTRNRS></BANKMSGSRSV1>\n");
    };
    const Row rows[] = {
        {"no severity of the standard", answer("<CODE>2003<SEVERITY>FATAL"), kind, kError, 6,
         "The server refused a statement with code 2003 (the account was not found)."},
        {"no severity", answer("<CODE>2000"), kind, kError, 6,
         "The server refused a statement with code 2000 (a general error of the server)."},
        {"all is well, and there is no answer", answer("<CODE>2003<SEVERITY>INFO"), kind, kError, 6,
         "The server refused a statement with code 2003 (the account was not found)."},
        {"no number", answer("<CODE>E20<SEVERITY>INFO"), kind, kWarning, 6,
         "The status of a statement does not say whether the server accepted it: its code is \"E20\"."},
        {"no code", answer("<SEVERITY>INFO"), kind, kWarning, 6,
         "The status of a statement does not say whether the server accepted it: its code is missing."},
    };
    for (const Row& row : rows) check(row);
    CHECK(findingsOf(answer("<CODE>1<SEVERITY>INFO")).empty());
}

TEST_CASE("an account without a number is none") {
    std::string text = transaction(kTransaction);
    text.erase(text.find("<ACCTID>2"), 9);
    check(
        {"no number", text, FindingKind::noAccount, kWarning, 6,
         "1 statement does not say which account it is for: <BANKACCTFROM>, <CCACCTFROM> or <INVACCTFROM> is "
         "missing or has no <ACCTID>."});
}

TEST_CASE("records of investments are compared by identifier and read from every list") {
    const auto lists = [](const std::string& first, const std::string& second) {
        return withInvestments("<INVTRANLIST><DTSTART>20240101<DTEND>20240131\n" + first +
                               "</INVTRANLIST>\n" + "<INVTRANLIST>\n" + second + "</INVTRANLIST>\n");
    };
    check(
        {"one identifier", lists(bought("1", "5"), bought("1", "6")), FindingKind::repeatedIdentifier, kNote,
         11,
         "1 investment transaction has the same identifier (FITID) as an earlier, different one of the same "
         "statement: \"1\"."});
    std::string twice = lists(bought("1", "5"), "");
    const std::string inner = "<INVBUY><INVTRAN><FITID>9</INVTRAN></INVBUY>";
    check(
        {"twice in a record", twice.insert(twice.find("<BUYTYPE>"), inner), FindingKind::notDelivered,
         kWarning, 8,
         "1 element is repeated although only one is allowed, so only the first or none is read: <INVBUY>."});
}

namespace {

struct Lists {
    std::string document;
    std::size_t transactions, positions, securities;
    std::string unrepaired;  ///< what is said of them without a repair
};

void checkLists(const Lists& lists, OpenRepair repair) {
    CAPTURE(lists.document);
    OpenOptions options;
    options.repair = repair;
    const bool isRepaired = repair == OpenRepair::whenNeeded;
    const OpenedFile file = openData(Data::copy(lists.document), options);
    REQUIRE(file);
    std::size_t transactions = 0;
    std::size_t positions = 0;
    for (const InvestmentStatement& statement : file.investmentStatements()) {
        transactions += statement.transactions().size();
        positions += statement.positions().size();
    }
    CHECK(transactions == lists.transactions);
    CHECK(positions == lists.positions);
    CHECK(file.documents()[0].securities().size() == lists.securities);
    CHECK(file.documents()[0].changes().empty() != isRepaired);
    const auto isSaid = [&](const Finding& finding) {
        return isRepaired ? finding.kind == FindingKind::repaired : finding.text == lists.unrepaired;
    };
    CHECK(std::ranges::count_if(file.findings(), isSaid) == 1);
}

}  // namespace

TEST_CASE("lists of investments that stand twice are delivered whole, with the period of both") {
    const std::string transactions =
        withInvestments("<INVTRANLIST><DTSTART>20240101<DTEND>20240131\n" + bought("1", "5") +
                        "</INVTRANLIST>\n<INVTRANLIST><DTSTART>20240201<DTEND>20240229\n" + bought("2", "6") +
                        "</INVTRANLIST>\n");
    const std::string position = "<INVPOSLIST><POSSTOCK><INVPOS><UNITS>1</INVPOS></POSSTOCK></INVPOSLIST>\n";
    const std::string security = "<SECLIST><MFINFO><SECINFO><SECNAME>x</SECINFO></MFINFO></SECLIST>\n";
    const std::string set = "SECLISTMSGSRSV1>";
    const std::string further =
        "1 list is repeated although only one is allowed; the content of all is read, but only the period of "
        "the first: ";
    for (const OpenRepair repair : {OpenRepair::whenNeeded, OpenRepair::never})
        for (const Lists& lists :
             {Lists{transactions, 2, 0, 0, further + "<INVTRANLIST>."},
              Lists{withInvestments(position + position), 0, 2, 0, further + "<INVPOSLIST>."},
              Lists{document("<" + set + security + security + "</" + set), 0, 0, 2, further + "<SECLIST>."},
              Lists{document("<" + set + security + "</" + set + "<" + set + security + "</" + set), 0, 0, 2,
                    further + "<SECLISTMSGSRSV1>."}})
            checkLists(lists, repair);
    const OpenedFile file = openData(Data::copy(transactions));
    CHECK(shown(file.investmentStatements().at(0).start()) == "2024-01-01 00:00:00.000");
    CHECK(shown(file.investmentStatements().at(0).end()) == "2024-02-29 00:00:00.000");
}

TEST_CASE("a value of investments that gives way to another one of the same field is named") {
    const auto buying = [](const std::string& trade, const std::string& purchase) {
        return withInvestments(
            "<INVTRANLIST><DTSTART>20240101<DTEND>20240131\n<BUYSTOCK><INVBUY>\n<INVTRAN>"
            "<FITID>1<DTTRADE>20240105" +
            trade + "</INVTRAN>\n" + purchase + "<UNITS>5</INVBUY><BUYTYPE>BUY</BUYSTOCK></INVTRANLIST>\n");
    };
    const std::string one =
        "1 value differs from another element of the same field, which is delivered instead: ";
    const std::string stock =
        "<SECLISTMSGSRSV1><SECLIST>\n<STOCKINFO><SECINFO><SECID><UNIQUEID>1<UNIQUEIDTYPE>CUSIP</SECID>"
        "<SECNAME>x</SECINFO>\n<YIELD>3\n<YLD>4</STOCKINFO></SECLIST></SECLISTMSGSRSV1>";
    const Row rows[] = {
        {"MEMO", buying("<MEMO>dividend<MEMO2>other", ""), FindingKind::treeOnly, kNote, 9,
         one + "<MEMO>, \"dividend\"."},
        {"order", buying("<MEMO2>other<MEMO>dividend", ""), FindingKind::treeOnly, kNote, 9,
         one + "<MEMO>, \"dividend\"."},
        {"identifiers", buying("<SRVRTID>A<SRVRTID2>B", ""), FindingKind::treeOnly, kNote, 9,
         one + "<SRVRTID>, \"A\"."},
        {"two places", buying("<REVERSALFITID>A", "<REVERSALFITID>B\n"), FindingKind::treeOnly, kNote, 10,
         one + "<REVERSALFITID>, \"B\"."},
        {"two currencies",
         buying("",
                "<CURRENCY><CURRATE>2<CURSYM>EUR</CURRENCY>\n<ORIGCURRENCY><CURRATE>3<CURSYM>GBP"
                "</ORIGCURRENCY>"),
         FindingKind::treeOnly, kNote, 11,
         "2 values differ from another element of the same field, which is delivered instead; the first is "
         "<CURRATE>, \"3\"."},
        {"a security", document(stock), FindingKind::treeOnly, kNote, 8, one + "<YLD>, \"4\"."},
    };
    for (const Row& row : rows) check(row);
    CHECK(findingsOf(buying("<MEMO>divid<MEMO2>dividend", "")).empty());
    CHECK(findingsOf(buying("<REVERSALFITID>A", "<REVERSALFITID>A")).empty());
    const std::string bank = "<STMTTRN><TRNTYPE>CREDIT<DTPOSTED>20240105<TRNAMT>1<FITID>";
    CHECK(findingsOf(withInvestments("<INVTRANLIST><DTSTART>20240101<DTEND>20240131<INVBANKTRAN>" + bank +
                                     "1</STMTTRN>" + bank +
                                     "2</STMTTRN><SUBACCTFUND>CASH</INVBANKTRAN>"
                                     "</INVTRANLIST>\n"))
              .empty());
}

TEST_CASE("profiles and account lists are read where the standard has their elements") {
    const auto accounts = [](const std::string& record) {
        return document("<SIGNUPMSGSRSV1><ACCTINFOTRNRS><TRNUID>1" + kStatus +
                        "\n<ACCTINFORS><DTACCTUP>20240101<ACCTINFO><DESC>x\n" + record +
                        "</ACCTINFO></ACCTINFORS></ACCTINFOTRNRS></SIGNUPMSGSRSV1>\n");
    };
    const std::string bank =
        "<BANKACCTINFO>" + kAccount + "<SUPTXDL>Y<XFERSRC>N<XFERDEST>N<SVCSTATUS>ACTIVE</BANKACCTINFO>\n";
    CHECK(findingsOf(accounts(bank)).empty());
    CHECK(findingsOf(accounts("<SVCSTATUS>ACTIVE\n" + bank)).empty());
    check({"two accounts in a record", accounts(bank + bank), FindingKind::notDelivered, kWarning, 8,
           "1 element is repeated although only one is allowed, so only the first or none is read: "
           "<BANKACCTINFO>."});
    check({"a loan", accounts("<LOANACCTINFO><LOANACCTFROM><LOANACCTID>5</LOANACCTFROM></LOANACCTINFO>\n"),
           FindingKind::treeOnly, kWarning, 7,
           "1 element is available only in the parse tree: <LOANACCTINFO>; in it: 1 account number and 1 "
           "value."});
}

TEST_CASE("however many names are unknown, the findings are few") {
    std::string elements = kTransaction;
    for (int i = 0; i < 3000; ++i) elements += "<X" + std::to_string(i) + "Y>1\n";
    const std::vector<Finding> findings = findingsOf(transaction(elements));
    CHECK(findings.size() <= 20);
    std::size_t count = 0;
    for (const Finding& finding : findings) count += finding.count;
    CHECK(count == 3000);
}
