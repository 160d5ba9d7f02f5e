// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/formatters.h"
#include "support/shared_date_formatter.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

ParseDictionary balance(const char* amount, const char* date) {
    return {{"BALAMT", amount}, {"DTASOF", date}};
}

ParseDictionary list(const ParseValue& transactions) {
    return {{"BANKTRANLIST", ParseDictionary{{"STMTTRN", transactions}}}};
}

ParseDictionary named(const char* name) { return {{"NAME", name}}; }

template <class Statement>
std::shared_ptr<Statement> read(const ParseDictionary& node) {
    return Statement::initWithParseDict(node);
}

/// The names of a statement's transactions in their order.
template <class Statement>
std::string names(const Statement& statement) {
    std::string text;
    for (const auto& transaction : statement.statementTransactions())
        text.append("[").append(shown(transaction->payeeName())).append("]");
    return text;
}

template <class Statement>
void checkEmpty(const Statement& statement) {
    CHECK(shown(statement.defaultCurrency()) == "nothing");
    CHECK(shown(statement.transactionStartDateTime()) == "nothing");
    CHECK(shown(statement.transactionEndDateTime()) == "nothing");
    CHECK(statement.statementTransactions().empty());
    CHECK(shown(statement.ledgerBalanceAmount()) == "nothing");
    CHECK(shown(statement.ledgerBalanceDateTime()) == "nothing");
    CHECK(shown(statement.availableBalanceAmount()) == "nothing");
    CHECK(shown(statement.availableBalanceDateTime()) == "nothing");
}

}  // namespace

TEST_CASE_TEMPLATE("a new statement holds nothing but an empty list", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    checkEmpty(Statement());
    const auto read = Statement::initWithParseDict(std::nullopt);
    REQUIRE(read);
    checkEmpty(*read);
    CHECK_FALSE(read->originalParseData());
}

TEST_CASE_TEMPLATE("a statement without elements is empty and keeps its node", Statement,
                   TvOFXStatementResponse, TvOFXCCStatementResponse) {
    const auto empty = read<Statement>({});
    checkEmpty(*empty);
    REQUIRE(empty->originalParseData());
    CHECK(empty->originalParseData()->isEmpty());
}

TEST_CASE_TEMPLATE("a statement has the currency and the period of its node", Statement,
                   TvOFXStatementResponse, TvOFXCCStatementResponse) {
    const auto statement =
        read<Statement>({{"CURDEF", "eur "},
                         {"BANKTRANLIST", ParseDictionary{{"DTSTART", "20240101"},
                                                          {"DTEND", "20240131235959.999[+1:CET]"}}}});
    CHECK(shown(statement->defaultCurrency()) == "eur ");
    CHECK(shown(statement->transactionStartDateTime()) == "2024-01-01 00:00:00.000");
    CHECK(shown(statement->transactionEndDateTime()) == "2024-01-31 23:59:59.999");
    CHECK(statement->statementTransactions().empty());
}

TEST_CASE_TEMPLATE("a statement reads its two balances apart", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    const auto statement = read<Statement>(
        {{"LEDGERBAL", balance("-1,234.56", "20240131")}, {"AVAILBAL", balance("7", "20240201")}});
    CHECK(shown(statement->ledgerBalanceAmount()) == "-1234.56");
    CHECK(shown(statement->ledgerBalanceDateTime()) == "2024-01-31 00:00:00.000");
    CHECK(shown(statement->availableBalanceAmount()) == "7");
    CHECK(shown(statement->availableBalanceDateTime()) == "2024-02-01 00:00:00.000");
}

TEST_CASE_TEMPLATE("amount and date of a balance do not need each other", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    const auto statement = read<Statement>({{"LEDGERBAL", ParseDictionary{{"BALAMT", "1"}}},
                                            {"AVAILBAL", ParseDictionary{{"DTASOF", "20240201"}}}});
    CHECK(shown(statement->ledgerBalanceAmount()) == "1");
    CHECK(shown(statement->ledgerBalanceDateTime()) == "nothing");
    CHECK(shown(statement->availableBalanceAmount()) == "nothing");
    CHECK(shown(statement->availableBalanceDateTime()) == "2024-02-01 00:00:00.000");
}

TEST_CASE_TEMPLATE("what cannot be converted leaves a field of a statement empty", Statement,
                   TvOFXStatementResponse, TvOFXCCStatementResponse) {
    checkEmpty(
        *read<Statement>({{"BANKTRANLIST", ParseDictionary{{"DTSTART", "soon"}, {"DTEND", "20240931"}}},
                          {"LEDGERBAL", balance("about 40", "now")},
                          {"AVAILBAL", balance("12,5", "2024")}}));
}

TEST_CASE_TEMPLATE("values of another kind leave the fields of a statement empty", Statement,
                   TvOFXStatementResponse, TvOFXCCStatementResponse) {
    const ParseValue texts = ParseValue::array({"1", "2"});
    const ParseValue balances = ParseValue::array({balance("1", "20240101"), balance("1", "20240101")});
    const ParseValue lists = ParseValue::array({list(named("a")), list(named("b"))});
    const ParseDictionary aggregate{{"X", "1"}};
    const std::vector<ParseDictionary> nodes{
        {{"CURDEF", texts}, {"LEDGERBAL", balances}, {"AVAILBAL", balances}, {"BANKTRANLIST", lists}},
        {{"CURDEF", aggregate}, {"LEDGERBAL", "1"}, {"AVAILBAL", "1"}, {"BANKTRANLIST", "x"}},
        {{"BANKTRANLIST", ParseDictionary{{"DTSTART", texts}, {"DTEND", aggregate}, {"STMTTRN", "text"}}},
         {"LEDGERBAL", ParseDictionary{{"BALAMT", texts}, {"DTASOF", texts}}},
         {"AVAILBAL", ParseDictionary{{"BALAMT", aggregate}, {"DTASOF", aggregate}}}},
        {{"BANKTRANLIST", ParseDictionary{{"STMTTRN", texts}}}},
    };
    for (const ParseDictionary& node : nodes) checkEmpty(*read<Statement>(node));
}

TEST_CASE_TEMPLATE("unknown elements of a statement are passed over", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    checkEmpty(
        *read<Statement>({{"MKTGINFO", "Buy"},
                          {"curdef", "EUR"},
                          {"STMTTRN", named("outside the list")},
                          {"BALAMT", "1"},
                          {"DTSTART", "20240101"},
                          {"BANKTRANLIST", ParseDictionary{{"BALAMT", "1"}, {"DTASOF", "20240101"}}},
                          {"LEDGERBAL", ParseDictionary{{"DTSTART", "20240101"}, {"CURDEF", "EUR"}}}}));
}

TEST_CASE_TEMPLATE("a statement has its transactions in document order", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    CHECK(names(*read<Statement>(list(named("a")))) == "[a]");
    CHECK(names(*read<Statement>(list(ParseValue::array({named("c"), named("a"), named("b")})))) ==
          "[c][a][b]");
}

TEST_CASE_TEMPLATE("an empty transaction is a transaction", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    CHECK(names(*read<Statement>(list(ParseDictionary()))) == "[nothing]");
}

TEST_CASE_TEMPLATE("an element of a transaction list that is a text makes no transaction", Statement,
                   TvOFXStatementResponse, TvOFXCCStatementResponse) {
    CHECK(names(*read<Statement>(list(ParseValue::array({named("a"), "text", named("b"), "text"})))) ==
          "[a][b]");
}

TEST_CASE_TEMPLATE("two identical transactions are two", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    const ParseDictionary same{{"FITID", "1"}, {"TRNAMT", "1"}, {"NAME", "a"}};
    const auto statement = read<Statement>(list(ParseValue::array({same, same})));
    REQUIRE(statement->statementTransactions().size() == 2);
    CHECK(statement->statementTransactions()[0] != statement->statementTransactions()[1]);
}

TEST_CASE_TEMPLATE("a transaction outlives its statement", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    std::shared_ptr<TvOFXStatementTransaction> kept;
    {
        const ParseDictionary tree =
            parsed("<BANKTRANLIST><STMTTRN><NAME>a</STMTTRN><STMTTRN><NAME>b</STMTTRN>");
        const auto statement = read<Statement>(tree);
        REQUIRE(statement->statementTransactions().size() == 2);
        kept = statement->statementTransactions()[1];
    }
    CHECK(shown(kept->payeeName()) == "b");
    CHECK(shown(kept->originalDataString()) == "<NAME>b");
}

TEST_CASE_TEMPLATE("reading a statement twice appends the transactions again", Statement,
                   TvOFXStatementResponse, TvOFXCCStatementResponse) {
    Statement statement;
    statement.parseDictionary(list(ParseValue::array({named("a"), named("b")})));
    statement.parseDictionary(list(named("c")));
    CHECK(names(statement) == "[a][b][c]");
}

TEST_CASE_TEMPLATE("reading a statement from no node forgets the node and keeps the fields", Statement,
                   TvOFXStatementResponse, TvOFXCCStatementResponse) {
    const auto statement = read<Statement>({{"CURDEF", "EUR"}});
    statement->parseDictionary(std::nullopt);
    CHECK_FALSE(statement->originalParseData());
    CHECK(shown(statement->defaultCurrency()) == "EUR");
    CHECK(statement->statementTransactions().empty());
}

TEST_CASE_TEMPLATE("a statement and its transactions convert with the statement's helper", Statement,
                   TvOFXStatementResponse, TvOFXCCStatementResponse) {
    const auto numbers = std::make_shared<ScriptedNumberFormatter>(
        [](auto text) { return text == "1" ? std::optional<Decimal>() : Decimal::fromInteger(9); });
    const auto dates = std::make_shared<ScriptedDateFormatter>([](auto) { return utc(1999, 12, 31); });
    const auto helper = std::make_shared<TvOFXHelper>();
    helper->setAmountNumberFormatter(numbers);
    helper->setDateFormatter(dates);
    Statement statement;
    statement.setHelperObject(helper);
    statement.parseDictionary(ParseDictionary{
        {"BANKTRANLIST", ParseDictionary{{"DTSTART", "a"},
                                         {"DTEND", "b"},
                                         {"STMTTRN", ParseDictionary{{"TRNAMT", "1"}, {"DTPOSTED", "c"}}}}},
        {"LEDGERBAL", balance("2", "d")},
        {"AVAILBAL", balance("3", "e")}});
    CHECK(numbers->asked() == std::vector<std::string>{"1", "2", "3"});
    CHECK(dates->asked() == std::vector<std::string>{"a", "b", "c", "d", "e"});
    CHECK(shown(statement.ledgerBalanceAmount()) == "9");
    CHECK(shown(statement.availableBalanceAmount()) == "9");
    CHECK(shown(statement.transactionStartDateTime()) == "1999-12-31 00:00:00.000");
    CHECK(shown(statement.transactionEndDateTime()) == "1999-12-31 00:00:00.000");
    REQUIRE(statement.statementTransactions().size() == 1);
    const auto& transaction = statement.statementTransactions().front();
    CHECK(transaction->helperObject() == helper);
    CHECK(shown(transaction->amount()) == "1");
    CHECK(shown(transaction->datePosted()) == "1999-12-31 00:00:00.000");
    CHECK(transaction->ofxVersion() == 0);
}

TEST_CASE_TEMPLATE("without a helper a statement hands none to its transactions", Statement,
                   TvOFXStatementResponse, TvOFXCCStatementResponse) {
    const auto statement = read<Statement>(list(ParseDictionary{{"TRNAMT", "1.5"}}));
    CHECK_FALSE(statement->statementTransactions().front()->helperObject());
    CHECK(shown(statement->statementTransactions().front()->amount()) == "1.5");
}

TEST_CASE_TEMPLATE("transactions alone make no balance and no period", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    const auto statement =
        read<Statement>(list(ParseDictionary{{"TRNAMT", "1.5"}, {"DTPOSTED", "20240131"}}));
    REQUIRE(statement->statementTransactions().size() == 1);
    CHECK(shown(statement->ledgerBalanceAmount()) == "nothing");
    CHECK(shown(statement->ledgerBalanceDateTime()) == "nothing");
    CHECK(shown(statement->availableBalanceAmount()) == "nothing");
    CHECK(shown(statement->availableBalanceDateTime()) == "nothing");
    CHECK(shown(statement->transactionStartDateTime()) == "nothing");
    CHECK(shown(statement->transactionEndDateTime()) == "nothing");
}

TEST_CASE_TEMPLATE("a statement without a helper converts with the one that all share", Statement,
                   TvOFXStatementResponse, TvOFXCCStatementResponse) {
    const auto dates = std::make_shared<ScriptedDateFormatter>([](auto) { return utc(1999, 12, 31); });
    const SharedDateFormatter guard(dates);
    const auto statement = read<Statement>(
        {{"BANKTRANLIST",
          ParseDictionary{{"DTSTART", "a"}, {"DTEND", "b"}, {"STMTTRN", ParseDictionary{{"DTPOSTED", "c"}}}}},
         {"LEDGERBAL", ParseDictionary{{"DTASOF", "d"}}},
         {"AVAILBAL", ParseDictionary{{"DTASOF", "e"}}}});
    CHECK(dates->asked() == std::vector<std::string>{"a", "b", "c", "d", "e"});
    CHECK(shown(statement->ledgerBalanceDateTime()) == "1999-12-31 00:00:00.000");
    CHECK(shown(statement->statementTransactions().at(0)->datePosted()) == "1999-12-31 00:00:00.000");
}

TEST_CASE_TEMPLATE("a statement does not read wrapper facts from its node", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    const auto statement = read<Statement>({{"STATUS", ParseDictionary{{"CODE", "0"}, {"SEVERITY", "INFO"}}},
                                            {"TRNUID", "1"},
                                            {"STMTTRNRS", ParseDictionary()}});
    CHECK_FALSE(statement->status());
    CHECK(shown(statement->transactionUID()) == "nothing");
    CHECK(shown(statement->transactionWrapperName()) == "nothing");
}

TEST_CASE_TEMPLATE("a statement renders and archives its parse data", Statement, TvOFXStatementResponse,
                   TvOFXCCStatementResponse) {
    const ParseDictionary node{{"CURDEF", "EUR"}, {"LEDGERBAL", ParseDictionary{{"BALAMT", "1"}}}};
    const auto statement = read<Statement>(node);
    CHECK(statement->ofxString() == "<CURDEF>EUR\n<LEDGERBAL>\n<BALAMT>1\n</LEDGERBAL>\n");
    KeyedArchiver base;
    TvOFXAggregate(node).encodeWithCoder(base);
    KeyedArchiver coder;
    statement->encodeWithCoder(coder);
    CHECK(coder.archivedData() == base.archivedData());
}

TEST_CASE("a bank statement has a bank account") {
    const auto statement = read<TvOFXStatementResponse>(
        {{"BANKACCTFROM", ParseDictionary{{"BANKID", "1"}, {"ACCTTYPE", "CHECKING"}}},
         {"CCACCTFROM", ParseDictionary{{"ACCTID", "2"}}}});
    REQUIRE(statement->bankAccountFrom());
    CHECK(shown(statement->bankAccountFrom()->bankID()) == "1");
    CHECK(statement->bankAccountFrom()->accountType() == TvOFXBankAccountTypeChecking);
    CHECK_FALSE(statement->bankAccountFrom()->helperObject());
    CHECK(statement->bankAccountFrom()->ofxVersion() == 0);
}

TEST_CASE("a card statement has a card account") {
    const auto statement = read<TvOFXCCStatementResponse>({{"BANKACCTFROM", ParseDictionary{{"BANKID", "1"}}},
                                                           {"CCACCTFROM", ParseDictionary{{"ACCTID", "2"}}}});
    REQUIRE(statement->creditCardAccountFrom());
    CHECK(shown(statement->creditCardAccountFrom()->accountID()) == "2");
    CHECK(statement->creditCardAccountFrom()->originalParseData());
}

TEST_CASE("a statement with the other kind's account has none") {
    CHECK_FALSE(read<TvOFXCCStatementResponse>({{"BANKACCTFROM", ParseDictionary{{"ACCTID", "1"}}}})
                    ->creditCardAccountFrom());
    CHECK_FALSE(
        read<TvOFXStatementResponse>({{"CCACCTFROM", ParseDictionary{{"ACCTID", "1"}}}})->bankAccountFrom());
}

TEST_CASE("an account of another kind than an aggregate is none") {
    const ParseDictionary account{{"ACCTID", "1"}};
    for (const ParseValue& value : {ParseValue("text"), ParseValue::array({account, account})}) {
        CHECK_FALSE(read<TvOFXStatementResponse>({{"BANKACCTFROM", value}})->bankAccountFrom());
        CHECK_FALSE(read<TvOFXCCStatementResponse>({{"CCACCTFROM", value}})->creditCardAccountFrom());
    }
    CHECK_FALSE(read<TvOFXStatementResponse>({})->bankAccountFrom());
    CHECK(read<TvOFXStatementResponse>({{"BANKACCTFROM", ParseDictionary()}})->bankAccountFrom());
}

TEST_CASE("the description of a statement has both balances and the number of transactions") {
    const ParseDictionary node{
        {"LEDGERBAL", ParseDictionary{{"BALAMT", "1,000.10"}}},
        {"AVAILBAL", ParseDictionary{{"BALAMT", "-2"}}},
        {"BANKTRANLIST", ParseDictionary{{"STMTTRN", ParseValue::array({named("a"), named("b")})}}}};
    CHECK(read<TvOFXStatementResponse>(node)->description() ==
          "TvOFXStatementResponse: [\nLedgerBalance: 1000.1\nAvailableBalance: -2\nTransactions: 2\n]");
    CHECK(read<TvOFXCCStatementResponse>(node)->description() ==
          "TvOFXCCStatementResponse: [\nLedgerBalance: 1000.1\nAvailableBalance: -2\nTransactions: 2\n]");
}

TEST_CASE("a balance that is absent is null in the description of a statement") {
    CHECK(TvOFXStatementResponse().description() ==
          "TvOFXStatementResponse: [\nLedgerBalance: (null)\nAvailableBalance: (null)\nTransactions: 0\n]");
}

TEST_CASE("statements name their classes") {
    CHECK(TvOFXStatementResponse().className() == "TvOFXStatementResponse");
    CHECK(TvOFXCCStatementResponse().className() == "TvOFXCCStatementResponse");
}
