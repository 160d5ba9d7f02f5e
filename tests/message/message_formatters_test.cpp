// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/formatters.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// Dates and amounts that only a caller's formatters can read, wherever a document has them.
constexpr std::string_view kDocument =
    "<OFX><SIGNONMSGSRSV1><SONRS><STATUS><CODE>0<SEVERITY>INFO</STATUS><DTSERVER>d-server<DTPROFUP>d-prof"
    "<DTACCTUP>d-acct</SONRS></SIGNONMSGSRSV1>"
    "<SIGNUPMSGSRSV1><ACCTINFOTRNRS><TRNUID>1<ACCTINFORS><DTACCTUP>d-info</ACCTINFORS></ACCTINFOTRNRS>"
    "</SIGNUPMSGSRSV1>"
    "<PROFMSGSRSV1><PROFTRNRS><TRNUID>2<PROFRS><DTPROFUP>d-profile</PROFRS></PROFTRNRS></PROFMSGSRSV1>"
    "<BANKMSGSRSV1><STMTTRNRS><TRNUID>3<STMTRS>"
    "<BANKTRANLIST><DTSTART>d-start<DTEND>d-end"
    "<STMTTRN><DTPOSTED>d-posted<DTUSER>d-user<DTAVAIL>d-avail<TRNAMT>n-1<FITID>n-id<CHECKNUM>n-check</"
    "STMTTRN>"
    "</BANKTRANLIST><LEDGERBAL><BALAMT>n-2<DTASOF>d-ledger</"
    "LEDGERBAL><AVAILBAL><BALAMT>n-3<DTASOF>d-available"
    "</AVAILBAL></STMTRS></STMTTRNRS></BANKMSGSRSV1>"
    "<CREDITCARDMSGSRSV1><CCSTMTTRNRS><TRNUID>4<CCSTMTRS><BANKTRANLIST><STMTTRN><DTPOSTED>d-card<TRNAMT>n-4</"
    "STMTTRN>"
    "</BANKTRANLIST></CCSTMTRS></CCSTMTTRNRS></CREDITCARDMSGSRSV1></OFX>";

const std::vector<std::string> kDates{"d-start", "d-end",    "d-posted",    "d-user",
                                      "d-avail", "d-ledger", "d-available", "d-card"};
const std::vector<std::string> kNumbers{"n-1", "n-2", "n-3", "n-4"};

std::shared_ptr<ScriptedNumberFormatter> numbers() {
    return std::make_shared<ScriptedNumberFormatter>(
        [](auto text) { return Decimal::fromString(text.substr(2)); });
}

std::shared_ptr<ScriptedDateFormatter> dates() {
    return std::make_shared<ScriptedDateFormatter>([](auto) { return utc(1999, 12, 31); });
}

std::shared_ptr<TvOFXMessage> import(const std::shared_ptr<const NumberFormatter>& number,
                                     const std::shared_ptr<const DateFormatter>& date,
                                     std::string_view document = kDocument) {
    auto message =
        TovanaOFXController::importOFXFileFromData(Data::copy(document), TextEncodingNone, number, date);
    REQUIRE(message);
    return message;
}

std::shared_ptr<TvOFXStatementResponse> statement(const TvOFXMessage& message) {
    auto found = std::dynamic_pointer_cast<TvOFXStatementResponse>(message.bankingMsgSet().front());
    REQUIRE(found);
    return found;
}

}  // namespace

TEST_CASE("the caller's formatters read every date and amount of statements and transactions, and no other") {
    const auto number = numbers();
    const auto date = dates();
    const auto message = import(number, date);
    auto asked = date->asked();
    CHECK(asked == kDates);
    CHECK(number->asked() == kNumbers);
    const auto read = statement(*message);
    CHECK(shown(read->ledgerBalanceAmount()) == "2");
    CHECK(shown(read->transactionStartDateTime()) == "1999-12-31 00:00:00.000");
    REQUIRE(read->statementTransactions().size() == 1);
    CHECK(shown(read->statementTransactions()[0]->amount()) == "1");
    CHECK(shown(read->statementTransactions()[0]->datePosted()) == "1999-12-31 00:00:00.000");
    CHECK(shown(read->statementTransactions()[0]->originalDatePostedString()) == "d-posted");
}

TEST_CASE("one formatter of the caller's comes without the other") {
    const auto number = numbers();
    const auto read = statement(*import(number, nullptr));
    CHECK(number->asked() == kNumbers);
    CHECK(shown(read->ledgerBalanceAmount()) == "2");
    CHECK(shown(read->ledgerBalanceDateTime()) == "nothing");

    const auto date = dates();
    const auto other = statement(*import(nullptr, date));
    CHECK(date->asked() == kDates);
    CHECK(shown(other->ledgerBalanceAmount()) == "nothing");
    CHECK(shown(other->ledgerBalanceDateTime()) == "1999-12-31 00:00:00.000");
}

TEST_CASE("what the caller's formatters cannot read is read as always") {
    const auto number = std::make_shared<ScriptedNumberFormatter>([](auto) { return std::nullopt; });
    const auto date = std::make_shared<ScriptedDateFormatter>([](auto) { return std::nullopt; });
    const auto read = statement(*import(number, date,
                                        "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><LEDGERBAL><BALAMT>1,234.50<"
                                        "DTASOF>20240131</LEDGERBAL></STMTRS>"
                                        "</STMTTRNRS></BANKMSGSRSV1></OFX>"));
    CHECK(number->asked().size() == 1);
    CHECK(date->asked().size() == 1);
    CHECK(shown(read->ledgerBalanceAmount()) == "1234.5");
    CHECK(shown(read->ledgerBalanceDateTime()) == "2024-01-31 00:00:00.000");
}

TEST_CASE("the caller's formatters come before the built-in formats") {
    const auto number = std::make_shared<DecimalNumberFormatter>(
        NumberFormat{.decimalSeparator = ",", .groupingSeparator = "."});
    const auto date = std::make_shared<ScriptedDateFormatter>(
        [](auto text) { return text == "20240131" ? std::optional(utc(2000, 1, 1)) : std::nullopt; });
    const auto read = statement(*import(
        number, date,
        "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><LEDGERBAL><BALAMT>1.234,50<DTASOF>20240131</LEDGERBAL>"
        "<AVAILBAL><BALAMT>12,5<DTASOF>20240201</AVAILBAL></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>"));
    CHECK(shown(read->ledgerBalanceAmount()) == "1234.5");
    CHECK(shown(read->availableBalanceAmount()) == "12.5");
    CHECK(shown(read->ledgerBalanceDateTime()) == "2000-01-01 00:00:00.000");
    CHECK(shown(read->availableBalanceDateTime()) == "2024-02-01 00:00:00.000");
}

TEST_CASE("a message has a helper of its own only with a formatter of the caller's") {
    CHECK(statement(*import(nullptr, nullptr))->helperObject() == TvOFXHelper::defaultHelper());
    CHECK(statement(*imported(kDocument))->helperObject() == TvOFXHelper::defaultHelper());
    const auto number = numbers();
    const auto first = statement(*import(number, nullptr))->helperObject();
    REQUIRE(first);
    CHECK(first != TvOFXHelper::defaultHelper());
    CHECK(first->amountNumberFormatter() == number);
    CHECK_FALSE(first->dateFormatter());
    CHECK(statement(*import(number, nullptr))->helperObject() != first);
    CHECK_FALSE(TvOFXHelper::defaultHelper()->amountNumberFormatter());
    const auto date = dates();
    const auto second = statement(*import(nullptr, date))->helperObject();
    CHECK(second->dateFormatter() == date);
    CHECK_FALSE(second->amountNumberFormatter());
}

TEST_CASE("formatters on the shared helper hold for imports without formatters only") {
    const auto number = numbers();
    TvOFXHelper::defaultHelper()->setAmountNumberFormatter(number);
    const auto shared = statement(*imported(kDocument));
    const auto own = statement(*import(nullptr, dates()));
    TvOFXHelper::defaultHelper()->setAmountNumberFormatter(nullptr);
    CHECK(shown(shared->ledgerBalanceAmount()) == "2");
    CHECK(shown(own->ledgerBalanceAmount()) == "nothing");
}

TEST_CASE("account information and profile inside other message sets do not see the formatters either") {
    const auto date = dates();
    import(nullptr, date,
           "<OFX><BANKMSGSRSV1><SONRS><DTSERVER>d-1</SONRS><ACCTINFORS><DTACCTUP>d-2</"
           "ACCTINFORS><PROFRS><DTPROFUP>d-3"
           "</PROFRS><OTHERRS><DTASOF>d-4</OTHERRS></BANKMSGSRSV1></OFX>");
    CHECK(date->asked().empty());
}
