// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>
#include <doctest/doctest.h>

#include <algorithm>

#include "support/documents.h"

/// \file
/// What is said of a document that is not delivered whole, or not surely. Most rows are opened without a
/// repair, which would put right what they show.

using namespace brackwell;
using namespace brackwell::tests;

namespace findings {

namespace {

constexpr const char* kHeader = "OFXHEADER:100\nDATA:OFXSGML\n\n";

std::string transaction(const std::string& id, const std::string& more = "") {
    return "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240105<TRNAMT>-5.00<FITID>" + id + more + "</STMTTRN>\n";
}

const std::string kAccount = "<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>CHECKING</BANKACCTFROM>";
const std::string kBalance = "<LEDGERBAL><BALAMT>1.00<DTASOF>20240131</LEDGERBAL>\n";

std::string list(const std::string& transactions) {
    return "<BANKTRANLIST><DTSTART>20240101<DTEND>20240131\n" + transactions + "</BANKTRANLIST>\n";
}

std::string statement(const std::string& elements) {
    return "<STMTRS><CURDEF>EUR" + kAccount + "\n" + elements + "</STMTRS>\n";
}

std::string wrapper(const std::string& elements) {
    return "<STMTTRNRS><TRNUID>1\n" + elements + "</STMTTRNRS>\n";
}

std::string messageSet(const std::string& elements) {
    return "<BANKMSGSRSV1>" + elements + "</BANKMSGSRSV1>\n";
}

std::string document(const std::string& elements) { return kHeader + ("<OFX>" + elements + "</OFX>\n"); }

/// A document of one statement with these elements after its account.
std::string statementWith(const std::string& elements) {
    return document(messageSet(wrapper(statement(elements))));
}

std::vector<Finding> findingsOf(const std::string& text, const OpenOptions& options) {
    const OpenedFile file = openData(Data::copy(text), options);
    CHECK(file);
    return file.findings();
}

struct Row {
    std::string why;
    std::string document;
    FindingKind kind;
    FindingSeverity severity;
    std::size_t count;
    std::size_t line;
    std::string text;
};

/// Checks that each row has exactly one finding, that of the row.
void checkRows(const std::vector<Row>& rows, const OpenOptions& options) {
    for (const Row& row : rows) {
        CAPTURE(row.why);
        const std::vector<Finding> findings = findingsOf(row.document, options);
        for (const Finding& finding : findings) CAPTURE(finding.text);
        REQUIRE(findings.size() == 1);
        CHECK(nameOf(findings[0].kind) == nameOf(row.kind));
        CHECK(nameOf(findings[0].severity) == nameOf(row.severity));
        CHECK(findings[0].count == row.count);
        CHECK(findings[0].line == row.line);
        CHECK(findings[0].text == row.text);
    }
}

}  // namespace

TEST_CASE("what no object stands for is counted by cause, with the first place") {
    const FindingKind kind = FindingKind::notDelivered;
    const FindingSeverity warning = FindingSeverity::warning;
    const std::string two = transaction("1") + transaction("2");
    checkRows(
        {
            {"two lists", statementWith(list(two) + list(transaction("3"))), kind, warning, 3, 7,
             "3 transactions are left out: there is more than one <BANKTRANLIST> in one <STMTRS>; only a "
             "single one can be read."},
            {"two statements in a wrapper",
             document(messageSet(wrapper(statement(list(two)) + statement(kBalance)))), kind, warning, 5, 5,
             "2 transactions, 1 balance and 2 statements are left out: there is more than one <STMTRS> in "
             "one "
             "<STMTTRNRS>; only a single one can be read."},
            {"two message sets",
             document(messageSet(wrapper(statement(list(two)))) + "\n" + messageSet(wrapper(statement("")))),
             kind, warning, 4, 5,
             "2 transactions and 2 statements are left out: there is more than one <BANKMSGSRSV1> in one "
             "<OFX>; only a single one can be read."},
            {"two balances", statementWith(list("") + kBalance + kBalance), kind, warning, 2, 8,
             "2 balances are left out: there is more than one <LEDGERBAL> in one <STMTRS>; only a single one "
             "can be read."},
            {"a transaction outside of the list", statementWith(list("") + transaction("1")), kind, warning,
             1, 8, "1 transaction is left out: <STMTTRN> is in <STMTRS>, where it is not read."},
            {"a balance in the list", statementWith(list(kBalance)), kind, warning, 1, 7,
             "1 balance is left out: <LEDGERBAL> is in <BANKTRANLIST>, where it is not read."},
            {"a list that stands too high", document(messageSet(wrapper(list(two)))), kind, warning, 2, 6,
             "2 transactions are left out: <BANKTRANLIST> is in <STMTTRNRS>, where it is not read."},
            {"a statement in another wrapper",
             document("<CREDITCARDMSGSRSV1><CCSTMTTRNRS><TRNUID>1\n" + statement(list(two)) +
                      "</CCSTMTTRNRS></CREDITCARDMSGSRSV1>"),
             kind, warning, 3, 5,
             "2 transactions and 1 statement are left out: <STMTRS> is in <CCSTMTTRNRS>, where it is not "
             "read."},
            {"a transaction of text", statementWith(list("<STMTTRN>*snipped*</STMTTRN>\n")), kind, warning, 1,
             7, "1 transaction is left out: <STMTTRN> has text instead of elements: \"*snipped*\"."},
            {"pending transactions",
             statementWith(list("") +
                           "<BANKTRANLISTP><DTASOF>20240131<STMTTRNP><TRNTYPE>DEBIT<DTTRAN>20240130"
                           "<TRNAMT>-1.00</STMTTRNP></BANKTRANLISTP>"),
             kind, warning, 1, 8,
             "1 pending transaction is left out: <STMTTRNP> is available only in the parse tree."},
            {"further balances",
             statementWith("<BALLIST><BAL><NAME>x<DESC>y<BALTYPE>DOLLAR<VALUE>1</BAL></BALLIST>"), kind,
             warning, 1, 6, "1 further balance is left out: <BAL> is available only in the parse tree."},
        },
        OpenOptions::asIs());
}

TEST_CASE("what of an investment statement stands in a bank's is named, and makes no statement") {
    const std::string position = "<POSSTOCK><INVPOS><UNITS>1</INVPOS></POSSTOCK>";
    const std::string payments = list(transaction("1"));
    const FindingKind kind = FindingKind::notDelivered;
    const FindingSeverity warning = FindingSeverity::warning;
    const std::vector<Row> rows = {
        {"a balance of investments",
         statementWith(payments + "<INVBAL><AVAILCASH>9<MARGINBALANCE>0<SHORTBALANCE>0</INVBAL>"), kind,
         warning, 1, 9,
         "1 element is where the OFX standard does not allow it, so it is not read: <INVBAL> in "
         "<STMTRS>."},
        {"a balance under the name of a leaf",
         statementWith(payments + "<CASHBAL><BALAMT>9<DTASOF>20240131</CASHBAL>"), kind, warning, 1, 9,
         "1 element is where the OFX standard does not allow it, so it is not read: <CASHBAL> in "
         "<STMTRS>."},
        {"positions", statementWith(payments + "<INVPOSLIST>" + position + "</INVPOSLIST>"), kind, warning, 1,
         9, "1 position is left out: <INVPOSLIST> is in <STMTRS>, where it is not read."},
        {"a purchase", statementWith(list(transaction("1") + "<BUYSTOCK><BUYTYPE>BUY</BUYSTOCK>")), kind,
         warning, 1, 8,
         "1 investment transaction is left out: <BUYSTOCK> is in <BANKTRANLIST>, where it is not read."},
    };
    checkRows(rows, OpenOptions());
    for (const Row& row : rows) {
        CAPTURE(row.why);
        const OpenedFile file = openData(Data::view(row.document));
        CHECK(file.investmentStatements().empty());
        REQUIRE(file.statements().size() == 1);
        CHECK(file.statements()[0]->statementTransactions().size() == 1);
    }
}

TEST_CASE("elements outside of the root are not delivered, and stand after the end") {
    const std::vector<Finding> findings =
        findingsOf(document("<SIGNONMSGSRSV1><SONRS><LANGUAGE>ENG</SONRS></SIGNONMSGSRSV1>") +
                       messageSet(wrapper(statement(list(transaction("1"))))),
                   OpenOptions::asIs());
    REQUIRE(findings.size() == 2);
    CHECK(findings[0].kind == FindingKind::notDelivered);
    CHECK(findings[0].text == "1 transaction and 1 statement are left out: <BANKMSGSRSV1> is outside <OFX>.");
    CHECK(findings[1].kind == FindingKind::textAround);
}

TEST_CASE("a statement in a response without a wrapper is delivered") {
    CHECK(findingsOf(document(messageSet(statement(list(transaction("1"))))), OpenOptions::asIs()).empty());
}

TEST_CASE("a document that ends before its end is cut off") {
    const std::string whole = statementWith(list(transaction("1", "<MEMO>tea")));
    struct Cut {
        std::string at;
        std::string text;
    };
    for (const Cut& cut : std::vector<Cut>{
             {"</OFX>",
              "The document ends before its close tag </OFX>: the rest is missing. Download it again."},
             {"</STMTTRN>",
              "The document ends before its close tag </OFX>: the rest is missing, and the last value, "
              "\"tea\", may be incomplete. Download it again."},
             {"BANKMSGSRSV1>\n</OFX>",
              "The document ends before its close tag </OFX>: the rest is missing, and it ends inside a tag. "
              "Download it again."},
         }) {
        CAPTURE(cut.at);
        for (const OpenOptions& options : {OpenOptions(), OpenOptions::asIs()}) {
            const std::vector<Finding> findings = findingsOf(whole.substr(0, whole.find(cut.at)), options);
            const auto found = std::ranges::find(findings, FindingKind::cutOff, &Finding::kind);
            REQUIRE(found != findings.end());
            CHECK(found->severity == FindingSeverity::warning);
            CHECK(found->line != 0);
            CHECK(found->text == cut.text);
        }
    }
}

TEST_CASE("without any close tag nothing shows whether the end is missing") {
    checkRows({{"a sign-on", "<OFX><SIGNONMSGSRSV1><SONRS><LANGUAGE>ENG", FindingKind::cutOff,
                FindingSeverity::note, 1, 1,
                "The document has no close tags, so a missing end cannot be detected. Check that its last "
                "transactions are there."}},
              OpenOptions::asIs());
}

TEST_CASE("every cut of a document is said") {
    const std::string whole = statementWith(list(transaction("1") + transaction("2")) + kBalance);
    for (std::size_t size = whole.find("<OFX>") + 5; size < whole.find("</OFX>"); ++size) {
        CAPTURE(size);
        for (const OpenOptions& options : {OpenOptions(), OpenOptions::asIs()}) {
            const OpenedFile file = openData(Data::copy(whole.substr(0, size)), options);
            CHECK((!file || std::ranges::find(file.findings(), FindingKind::cutOff, &Finding::kind) !=
                                file.findings().end()));
        }
    }
}

TEST_CASE("text after the document is named, and the end marks of old systems are not") {
    const std::string whole = statementWith(list(transaction("1")));
    checkRows({{"a line", whole + "-- sent by mail --\n", FindingKind::textAround, FindingSeverity::note, 1,
                13, "Text after the end of the document is not part of it: \"-- sent by mail --\"."}},
              OpenOptions::asIs());
    CHECK(findingsOf(whole + std::string("\x1A\0 \n", 4), {}).empty());
}

TEST_CASE("amounts and dates that are none are named with their text") {
    const FindingKind unreadable = FindingKind::unreadableValue;
    const FindingSeverity warning = FindingSeverity::warning;
    const std::string bad = "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240105<TRNAMT>abc<FITID>";
    checkRows(
        {
            {"an amount", statementWith(list(bad + "1</STMTTRN>\n")), unreadable, warning, 1, 7,
             "The amount \"abc\" cannot be read and is left out."},
            {"two amounts", statementWith(list(bad + "1</STMTTRN>\n" + bad + "2</STMTTRN>\n")), unreadable,
             warning, 2, 7, "2 amounts such as \"abc\" cannot be read and are left out."},
            {"a date", statementWith("<LEDGERBAL><BALAMT>1.00<DTASOF>tomorrow</LEDGERBAL>\n"), unreadable,
             warning, 1, 6, "The date \"tomorrow\" cannot be read and is left out."},
            {"a day that is none", statementWith("<LEDGERBAL><BALAMT>1.00<DTASOF>20250631</LEDGERBAL>\n"),
             unreadable, warning, 1, 6, "The date \"20250631\" cannot be read and is left out."},
        },
        OpenOptions());
}

TEST_CASE("values that are read by evidence, or are improbable, are named") {
    const auto balance = [](const std::string& amount, const std::string& date) {
        return statementWith("<LEDGERBAL><BALAMT>" + amount + "<DTASOF>" + date + "</LEDGERBAL>\n");
    };
    const FindingKind doubtful = FindingKind::doubtfulValue;
    checkRows(
        {
            {"a decimal comma", balance("-0,99", "20240101"), doubtful, FindingSeverity::note, 1, 6,
             "The amount \"-0,99\" is not in OFX format; it is read as -0.99."},
            {"a currency and both separators", balance("R$ 5.326,43", "20240101"), doubtful,
             FindingSeverity::note, 1, 6,
             "The amount \"R$ 5.326,43\" is not in OFX format; it is read as 5326.43."},
            {"three digits after a comma, and nothing that shows what it is", balance("1,234", "20240101"),
             doubtful, FindingSeverity::warning, 1, 6,
             "The amount \"1,234\" can be read in two ways; it is read as 1234."},
            {"a date by country", balance("1.00", "30/06/2025"), doubtful, FindingSeverity::note, 1, 6,
             "The date \"30/06/2025\" is not in OFX format; it is read as 2025-06-30."},
            {"a date with a zone", balance("1.00", "2025-06-30T23:30-05:00"), doubtful, FindingSeverity::note,
             1, 6,
             "The date \"2025-06-30T23:30-05:00\" is not in OFX format; it is read as 2025-07-01 "
             "04:30:00 UTC."},
            {"a date of long ago", balance("1.00", "19010101"), doubtful, FindingSeverity::note, 1, 6,
             "The date \"19010101\" is improbable; it is read as 1901-01-01."},
            {"a date of the far future", balance("1.00", "22000101"), doubtful, FindingSeverity::note, 1, 6,
             "The date \"22000101\" is improbable; it is read as 2200-01-01."},
        },
        OpenOptions());
    checkRows(
        {
            {"a decimal comma", balance("-0,99", "20240101"), doubtful, FindingSeverity::warning, 1, 6,
             "The amount \"-0,99\" is not in OFX format and is read wrongly or not at all; it "
             "probably means "
             "-0.99."},
            {"a date by country", balance("1.00", "30/06/2025"), doubtful, FindingSeverity::warning, 1, 6,
             "The date \"30/06/2025\" is not in OFX format and is not read; it probably means "
             "2025-06-30."},
        },
        OpenOptions::asIs());
}

TEST_CASE("types of accounts that no class has are named") {
    const auto account = [](const std::string& type) {
        return "<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>" + type + "</BANKACCTFROM>\n";
    };
    const auto statementOf = [&account](const std::string& type) {
        return wrapper("<STMTRS><CURDEF>EUR" + account(type) + kBalance + "</STMTRS>\n");
    };
    const auto listed = [&account](const std::string& type) {
        return "<ACCTINFO><BANKACCTINFO>" + account(type) +
               "<SUPTXDL>Y<XFERSRC>N<XFERDEST>N<SVCSTATUS>ACTIVE</BANKACCTINFO></ACCTINFO>";
    };
    const auto list = [](const std::string& records) {
        return document("<SIGNUPMSGSRSV1><ACCTINFOTRNRS><TRNUID>1\n<ACCTINFORS>" + records +
                        "</ACCTINFORS></ACCTINFOTRNRS></SIGNUPMSGSRSV1>");
    };
    const FindingKind kind = FindingKind::treeOnly;
    const FindingSeverity note = FindingSeverity::note;
    checkRows(
        {
            {"a newer one", document(messageSet(statementOf("CD"))), kind, note, 1, 5,
             "1 account has a type that is available only in the parse tree: \"CD\"."},
            {"of two statements", document(messageSet(statementOf("GIRO") + statementOf("CD"))), kind, note,
             2, 5, "2 accounts have types that are available only in the parse tree; the first is \"GIRO\"."},
            {"in an account list", list(listed("CHECKING") + listed("checking")), kind, note, 1, 6,
             "1 account has a type that is available only in the parse tree: \"checking\"."},
        },
        OpenOptions());
    for (const std::string type : {"CHECKING", "SAVINGS", "MONEYMARKET", "CREDITLINE"})
        CHECK(findingsOf(document(messageSet(statementOf(type))), OpenOptions()).empty());
}

TEST_CASE("values that the caller's formats make something else of are named") {
    OpenOptions options;
    options.numberFormatter = std::make_shared<DecimalNumberFormatter>(
        NumberFormat{.decimalSeparator = ",", .groupingSeparator = "."});
    options.dateFormatter = std::make_shared<PatternDateFormatter>("yyyyddMM");
    checkRows(
        {{"an amount", statementWith("<LEDGERBAL><BALAMT>2776.20<DTASOF>20240101</LEDGERBAL>\n"),
          FindingKind::doubtfulValue, FindingSeverity::warning, 1, 6,
          "The amount \"2776.20\" is read as 277620, not as 2776.2, because of the given number format."},
         {"a date", statementWith("<LEDGERBAL><BALAMT>5,00<DTASOF>20240203</LEDGERBAL>\n"),
          FindingKind::doubtfulValue, FindingSeverity::warning, 1, 6,
          "The date \"20240203\" is read as 2024-03-02, not as 2024-02-03, because of the given date "
          "format."}},
        options);
    CHECK(
        findingsOf(statementWith("<LEDGERBAL><BALAMT>5,00<DTASOF>20240202</LEDGERBAL>\n"), options).empty());
}

TEST_CASE("elements that stand where nobody reads them, or twice where one may, are named") {
    checkRows(
        {{"a status around the sign-on's date",
          document("<SIGNONMSGSRSV1><SONRS><STATUS><CODE>0<SEVERITY>INFO\n<DTSERVER>20240101</STATUS></SONRS>"
                   "</SIGNONMSGSRSV1>"),
          FindingKind::notDelivered, FindingSeverity::warning, 1, 5,
          "1 element is where the OFX standard does not allow it, so it is not read: <DTSERVER> in "
          "<STATUS>."},
         {"two names", statementWith(list(transaction("1", "<NAME>a\n<NAME>b"))), FindingKind::notDelivered,
          FindingSeverity::warning, 1, 8,
          "1 element is repeated although only one is allowed, so only the first or none is read: <NAME>."}},
        OpenOptions::asIs());
    // The first is repaired, the second stays.
    CHECK(
        openData(Data::copy(document("<SIGNONMSGSRSV1><SONRS><STATUS><CODE>0<SEVERITY>INFO<DTSERVER>20240101"
                                     "</STATUS></SONRS></SIGNONMSGSRSV1>")))
            .signOn()
            ->dateOfServer());
    // An element that the standard does not know may stand anywhere.
    CHECK(findingsOf(statementWith(list(transaction("1", "<MYBANK.X>a<MYBANK.X>b"))), OpenOptions::asIs())
              .empty());
}

TEST_CASE("investments that do not add up are noted") {
    const auto investments = [](const std::string& content) {
        return document(
            "<INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>1<INVSTMTRS><DTASOF>20240101<CURDEF>USD<INVACCTFROM>"
            "<BROKERID>b<ACCTID>1</INVACCTFROM>\n" +
            content + "</INVSTMTRS></INVSTMTTRNRS></INVSTMTMSGSRSV1>");
    };
    const std::string position =
        "<INVPOSLIST><POSSTOCK><INVPOS><SECID><UNIQUEID>1<UNIQUEIDTYPE>CUSIP</"
        "SECID><HELDINACCT>CASH<POSTYPE>LONG"
        "<UNITS>10<UNITPRICE>5.00<MKTVAL>MKT<DTPRICEASOF>20240101</INVPOS></POSSTOCK></INVPOSLIST>";
    const auto valued = [&](const std::string& value) {
        std::string text = position;
        return investments(text.replace(text.find(">MKT<"), 5, ">" + value + "<"));
    };
    checkRows({{"a position", valued("51.00"), FindingKind::doesNotAddUp, FindingSeverity::note, 1, 5,
                "1 position does not add up: its market value is 51, but its parts add up to 50."}},
              OpenOptions());
    CHECK(findingsOf(valued("50.00"), {}).empty());
}

TEST_CASE("the server's errors and warnings are said with what their codes mean") {
    const auto signOn = [](const std::string& status) {
        return document("<SIGNONMSGSRSV1><SONRS>\n<STATUS>" + status + "</STATUS></SONRS></SIGNONMSGSRSV1>");
    };
    const FindingKind refused = FindingKind::refused;
    checkRows(
        {
            {"a wrong password", signOn("<CODE>15500<SEVERITY>ERROR<MESSAGE>Try again"), refused,
             FindingSeverity::error, 1, 5,
             "The server refused the sign-on with code 15500 (the user's identifier or password is wrong): "
             "\"Try "
             "again\"."},
            {"an unknown warning", signOn("<CODE>77<SEVERITY>warn"), refused, FindingSeverity::warning, 1, 5,
             "The server warns about the sign-on with code 77."},
            {"a statement",
             document(messageSet("<STMTTRNRS><TRNUID>1<STATUS><CODE>2003<SEVERITY>ERROR</STATUS>"
                                 "</STMTTRNRS>")),
             refused, FindingSeverity::error, 1, 4,
             "The server refused a statement with code 2003 (the account was not found)."},
            {"another response",
             document(
                 "<BANKMSGSRSV1><INTRATRNRS><TRNUID>1<STATUS><CODE>2000<SEVERITY>ERROR</STATUS></INTRATRNRS>"
                 "</BANKMSGSRSV1>"),
             refused, FindingSeverity::error, 1, 4,
             "The server refused a request (<INTRARS>) with code 2000 (a general error of the server)."},
        },
        OpenOptions());
    CHECK(findingsOf(signOn("<CODE>0<SEVERITY>INFO"), {}).empty());
}

TEST_CASE("different transactions with one identifier are counted") {
    const auto with = [](const std::vector<std::string>& ids) {
        std::string transactions;
        for (std::size_t i = 0; i < ids.size(); ++i)
            transactions += transaction(ids[i], "<MEMO>" + std::to_string(i));
        return statementWith(list(transactions));
    };
    const FindingKind kind = FindingKind::repeatedIdentifier;
    checkRows({{"one", with({"5", "7", "5"}), kind, FindingSeverity::note, 1, 9,
                "1 transaction has the same identifier (FITID) as an earlier, different one of the same "
                "statement: \"5\"."},
               {"several", with({"5", "7", "5", "7", "5"}), kind, FindingSeverity::note, 3, 9,
                "3 transactions have the same identifier (FITID) as an earlier, different one of the same "
                "statement; the "
                "first is \"5\"."}},
              OpenOptions());
    CHECK(findingsOf(with({"1", "2", "3"}), {}).empty());
    CHECK(findingsOf(with({"3", "2", "1"}), {}).empty());
    CHECK(findingsOf(with({"9", "10", "2", "11"}), {}).empty());
    // The same transaction twice is no contradiction.
    CHECK(
        findingsOf(statementWith(list(transaction("5") + transaction("7") + transaction("5"))), {}).empty());
}

TEST_CASE("a statement that names no account is said, and one that was refused is not") {
    checkRows({{"a bank's", document(messageSet(wrapper("<STMTRS><CURDEF>EUR\n" + kBalance + "</STMTRS>"))),
                FindingKind::noAccount, FindingSeverity::warning, 1, 5,
                "1 statement does not say which account it is for: <BANKACCTFROM>, <CCACCTFROM> or "
                "<INVACCTFROM> is "
                "missing or has no <ACCTID>."},
               {"a card's",
                document("<CREDITCARDMSGSRSV1><CCSTMTTRNRS><TRNUID>1<CCSTMTRS><CURDEF>EUR\n" + kBalance +
                         "</CCSTMTRS></CCSTMTTRNRS></CREDITCARDMSGSRSV1>"),
                FindingKind::noAccount, FindingSeverity::warning, 1, 4,
                "1 statement does not say which account it is for: <BANKACCTFROM>, <CCACCTFROM> or "
                "<INVACCTFROM> is "
                "missing or has no <ACCTID>."}},
              OpenOptions::asIs());
}

TEST_CASE("a document without a response says why") {
    const FindingKind kind = FindingKind::noContent;
    const FindingSeverity warning = FindingSeverity::warning;
    checkRows(
        {
            {"nothing in the root", document(""), kind, warning, 1, 0,
             "The document has no responses: no statement, no sign-on, no list of accounts."},
            {"no instruction", "<?xml version=\"1.0\"?>\n<OFX></OFX>", kind, warning, 1, 0,
             "The document is XML without the instruction <?OFX ...?>, so nothing in it is read. Put <?OFX "
             "VERSION=\"211\"?> before <OFX>."},
            {"lower case", "OFXHEADER:100\n\n<ofx><bankmsgsrsv1></bankmsgsrsv1></ofx>", kind, warning, 1, 0,
             "The document's tags are in lower case, so nothing in it is read without a repair."},
        },
        OpenOptions::asIs());
}

TEST_CASE("of many findings of one kind the rest are one") {
    std::string responses;
    for (int i = 0; i < 50; ++i)
        responses += "<STMTTRNRS><TRNUID>1<STATUS><CODE>" + std::to_string(i + 3000) +
                     "<SEVERITY>ERROR</STATUS></STMTTRNRS>\n";
    const std::vector<Finding> findings = findingsOf(document(messageSet(responses)), {});
    REQUIRE(findings.size() == 21);
    CHECK(findings[20].count == 30);
    CHECK(findings[20].severity == FindingSeverity::error);
    CHECK(findings[20].text == "There are 30 more of the same kind.");
}

TEST_CASE("findings come by severity, then by place") {
    const std::string text = document(
        "<SIGNONMSGSRSV1><SONRS><STATUS><CODE>15500<SEVERITY>ERROR</STATUS></SONRS></SIGNONMSGSRSV1>\n" +
        messageSet(wrapper(statement(list(transaction("1")) + kBalance + transaction("2") +
                                     "<AVAILBAL><BALAMT>1,5<DTASOF>x</AVAILBAL>\n"))));
    const std::vector<Finding> findings = findingsOf(text, OpenOptions::asIs());
    REQUIRE(findings.size() == 4);
    CHECK(findings[0].kind == FindingKind::refused);
    CHECK(findings[1].kind == FindingKind::notDelivered);
    CHECK(findings[2].kind == FindingKind::doubtfulValue);
    CHECK(findings[3].kind == FindingKind::unreadableValue);
    CHECK(findings[1].line < findings[2].line);
}

TEST_CASE("places are those of the text before a repair") {
    std::string text =
        statementWith(list("<!-- a\ncomment -->" + transaction("1") +
                           "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240105<TRNAMT>abc<FITID>2</STMTTRN>"));
    const OpenedFile file = openData(Data::copy(text));
    REQUIRE(file);
    REQUIRE_FALSE(file.documents()[0].changes().empty());
    const auto odd = std::ranges::find(file.findings(), FindingKind::unreadableValue, &Finding::kind);
    REQUIRE(odd != file.findings().end());
    CHECK(odd->line == placeInText(text, text.find("<TRNAMT>abc")).line);
    CHECK(odd->column == placeInText(text, text.find("<TRNAMT>abc")).column);
}

TEST_CASE("a finding is a short sentence without control characters") {
    const std::string long_ = std::string(100'000, 'x') + "\x1B[31m";
    const OpenedFile file = openData(Data::copy(statementWith(
        list("<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>" + long_ + "<TRNAMT>\x1B]0;" + long_ + "<FITID>1</STMTTRN>") +
        "<" + long_ + ">" + transaction("3") + "</" + long_ + ">")));
    CHECK(file.findings().size() >= 3);
    for (const Finding& finding : file.findings()) {
        CAPTURE(finding.text);
        CHECK(finding.text.size() < 500);
        CHECK(
            std::ranges::none_of(finding.text, [](char c) { return static_cast<unsigned char>(c) < 0x20; }));
    }
}

}  // namespace findings
