// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <random>

#include "support/documents.h"
#include "support/effort.h"
#include "support/shown.h"

/// \file
/// The promise: amounts are decimal numbers and dates whole milliseconds, from the document's bytes to
/// the archive and back. Binary floating point would lose a digit somewhere below.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// A statement whose transactions have these amounts.
std::shared_ptr<TvOFXStatementResponse> statementOf(const std::vector<std::string>& amounts) {
    std::string body = "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS><BANKTRANLIST>";
    for (const std::string& amount : amounts) body += "<STMTTRN><TRNAMT>" + amount + "</STMTTRN>";
    const auto message = imported(body);
    auto statement = std::dynamic_pointer_cast<TvOFXStatementResponse>(message->bankingMsgSet().front());
    REQUIRE(statement);
    return statement;
}

Decimal sumOf(const TvOFXStatementResponse& statement) {
    Decimal sum;
    for (const auto& transaction : statement.statementTransactions()) {
        REQUIRE(transaction->amount());
        const auto next = sum.plus(*transaction->amount());
        REQUIRE(next);
        sum = *next;
    }
    return sum;
}

std::string inCents(std::int64_t cents) {
    const bool negative = cents < 0;
    const std::string digits = std::to_string(negative ? -cents : cents);
    const std::string padded = std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits;
    return (negative ? "-" : "") + padded.substr(0, padded.size() - 2) + "." +
           padded.substr(padded.size() - 2);
}

}  // namespace

TEST_CASE("amounts that binary floating point cannot hold are kept to the last digit") {
    struct Row {
        std::string text;
        std::string plain;
    };
    for (const Row& row :
         {Row{"0.1", "0.1"}, Row{"-0.7", "-0.7"}, Row{"1.10", "1.1"},
          Row{"0.30000000000000004", "0.30000000000000004"}, Row{"9007199254740993", "9007199254740993"},
          Row{"-9007199254740993.01", "-9007199254740993.01"},
          Row{"99999999999999999999999999999999999999", "99999999999999999999999999999999999999"},
          Row{"-0.00000000000000000000000000000000000001", "-0.00000000000000000000000000000000000001"},
          Row{"1,234,567,890,123,456.789", "1234567890123456.789"},
          Row{"12345678901234567890.123456789012345678", "12345678901234567890.123456789012345678"}}) {
        CAPTURE(row.text);
        const auto statement = statementOf({row.text});
        const auto& transaction = statement->statementTransactions().front();
        CHECK(shown(transaction->amount()) == row.plain);
        CHECK(shown(restored(*transaction)->amount()) == row.plain);
        CHECK(transaction->description().find(std::string("amount: ") + row.plain) != std::string::npos);
    }
}

TEST_CASE("an amount that does not fit exactly is nothing, never rounded") {
    const auto statement =
        statementOf({"123456789012345678901234567890123456789", "1e128", "0.1" + std::string(60, '1')});
    for (const auto& transaction : statement->statementTransactions())
        CHECK(shown(transaction->amount()) == "nothing");
}

TEST_CASE("ten dimes are a dollar, and a hundred thousand cents a thousand") {
    CHECK(sumOf(*statementOf(std::vector<std::string>(10, "0.10"))) == Decimal::fromInteger(1));
    CHECK(sumOf(*statementOf(std::vector<std::string>(100000, "0.01"))) == Decimal::fromInteger(1000));
}

TEST_CASE("sums of amounts are those of integer arithmetic") {
    std::mt19937_64 random(20240131);
    std::vector<std::string> amounts;
    std::int64_t cents = 0;
    for (std::size_t i = 0; i < scaled(20000); ++i) {
        const auto amount = static_cast<std::int64_t>(random() % 20000000001) - 10000000000;
        cents += amount;
        amounts.push_back(inCents(amount));
    }
    const Decimal expected = Decimal::fromString(inCents(cents)).value();
    CHECK(sumOf(*statementOf(amounts)) == expected);
}

TEST_CASE("amounts written and read again are the same") {
    std::mt19937_64 random(7);
    const auto& helper = *TvOFXHelper::defaultHelper();
    for (int i = 0; i < 1000; ++i) {
        const auto cents = static_cast<std::int64_t>(random() % 2000000000000001) - 1000000000000000;
        const Decimal amount = Decimal::fromString(inCents(cents)).value();
        const auto text = helper.ofxAmountStringFromDecimalNumber(amount);
        REQUIRE(text);
        CAPTURE(*text);
        CHECK(shown(helper.decimalNumberFromOFXAmountString(*text)) == shown(std::optional(amount)));
    }
}

TEST_CASE("balances are exact like amounts") {
    const auto message = imported(
        "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><LEDGERBAL><BALAMT>9007199254740993.11</LEDGERBAL>"
        "<AVAILBAL><BALAMT>-0.3</AVAILBAL></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>");
    const auto statement =
        std::dynamic_pointer_cast<TvOFXStatementResponse>(message->bankingMsgSet().front());
    CHECK(shown(statement->ledgerBalanceAmount()) == "9007199254740993.11");
    CHECK(shown(statement->availableBalanceAmount()) == "-0.3");
}

TEST_CASE("every millisecond of a date is kept, on either side of 1970") {
    std::mt19937_64 random(11);
    for (int i = 0; i < 300; ++i) {
        const auto number = [&random](unsigned long long count) {
            return static_cast<unsigned>(random() % count);
        };
        const Date date = utc(1 + static_cast<int>(number(9999)), 1 + number(12), 1 + number(28), number(24),
                              number(60), number(60), number(1000));
        std::string text;
        for (const char c : shown(std::optional(date)))
            if (c != '-' && c != ':' && c != ' ') text.push_back(c);
        CAPTURE(text);
        const auto transaction =
            TvOFXStatementTransaction::initWithParserDict(ParseDictionary{{"DTPOSTED", text}});
        CHECK(shown(transaction->datePosted()) == shown(std::optional(date)));
        CHECK(restored(*transaction)->datePosted() == date);
    }
}
