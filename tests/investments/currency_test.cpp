// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "investments/documents.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

struct CurrencyRow {
    std::string content;
    std::optional<TransactionCurrency> currency;
};

std::optional<Decimal> rate(std::string_view text) { return Decimal::fromString(text); }

std::vector<CurrencyRow> rows() {
    const std::string given = "<CURRENCY><CURRATE>1.25<CURSYM>CAD</CURRENCY>";
    const std::string original = "<ORIGCURRENCY><CURSYM>EUR<CURRATE>1.1</ORIGCURRENCY>";
    return {
        {"", std::nullopt},
        {given, TransactionCurrency{"CAD", rate("1.25"), false}},
        {original, TransactionCurrency{"EUR", rate("1.1"), true}},
        {given + original, TransactionCurrency{"CAD", rate("1.25"), false}},
        {original + given, TransactionCurrency{"EUR", rate("1.1"), true}},
        {given + given, TransactionCurrency{"CAD", rate("1.25"), false}},
        {"<CURRENCY>USD", TransactionCurrency{"USD", std::nullopt, false}},
        {"<ORIGCURRENCY>USD", TransactionCurrency{"USD", std::nullopt, true}},
        {"<CURRENCY><CURSYM>CHF<CURRATE>par</CURRENCY>", TransactionCurrency{"CHF", std::nullopt, false}},
        {"<CURRENCY><CURRATE>2</CURRENCY>", TransactionCurrency{"", rate("2"), false}},
        {"<CURRENCY></CURRENCY>", std::nullopt},
        {"<CURRENCY></CURRENCY>" + original, TransactionCurrency{"EUR", rate("1.1"), true}},
        {original + "<CURRENCY></CURRENCY>", TransactionCurrency{"EUR", rate("1.1"), true}},
        {"<ORIGCURRENCY></ORIGCURRENCY>" + given, TransactionCurrency{"CAD", rate("1.25"), false}},
        {"<CURRENCY><CURSYM>CAD</CURRENCY>" + original, TransactionCurrency{"CAD", std::nullopt, false}},
        {"<ORIGCURRENCY><CURRATE>2</ORIGCURRENCY>" + given, TransactionCurrency{"", rate("2"), true}},
    };
}

}  // namespace

TEST_CASE("the currency of an investment transaction has its symbol, its rate and what it means") {
    for (const CurrencyRow& row : rows()) {
        CAPTURE(row.content);
        CHECK(transactionWith("<INCOME>" + row.content + "</INCOME>").currency() == row.currency);
        CHECK(positionWith("<POSMF><INVPOS>" + row.content + "</INVPOS></POSMF>").currency() == row.currency);
    }
}

TEST_CASE("the currency of a bank transaction is read from its node") {
    for (const CurrencyRow& row : rows()) {
        CAPTURE(row.content);
        const auto transaction = TvOFXStatementTransaction::initWithParserDict(
            at(parsed("<STMTTRN><FITID>1" + row.content + "</STMTTRN>"), {"STMTTRN"}));
        CHECK(currencyOf(*transaction) == row.currency);
    }
    CHECK_FALSE(currencyOf(TvOFXStatementTransaction()));
}

TEST_CASE("the currency of a bank transaction is converted with its own helper") {
    const auto helper = std::make_shared<TvOFXHelper>();
    NumberFormat format;
    format.decimalSeparator = ",";
    format.groupingSeparator = ".";
    helper->setAmountNumberFormatter(std::make_shared<DecimalNumberFormatter>(format));
    TvOFXStatementTransaction transaction;
    transaction.setHelperObject(helper);
    transaction.parseDictionary(parsed("<CURRENCY><CURSYM>CAD<CURRATE>1,25</CURRENCY>"));
    CHECK(currencyOf(transaction) == TransactionCurrency{"CAD", Decimal::fromString("1.25"), false});
}
