// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>
#include <doctest/doctest.h>

#include <algorithm>

#include "statements/transaction_rows.h"
#include "support/documents.h"
#include "support/formatters.h"
#include "support/shared_date_formatter.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Transaction = std::shared_ptr<TvOFXStatementTransaction>;

Transaction transaction(const ParseDictionary& node) {
    return TvOFXStatementTransaction::initWithParserDict(node);
}

void checkEmpty(const TvOFXStatementTransaction& empty) {
    for (const TransactionText& row : kTransactionTexts) {
        CAPTURE(row.element);
        CHECK(shown((empty.*row.get)()) == "nothing");
    }
    for (const TransactionDate& row : kTransactionDates) {
        CAPTURE(row.element);
        CHECK(shown((empty.*row.get)()) == "nothing");
    }
    CHECK(shown(empty.amount()) == "nothing");
    CHECK_FALSE(empty.payee());
    CHECK_FALSE(empty.bankAccountTo());
    CHECK_FALSE(empty.creditCardAccountTo());
    CHECK(shown(empty.originalDatePostedString()) == "nothing");
}

}  // namespace

TEST_CASE("a new transaction holds nothing") {
    TvOFXStatementTransaction empty;
    checkEmpty(empty);
    CHECK(shown(empty.sort_date()) == "nothing");
    CHECK_FALSE(empty.originalParseData());
}

TEST_CASE("no node makes a transaction that holds nothing") {
    const Transaction read = TvOFXStatementTransaction::initWithParserDict(std::nullopt);
    REQUIRE(read);
    checkEmpty(*read);
    CHECK_FALSE(read->originalParseData());
}

TEST_CASE("each text of a transaction is read from its element as it stands") {
    for (const TransactionText& row : kTransactionTexts) {
        CAPTURE(row.element);
        const Transaction read = transaction({{row.element, "  As Is "}});
        for (const TransactionText& other : kTransactionTexts) {
            CAPTURE(other.element);
            CHECK(shown((read.get()->*other.get)()) == (&row == &other ? "  As Is " : "nothing"));
        }
    }
}

TEST_CASE("the fields of a transaction are all its getters, by name and in their order") {
    using Self = TvOFXStatementTransaction;
    std::vector<std::string_view> names;
    for (const Self::Field& field : Self::fields()) names.push_back(field.name);
    CHECK(names == std::vector<std::string_view>{"transactionType",
                                                 "datePosted",
                                                 "dateUserInit",
                                                 "dateFundsAvailable",
                                                 "amount",
                                                 "fiTransactionID",
                                                 "correctionFITID",
                                                 "correctionAction",
                                                 "serverTransactionID",
                                                 "checkOrReferenceNumber",
                                                 "referenceNumber",
                                                 "standardIndustrialCode",
                                                 "payeeID",
                                                 "payeeName",
                                                 "payee",
                                                 "bankAccountTo",
                                                 "creditCardAccountTo",
                                                 "memo",
                                                 "currency",
                                                 "origCurrency",
                                                 "originalDataString",
                                                 "originalDatePostedString"});
    const auto getterOf = [&](std::string_view name) {
        return Self::fields()[static_cast<std::size_t>(std::ranges::find(names, name) - names.begin())].get;
    };
    CHECK(getterOf("transactionType") == Self::Field::Getter(&Self::transactionType));
    CHECK(getterOf("dateUserInit") == Self::Field::Getter(&Self::dateUserInit));
    CHECK(getterOf("amount") == Self::Field::Getter(&Self::amount));
    CHECK(getterOf("payee") == Self::Field::Getter(&Self::payee));
    CHECK(getterOf("bankAccountTo") == Self::Field::Getter(&Self::bankAccountTo));
    CHECK(getterOf("creditCardAccountTo") == Self::Field::Getter(&Self::creditCardAccountTo));
    for (const TransactionText& row : kTransactionTexts) {
        CAPTURE(row.element);
        const auto isRow = [&](const Self::Field& field) {
            return field.get == Self::Field::Getter(row.get);
        };
        CHECK(std::ranges::count_if(Self::fields(), isRow) == 1);
    }
}

TEST_CASE("each date of a transaction is converted from its element") {
    for (const TransactionDate& row : kTransactionDates) {
        CAPTURE(row.element);
        const Transaction read = transaction({{row.element, "20240131120000.123[-5:EST]"}});
        for (const TransactionDate& other : kTransactionDates) {
            CAPTURE(other.element);
            CHECK(shown((read.get()->*other.get)()) ==
                  (&row == &other ? "2024-01-31 12:00:00.123" : "nothing"));
        }
    }
}

TEST_CASE("a transaction keeps the text of its posting date, also when it is no date") {
    const Transaction read = transaction({{"DTPOSTED", "yesterday"}, {"DTUSER", "today"}});
    CHECK(shown(read->datePosted()) == "nothing");
    CHECK(shown(read->originalDatePostedString()) == "yesterday");
    CHECK(shown(read->dateUserInit()) == "nothing");
    CHECK(shown(read->sort_date()) == "nothing");
    CHECK(shown(transaction({{"DTPOSTED", "20240131"}})->originalDatePostedString()) == "20240131");
    CHECK(shown(transaction({{"DTUSER", "20240131"}})->originalDatePostedString()) == "nothing");
}

TEST_CASE("a transaction's amount is exact") {
    struct Row {
        std::string text;
        std::string amount;
    };
    for (const Row& row :
         {Row{"-12.50", "-12.5"}, Row{"1,234.56", "1234.56"}, Row{"+0.105", "0.105"}, Row{"0.1", "0.1"},
          Row{"-0", "0"}, Row{"abc", "nothing"}, Row{"12,5", "nothing"},
          Row{"123456789012345678901234567890.12345678", "123456789012345678901234567890.12345678"}}) {
        CAPTURE(row.text);
        CHECK(shown(transaction({{"TRNAMT", row.text}})->amount()) == row.amount);
    }
}

TEST_CASE("a transaction's payee and accounts are read from their aggregates") {
    const Transaction read = transaction(
        {{"PAYEE", ParseDictionary{{"NAME", "Juniper"}, {"CITY", "Fenwick"}}},
         {"BANKACCTTO", ParseDictionary{{"BANKID", "1"}, {"ACCTID", "2"}, {"ACCTTYPE", "SAVINGS"}}},
         {"CCACCTTO", ParseDictionary{{"ACCTID", "4999"}}}});
    REQUIRE(read->payee());
    CHECK(shown(read->payee()->name()) == "Juniper");
    CHECK(shown(read->payee()->city()) == "Fenwick");
    CHECK(shown(read->payeeName()) == "nothing");
    REQUIRE(read->bankAccountTo());
    CHECK(shown(read->bankAccountTo()->bankID()) == "1");
    CHECK(read->bankAccountTo()->accountType() == TvOFXBankAccountTypeSavings);
    CHECK_FALSE(read->bankAccountTo()->originalParseData());
    REQUIRE(read->creditCardAccountTo());
    CHECK(shown(read->creditCardAccountTo()->accountID()) == "4999");
    CHECK(read->creditCardAccountTo()->originalParseData());
    CHECK(read->payee() == read->payee());
}

TEST_CASE("an empty aggregate makes an empty payee or account") {
    const Transaction read = transaction(
        {{"PAYEE", ParseDictionary()}, {"BANKACCTTO", ParseDictionary()}, {"CCACCTTO", ParseDictionary()}});
    REQUIRE(read->payee());
    CHECK(shown(read->payee()->name()) == "nothing");
    CHECK(read->bankAccountTo());
    CHECK(read->creditCardAccountTo());
}

TEST_CASE("the parts of a transaction get neither its helper nor its version") {
    auto read = std::make_shared<TvOFXStatementTransaction>();
    read->setHelperObject(TvOFXHelper::defaultHelper());
    read->setOfxVersion(211);
    read->parseDictionary(ParseDictionary{
        {"PAYEE", ParseDictionary()}, {"BANKACCTTO", ParseDictionary()}, {"CCACCTTO", ParseDictionary()}});
    for (const TvOFXAggregate* part : {static_cast<TvOFXAggregate*>(read->payee().get()),
                                       static_cast<TvOFXAggregate*>(read->bankAccountTo().get()),
                                       static_cast<TvOFXAggregate*>(read->creditCardAccountTo().get())}) {
        REQUIRE(part != nullptr);
        CHECK_FALSE(part->helperObject());
        CHECK(part->ofxVersion() == 0);
    }
}

TEST_CASE("a value of another kind is passed over") {
    const ParseDictionary aggregate{{"X", "1"}};
    for (const ParseValue& value : {ParseValue::array({"20240101", "20240102"}), ParseValue(aggregate),
                                    ParseValue(ParseDictionary())}) {
        ParseDictionaryBuilder node;
        for (const TransactionText& row : kTransactionTexts) node.value(row.element, value);
        for (const TransactionDate& row : kTransactionDates) node.value(row.element, value);
        node.value("TRNAMT", value);
        checkEmpty(*transaction(node.finish()));
    }
    for (const ParseValue& value : {ParseValue("text"), ParseValue::array({aggregate, aggregate})})
        checkEmpty(*transaction({{"PAYEE", value}, {"BANKACCTTO", value}, {"CCACCTTO", value}}));
}

TEST_CASE("a repeated name leaves the payee's name empty") {
    const ParseDictionary tree = parsed("<STMTTRN><NAME>A<NAME>B<MEMO>m</STMTTRN>");
    const Transaction read = transaction(at(tree, {"STMTTRN"}));
    CHECK(shown(read->payeeName()) == "nothing");
    CHECK(shown(read->memo()) == "m");
}

TEST_CASE("currencies are kept as texts, and not read from aggregates") {
    const ParseDictionary aggregate{{"CURRATE", "1.1"}, {"CURSYM", "EUR"}};
    CHECK(shown(transaction({{"CURRENCY", "EUR"}})->currency()) == "EUR");
    CHECK(shown(transaction({{"CURRENCY", aggregate}})->currency()) == "nothing");
    CHECK(shown(transaction({{"ORIGCURRENCY", aggregate}})->origCurrency()) == "nothing");
}

TEST_CASE("unknown elements of a transaction, and other cases of known ones, are passed over") {
    checkEmpty(*transaction({{"name", "1"}, {"INTU.NAME", "2"}, {"TRNTYPES", "3"}, {"IMAGEDATA", "4"}}));
}

TEST_CASE("a second reading keeps what the second node has not or has in another kind") {
    const Transaction read =
        transaction({{"NAME", "first"}, {"MEMO", "memo"}, {"TRNAMT", "1"}, {"DTUSER", "20240101"}});
    read->parseDictionary(ParseDictionary{{"NAME", "second"}, {"TRNAMT", ParseValue::array({"2", "3"})}});
    CHECK(shown(read->payeeName()) == "second");
    CHECK(shown(read->memo()) == "memo");
    CHECK(shown(read->amount()) == "1");
    CHECK(shown(read->dateUserInit()) == "2024-01-01 00:00:00.000");
}

TEST_CASE("a second reading replaces by nothing what it cannot convert") {
    const Transaction read = transaction({{"TRNAMT", "1"}, {"DTPOSTED", "20240101"}});
    read->parseDictionary(ParseDictionary{{"TRNAMT", "?"}, {"DTPOSTED", "?"}});
    CHECK(shown(read->amount()) == "nothing");
    CHECK(shown(read->datePosted()) == "nothing");
    CHECK(shown(read->originalDatePostedString()) == "?");
}

TEST_CASE("the order of the elements of a transaction carries no meaning") {
    const Transaction read = transaction({{"MEMO", "m"}, {"TRNAMT", "1"}, {"TRNTYPE", "POS"}});
    const Transaction reversed = transaction({{"TRNTYPE", "POS"}, {"TRNAMT", "1"}, {"MEMO", "m"}});
    CHECK(read->description() == reversed->description());
    CHECK(read->isEqualOFXStatementTransaction(reversed.get()));
}

TEST_CASE("a transaction keeps its whole node and its source text") {
    const ParseDictionary tree = parsed("<STMTTRN>\n<NAME>A &amp; B\n<EXTRA>x\n</STMTTRN>");
    const Transaction read = transaction(at(tree, {"STMTTRN"}));
    CHECK(shown(read->originalDataString()) == "<NAME>A &amp; B\n<EXTRA>x\n");
    CHECK(shown(read->payeeName()) == "A & B");
    REQUIRE(read->originalParseData());
    CHECK(*read->originalParseData() == at(tree, {"STMTTRN"}));
    CHECK(read->ofxString().find("<EXTRA>x\n") != std::string::npos);
}

TEST_CASE("the inherited constructor keeps the node and fills no field") {
    const auto kept = TvOFXStatementTransaction::initWithParseDict(
        ParseDictionary{{"NAME", "n"}, {"TRNAMT", "1"}, {"DTPOSTED", "20240101"}});
    checkEmpty(*kept);
    CHECK(kept->originalParseData());
    CHECK_FALSE(TvOFXStatementTransaction::initWithParseDict(std::nullopt)->originalParseData());
}

TEST_CASE("reading from no node forgets the node and keeps the fields") {
    const Transaction read = transaction({{"NAME", "n"}});
    read->parseDictionary(std::nullopt);
    CHECK_FALSE(read->originalParseData());
    CHECK(shown(read->payeeName()) == "n");
}

TEST_CASE("a transaction converts with its helper, and with the shared one when it has none") {
    const auto numbers =
        std::make_shared<ScriptedNumberFormatter>([](auto) { return Decimal::fromInteger(7); });
    const auto dates = std::make_shared<ScriptedDateFormatter>(
        [](auto text) { return text == "then" ? std::optional(utc(1999, 12, 31)) : std::nullopt; });
    auto helper = std::make_shared<TvOFXHelper>();
    helper->setAmountNumberFormatter(numbers);
    helper->setDateFormatter(dates);
    const ParseDictionary node{
        {"TRNAMT", "1"}, {"DTPOSTED", "then"}, {"DTUSER", "20240101"}, {"DTAVAIL", "then"}};

    TvOFXStatementTransaction read;
    read.setHelperObject(helper);
    read.parseDictionary(node);
    CHECK(shown(read.amount()) == "7");
    CHECK(shown(read.datePosted()) == "1999-12-31 00:00:00.000");
    CHECK(shown(read.dateUserInit()) == "2024-01-01 00:00:00.000");
    CHECK(shown(read.dateFundsAvailable()) == "1999-12-31 00:00:00.000");

    const Transaction plain = transaction(node);
    CHECK(shown(plain->amount()) == "1");
    CHECK(shown(plain->datePosted()) == "nothing");
}

TEST_CASE("a transaction without a helper converts with the one that all share") {
    const auto formatter =
        std::make_shared<ScriptedDateFormatter>([](std::string_view) { return utc(1999, 12, 31); });
    const SharedDateFormatter guard(formatter);
    for (const TransactionDate& row : kTransactionDates) {
        CAPTURE(row.element);
        CHECK(shown((transaction({{row.element, "then"}}).get()->*row.get)()) == "1999-12-31 00:00:00.000");
    }
}

TEST_CASE("the institution's identifier can be set") {
    const Transaction read = transaction({{"FITID", "1"}});
    read->setFiTransactionID("2");
    CHECK(shown(read->fiTransactionID()) == "2");
    read->setFiTransactionID(std::nullopt);
    CHECK(shown(read->fiTransactionID()) == "nothing");
}

TEST_CASE("the description of a transaction has the fields that are there, without breaks between them") {
    struct Row {
        ParseDictionary node;
        std::string text;
    };
    const std::string date = dateDescription(utc(2024, 1, 31));
    const std::vector<Row> rows{
        {{}, ""},
        {{{"TRNTYPE", "POS"}}, "  type: POS"},
        {{{"TRNAMT", "-12.50"}}, "  amount: -12.5"},
        {{{"NAME", "n"}}, "  payee: n"},
        {{{"PAYEE", ParseDictionary{{"NAME", "p"}}}}, "  payee: <NAME>p\n"},
        {{{"DTPOSTED", "20240131"}}, "  date posted: " + date},
        {{{"MEMO", "m"}, {"FITID", "1"}, {"DTUSER", "20240131"}}, ""},
        {{{"DTPOSTED", "20240131"},
          {"PAYEE", ParseDictionary{{"NAME", "p"}}},
          {"NAME", "n"},
          {"TRNAMT", "1,000"},
          {"TRNTYPE", "POS"}},
         "  type: POS  amount: 1000  payee: n  payee: <NAME>p\n  date posted: " + date},
    };
    for (const Row& row : rows) {
        CAPTURE(row.text);
        CHECK(transaction(row.node)->description() == "TvOFXStatementTransaction:\n" + row.text);
    }
}

TEST_CASE("a transaction names its class") {
    CHECK(TvOFXStatementTransaction().className() == "TvOFXStatementTransaction");
}
