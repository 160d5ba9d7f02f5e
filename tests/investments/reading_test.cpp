// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "investments/documents.h"
#include "support/investment_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// The identifiers of the transactions of all statements: "A B|C" for two statements.
std::string identifiersOf(const std::vector<InvestmentStatement>& statements) {
    std::string text;
    for (const InvestmentStatement& statement : statements) {
        if (!text.empty()) text += '|';
        for (const InvestmentTransaction& transaction : statement.transactions()) {
            if (!text.empty() && text.back() != '|') text += ' ';
            const auto bank = transaction.bankTransaction();
            text +=
                bank ? bank->fiTransactionID().value_or("?") : transaction.fiTransactionID().value_or("?");
        }
    }
    return text;
}

struct IdentifierRow {
    const char* what;
    std::string body;
    std::string identifiers;
};

std::string income(const std::string& id) { return "<INCOME><INVTRAN><FITID>" + id + "</INVTRAN></INCOME>"; }

std::string statement(const std::string& content) { return "<INVSTMTRS>" + content + "</INVSTMTRS>"; }

std::string wrapped(const std::string& content) {
    return "<OFX><INVSTMTMSGSRSV1><INVSTMTTRNRS>" + content + "</INVSTMTTRNRS></INVSTMTMSGSRSV1></OFX>";
}

std::string bank(const std::string& id) { return "<STMTTRN><FITID>" + id + "</STMTTRN>"; }

}  // namespace

TEST_CASE("transactions come in document order, wherever they stand") {
    const std::vector<IdentifierRow> rows{
        {"nothing", "<OFX></OFX>", ""},
        {"no transactions", wrapped(statement("<INVTRANLIST><DTSTART>20240101</INVTRANLIST>")), ""},
        {"kinds in turn",
         wrapped(statement("<INVTRANLIST>" + income("A") + "<SPLIT><INVTRAN><FITID>B</INVTRAN></SPLIT>" +
                           income("C") + "</INVTRANLIST>")),
         "A B C"},
        {"two lists",
         wrapped(statement("<INVTRANLIST>" + income("A") + "</INVTRANLIST><INVPOSLIST></INVPOSLIST>" +
                           "<INVTRANLIST>" + income("B") + "</INVTRANLIST>")),
         "A B"},
        {"no list", wrapped(statement(income("A") + income("B"))), "A B"},
        {"two statements in one wrapper",
         wrapped(statement(income("A")) + statement(income("B") + income("C"))), "A|B C"},
        {"no wrapper", "<OFX>" + statement(income("A")) + "</OFX>", "A"},
        {"the statement alone", statement(income("A")), "A"},
        {"a statement in a statement", wrapped(statement(income("A") + statement(income("B")) + income("C"))),
         "A C|B"},
        {"a statement in a list that is not closed",
         wrapped(statement("<INVTRANLIST>" + income("A") + statement(income("B")) + "</INVTRANLIST>")),
         "A|B"},
        {"a transaction in a transaction",
         wrapped(statement("<INCOME><INVTRAN><FITID>A</INVTRAN>" + income("B") + "</INCOME>" + income("C"))),
         "A B C"},
        {"an unknown aggregate around",
         wrapped(statement("<INVTRANLIST><X.EXTENSION>" + income("A") + "</X.EXTENSION></INVTRANLIST>")),
         "A"},
        {"bank transactions",
         wrapped(statement("<INVTRANLIST><INVBANKTRAN>" + bank("A") + "</INVBANKTRAN>" + income("B") +
                           "<INVBANKTRAN>" + bank("C") + bank("D") + "</INVBANKTRAN>" + bank("E") +
                           "</INVTRANLIST>")),
         "A B C D E"},
        {"a list of bank transactions", wrapped(statement("<BANKTRANLIST>" + bank("A") + "</BANKTRANLIST>")),
         "A"},
        {"a bank's statement beside",
         "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKTRANLIST>" + bank("X") +
             "</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1>" + statement(income("A")) + "</OFX>",
         "A"},
    };
    for (const IdentifierRow& row : rows) {
        CAPTURE(row.what);
        CHECK(identifiersOf(statementsOf(row.body)) == row.identifiers);
    }
}

TEST_CASE("statements that are not closed are read, each with what is its own") {
    std::string body = "<OFX>";
    for (const char* id : {"A", "B", "C"})
        body += "<INVSTMTTRNRS><TRNUID>" + std::string(id) + "<INVSTMTRS><INVTRANLIST><INCOME><FITID>" + id;
    CHECK(identifiersOf(statementsOf(body)) == "A|B|C");
    CHECK(statementsOf(body)[2].transactionUID() == "C");
}

TEST_CASE("a wrapper gives its identifier and status to its statements, and stands for itself without one") {
    const std::string status = "<STATUS><CODE>15500<SEVERITY>ERROR</STATUS>";
    const auto statements =
        statementsOf("<OFX><INVSTMTTRNRS><TRNUID>1" + status +
                     "<INVSTMTRS><CURDEF>EUR</INVSTMTRS><INVSTMTRS></INVSTMTRS>" +
                     "</INVSTMTTRNRS><INVSTMTTRNRS>" + status + "<TRNUID>2</INVSTMTTRNRS></OFX>");
    REQUIRE(statements.size() == 3);
    CHECK(statements[0].currency() == "EUR");
    CHECK_FALSE(statements[1].currency());
    for (const InvestmentStatement& each : statements) {
        REQUIRE(each.status());
        CHECK(each.status()->code() == 15500);
    }
    CHECK(statements[1].transactionUID() == "1");
    CHECK(statements[2].transactionUID() == "2");
    CHECK(statements[2].elementName() == "INVSTMTTRNRS");
    CHECK(statements[2].transactions().isEmpty());
    CHECK_FALSE(statements[2].account());
    CHECK_FALSE(statements[2].balance());
    CHECK_FALSE(statements[2].balance401k());
    CHECK_FALSE(statements[2].plan401k());
}

TEST_CASE("fields may stand in any order, and the first of two counts") {
    const auto transaction = transactionWith(
        "<BUYSTOCK><BUYTYPE>BUY<INVBUY><TOTAL>-5<MEMO2>first<SECID><UNIQUEIDTYPE>ISIN<UNIQUEID>X</SECID>"
        "<INVTRAN><DTTRADE>20240102<FITID>1</INVTRAN><TOTAL>-6<INVTRAN><FITID>2<MEMO>second</INVTRAN>"
        "</INVBUY></BUYSTOCK>");
    CHECK(transaction.fiTransactionID() == "1");
    CHECK(transaction.securityID() == "X");
    CHECK(transaction.securityIDType() == "ISIN");
    CHECK(transaction.tradeType() == TradeType::buy);
    CHECK(transaction.memo() == "first");
    CHECK(*transaction.total() == Decimal::fromInteger(-5));
    CHECK_FALSE(transaction.settleDate());
}

TEST_CASE("what is in an aggregate of another name is no field") {
    const auto transaction = transactionWith(
        "<INCOME><X.OWN><FITID>1<TOTAL>1</X.OWN><MEMO></MEMO><TOTAL><A>1</TOTAL><INVTRAN><FITID>2</INVTRAN>"
        "</INCOME>");
    CHECK(transaction.fiTransactionID() == "2");
    CHECK_FALSE(transaction.total());
    CHECK_FALSE(transaction.memo());
    CHECK(transaction.originalParseData()["X.OWN"]["FITID"].text() == "1");
}

TEST_CASE("an amount or date whose text is none is absent, and its text is not") {
    const auto transaction = transactionWith("<INCOME><TOTAL>$5<DTTRADE>soon<UNITS>2</INCOME>");
    CHECK_FALSE(transaction.total());
    CHECK(transaction.text("total") == "$5");
    CHECK_FALSE(transaction.tradeDate());
    CHECK(transaction.text("tradeDate") == "soon");
    CHECK(*transaction.units() == Decimal::fromInteger(2));
    REQUIRE(transaction.fields().size() == 3);
    CHECK_FALSE(transaction.fields()[0].date);
    CHECK_FALSE(transaction.fields()[2].amount);
}

TEST_CASE("a helper's formatters read amounts and dates, of bank transactions too") {
    const auto helper = std::make_shared<TvOFXHelper>();
    NumberFormat format;
    format.decimalSeparator = ",";
    format.groupingSeparator = ".";
    helper->setAmountNumberFormatter(std::make_shared<DecimalNumberFormatter>(format));
    helper->setDateFormatter(std::make_shared<PatternDateFormatter>("dd.MM.yyyy"));
    const auto statement = statementWith(
        "<INCOME><TOTAL>1.234,5<DTTRADE>31.12.2024<CURRENCY><CURRATE>1,5</CURRENCY></INCOME>"
        "<STMTTRN><TRNAMT>-0,99</STMTTRN>",
        helper);
    CHECK(statement.transactions()[0].total()->toString() == "1234.5");
    CHECK(dateDescription(*statement.transactions()[0].tradeDate()) == "2024-12-31 00:00:00 +0000");
    CHECK(statement.transactions()[0].currency()->rate->toString() == "1.5");
    CHECK(statement.transactions()[1].bankTransaction()->amount()->toString() == "-0.99");
}

TEST_CASE("the other account of a transfer is not the statement's") {
    const auto statement = statementWith(
        "<TRANSFER><INVACCTFROM><ACCTID>other</INVACCTFROM></TRANSFER><INVACCTFROM><ACCTID>own</"
        "INVACCTFROM>");
    CHECK(statement.account()->accountID().text() == "own");
    CHECK(statement.transactions()[0].transferAccount()->accountID().text() == "other");
    CHECK(transactionWith("<TRANSFER></TRANSFER>").transferAccount() == nullptr);
    CHECK(transactionWith("<TRANSFER></TRANSFER>").bankTransaction() == nullptr);
}

TEST_CASE("balances belong to the aggregate that they are listed in") {
    const auto statement = statementWith(
        "<INVBAL><BALLIST><BAL><NAME>A</BAL><BAL><NAME>B</BAL></BALLIST></INVBAL>"
        "<INV401KBAL><BALLIST><BAL><NAME>C</BAL></BALLIST></INV401KBAL><INVBAL><BUYPOWER>1</INVBAL>");
    REQUIRE(statement.balance()->listed().size() == 2);
    CHECK(statement.balance()->listed()[1].name() == "B");
    REQUIRE(statement.balance401k()->listed().size() == 1);
    CHECK(statement.balance401k()->listed()[0].name() == "C");
    CHECK_FALSE(statement.balance()->buyingPower());
}

TEST_CASE("securities are found in every list of a document, in its order") {
    const auto found = securities(
        parsed("<OFX><SECLISTMSGSRSV1><SECLISTTRNRS><SECLISTRS><SECLIST><MFINFO><SECINFO><SECNAME>A"
               "</SECINFO></MFINFO></SECLIST></SECLISTRS></SECLISTTRNRS><SECLIST><STOCKINFO><SECINFO>"
               "<SECNAME>B</SECINFO></STOCKINFO><MFINFO><SECINFO><SECNAME>C</SECINFO></MFINFO>"
               "</SECLIST></SECLISTMSGSRSV1><DEBTINFO><SECINFO><SECNAME>D</SECINFO></DEBTINFO></OFX>"));
    REQUIRE(found.size() == 4);
    CHECK(found[0].name() == "A");
    CHECK(found[1].kind() == SecurityKind::stock);
    CHECK(found[2].name() == "C");
    CHECK(found[3].kind() == SecurityKind::debt);
}

TEST_CASE("what an option is on does not become its own identifier, whatever comes first") {
    const std::string own = "<SECINFO><SECID><UNIQUEID>OPT<UNIQUEIDTYPE>CUSIP</SECID></SECINFO>";
    const std::string underlying = "<SECID><UNIQUEID>STOCK</SECID>";
    for (const std::string& content : {own + underlying, underlying + own}) {
        CAPTURE(content);
        const auto found = securitiesWith("<OPTINFO>" + content + "</OPTINFO>");
        REQUIRE(found.size() == 1);
        CHECK(found[0].id() == "OPT");
        CHECK(found[0].underlying().id == "STOCK");
        CHECK_FALSE(found[0].underlying().idType);
    }
    CHECK_FALSE(securitiesWith("<OPTINFO>" + own + "</OPTINFO>")[0].underlying().id);
}

TEST_CASE("a part of a document, one that code has built, and none are read as well") {
    const auto tree = parsed(wrapped(statement("<INVTRANLIST>" + income("A") + "</INVTRANLIST>")));
    const auto part = at(tree, {"OFX", "INVSTMTMSGSRSV1"});
    CHECK(identifiersOf(investmentStatements(part)) == "A");

    const ParseDictionary built{{"INVSTMTRS", ParseDictionary{{"INCOME", ParseDictionary{{"FITID", "B"}}}}}};
    const auto statements = investmentStatements(built);
    CHECK(identifiersOf(statements) == "B");
    CHECK_FALSE(statements[0].transactions()[0].originalText());

    CHECK(investmentStatements(std::nullopt).empty());
    CHECK(investmentStatements(ParseDictionary()).empty());
    CHECK(securities(std::nullopt).empty());
}

TEST_CASE("the source text ends with the last leaf when nothing closes the aggregate") {
    const std::string open = "<INCOME><TOTAL>5<SPLIT><UNITS>1 &amp; 2</SPLIT><SPLIT><OLDUNITS>3";
    const auto statements = statementsOf("<OFX><INVSTMTRS>" + open + "</SPLIT>");
    REQUIRE(statements.size() == 1);
    const auto transactions = statements[0].transactions();
    REQUIRE(transactions.size() == 3);
    CHECK(transactions[0].originalText() == open);
    // No leaf of it is a part of the text.
    CHECK_FALSE(transactions[1].originalText());
    CHECK(transactions[2].originalText() == "<SPLIT><OLDUNITS>3</SPLIT>");
}

TEST_CASE("the source text begins at the aggregate's own tag, not at one that begins like it") {
    const std::string plan =
        "<INV401K><INV401KSUMMARY><YEARTODATE><DTSTART>20240101</YEARTODATE></INV401KSUMMARY></INV401K>";
    CHECK(statementWith(plan).plan401k()->originalText() == plan);
}

TEST_CASE("of a text and its longer form the longer one counts, wherever it stands") {
    for (const std::string& fields : {std::string("<SRVRTID>a<SRVRTID2>ab<MEMO>c<MEMO2>cd"),
                                      std::string("<SRVRTID2>ab<SRVRTID>a<MEMO2>cd<MEMO>c")}) {
        CAPTURE(fields);
        const auto transaction = transactionWith("<INCOME><INVTRAN>" + fields + "</INVTRAN></INCOME>");
        CHECK(transaction.serverTransactionID() == "ab");
        CHECK(transaction.memo() == "cd");
    }
}

TEST_CASE("the period since the plan began has two names") {
    for (const std::string& name : {std::string("INCEPTODATE"), std::string("INCEPTTODATE")}) {
        CAPTURE(name);
        const auto plan = statementWith("<INV401K><INV401KSUMMARY><" + name +
                                        "><DTSTART>20200101<CONTRIBUTIONS><TOTAL>5</CONTRIBUTIONS></" + name +
                                        "></INV401KSUMMARY></INV401K>")
                              .plan401k();
        REQUIRE(plan->periods().size() == 1);
        CHECK(plan->periods()[0].elementName() == name);
        CHECK(plan->periods()[0].contributions()->total() == Decimal::fromInteger(5));
    }
}

TEST_CASE("where the next text is far, the source text ends with the last leaf") {
    std::string body = "<OFX><INVSTMTRS><INCOME><TOTAL>5</INCOME>";
    for (int i = 0; i < 100; ++i) body += "<A></A>";
    const auto statements = statementsOf(body);
    CHECK(statements[0].transactions()[0].originalText() == "<INCOME><TOTAL>5");
}

TEST_CASE("objects outlive what they came from, and copies and moved-from objects are the same") {
    std::optional<InvestmentTransaction> kept;
    {
        const auto statement = statementWith("<INCOME><FITID>A</INCOME><INCOME><FITID>B</INCOME>");
        kept = statement.transactions()[1];
    }
    InvestmentTransaction moved = std::move(*kept);
    CHECK(moved.fiTransactionID() == "B");
    CHECK(kept->fiTransactionID() == "B");
    moved = statementWith("<SPLIT></SPLIT>").transactions()[0];
    CHECK(moved.kind() == InvestmentTransactionKind::split);
}

TEST_CASE("a list is walked like other ranges") {
    const auto list = statementWith("<INCOME></INCOME><SPLIT></SPLIT>").transactions();
    auto at = list.begin();
    CHECK((*at++).kind() == InvestmentTransactionKind::income);
    CHECK((*at).kind() == InvestmentTransactionKind::split);
    CHECK(++at == list.end());
    CHECK(list.size() == 2);
}
