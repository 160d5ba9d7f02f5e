// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <functional>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

/// \file
/// Formatters of an application that replace what asks them: themselves, the helper that holds them, the
/// object that holds the helper, or what the application handed over.

namespace {

/// What became of a formatter.
struct Record {
    int asked = 0;
    bool wasDestroyedWhileAsked = false;
    bool isDestroyed = false;
};

/// Does something whenever it is asked, finds nothing, and notes when it is destroyed meanwhile.
template <class Formatter>
class Replacing : public Formatter {
public:
    Replacing(Record& record, std::function<void()> act) : record_(record), act_(std::move(act)) {}
    Replacing(const Replacing&) = delete;
    Replacing& operator=(const Replacing&) = delete;
    ~Replacing() override {
        record_.wasDestroyedWhileAsked |= isAsked_;
        record_.isDestroyed = true;
    }

protected:
    void ask() const {
        isAsked_ = true;
        ++record_.asked;
        const std::function<void()> act = act_;
        act();
        isAsked_ = false;
    }

private:
    Record& record_;
    std::function<void()> act_;
    mutable bool isAsked_ = false;
};

class ReplacingNumbers final : public Replacing<NumberFormatter> {
public:
    using Replacing::Replacing;
    std::optional<Decimal> numberFromString(std::string_view) const override {
        ask();
        return std::nullopt;
    }
    std::optional<std::string> stringFromNumber(const Decimal&) const override {
        ask();
        return std::nullopt;
    }
};

class ReplacingDates final : public Replacing<DateFormatter> {
public:
    using Replacing::Replacing;
    std::optional<Date> dateFromString(std::string_view) const override {
        ask();
        return std::nullopt;
    }
    std::string stringFromDate(Date) const override { return {}; }
};

/// The formatter was asked, lived for as long, and went when nobody had it any more.
void checkOutlivedItsUse(const Record& record) {
    CHECK(record.asked > 0);
    CHECK_FALSE(record.wasDestroyedWhileAsked);
    CHECK(record.isDestroyed);
}

constexpr std::string_view kTwoPayments =
    "<CURDEF>USD<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>CHECKING</BANKACCTFROM>"
    "<BANKTRANLIST><DTSTART>20240101<STMTTRN><DTPOSTED>20240131<TRNAMT>1,000.00<FITID>1<MEMO>first</STMTTRN>"
    "<STMTTRN><DTPOSTED>20240201<TRNAMT>-6.00<FITID>2<MEMO>second</STMTTRN></BANKTRANLIST>"
    "<LEDGERBAL><BALAMT>7.00<DTASOF>20240202</LEDGERBAL>";

void checkStatement(const TvOFXAccountStatement& statement) {
    REQUIRE(statement.statementTransactions().size() == 2);
    CHECK(shown(statement.statementTransactions()[0]->amount()) == "1000");
    CHECK(shown(statement.statementTransactions()[1]->amount()) == "-6");
    CHECK(shown(statement.statementTransactions()[1]->memo()) == "second");
    CHECK(shown(statement.statementTransactions()[1]->datePosted()) == "2024-02-01 00:00:00.000");
    CHECK(shown(statement.transactionStartDateTime()) == "2024-01-01 00:00:00.000");
    CHECK(shown(statement.ledgerBalanceAmount()) == "7");
}

}  // namespace

TEST_CASE("a formatter may take itself out of the helper while it is asked") {
    TvOFXHelper helper;
    Record numbers;
    helper.setAmountNumberFormatter(
        std::make_shared<ReplacingNumbers>(numbers, [&] { helper.setAmountNumberFormatter(nullptr); }));
    CHECK(shown(helper.decimalNumberFromOFXAmountString("1,000.5")) == "1000.5");
    checkOutlivedItsUse(numbers);
    Record dates;
    helper.setDateFormatter(
        std::make_shared<ReplacingDates>(dates, [&] { helper.setDateFormatter(nullptr); }));
    CHECK(shown(helper.dateFromOFXDateString("20240131")) == "2024-01-31 00:00:00.000");
    checkOutlivedItsUse(dates);
    Record written;
    std::optional<Decimal> number = Decimal::fromInteger(1234);
    helper.setAmountNumberFormatter(std::make_shared<ReplacingNumbers>(written, [&] {
        helper.setAmountNumberFormatter(nullptr);
        number.reset();
    }));
    CHECK(helper.ofxAmountStringFromDecimalNumber(number) == "1,234.00");
    checkOutlivedItsUse(written);
}

TEST_CASE("a formatter may destroy the helper that asks it") {
    Record numbers;
    auto helper = std::make_unique<TvOFXHelper>();
    helper->setAmountNumberFormatter(std::make_shared<ReplacingNumbers>(numbers, [&] { helper.reset(); }));
    CHECK(shown(helper->decimalNumberFromOFXAmountString("1,000.5")) == "1000.5");
    checkOutlivedItsUse(numbers);
    Record dates;
    helper = std::make_unique<TvOFXHelper>();
    helper->setDateFormatter(std::make_shared<ReplacingDates>(dates, [&] { helper.reset(); }));
    CHECK(shown(helper->dateFromOFXDateString("20240131120000")) == "2024-01-31 12:00:00.000");
    checkOutlivedItsUse(dates);
}

TEST_CASE("a formatter may take the helper, and the node, away from the object that reads") {
    Record numbers;
    Record dates;
    TvOFXStatementResponse statement;
    std::optional<ParseDictionary> node = parsed(kTwoPayments);
    const auto replace = [&] {
        statement.setHelperObject(nullptr);
        statement.setOriginalParseData(std::nullopt);
        node.reset();
    };
    {
        auto helper = std::make_shared<TvOFXHelper>();
        helper->setAmountNumberFormatter(std::make_shared<ReplacingNumbers>(numbers, replace));
        helper->setDateFormatter(std::make_shared<ReplacingDates>(dates, replace));
        statement.setHelperObject(std::move(helper));
    }
    statement.parseDictionary(node);
    CHECK(statement.originalParseData() == parsed(kTwoPayments));
    checkStatement(statement);
    CHECK(dates.asked > 0);
    CHECK_FALSE(dates.wasDestroyedWhileAsked);
    CHECK_FALSE(numbers.wasDestroyedWhileAsked);
}

TEST_CASE("a formatter may take away the node of a transaction that reads its own") {
    Record dates;
    TvOFXStatementTransaction transaction;
    transaction.setOriginalParseData(parsed("<DTPOSTED>20240131<TRNAMT>5.00<MEMO>text"));
    {
        auto helper = std::make_shared<TvOFXHelper>();
        helper->setDateFormatter(std::make_shared<ReplacingDates>(dates, [&] {
            transaction.setHelperObject(nullptr);
            transaction.setOriginalParseData(std::nullopt);
        }));
        transaction.setHelperObject(std::move(helper));
    }
    transaction.parseDictionary(transaction.originalParseData());
    CHECK(shown(transaction.memo()) == "text");
    CHECK(shown(transaction.amount()) == "5");
    checkOutlivedItsUse(dates);
}

TEST_CASE("a formatter may replace helper and tree of the interpreter that builds a response") {
    Record dates;
    TvOFXInterpreter interpreter{TvOFXParserResult()};
    std::optional<ParseDictionary> node = parsed("<TRNUID>1<STATUS><CODE>0<SEVERITY>INFO</STATUS><STMTRS>" +
                                                 std::string(kTwoPayments) + "</STMTRS>");
    {
        auto helper = std::make_shared<TvOFXHelper>();
        helper->setDateFormatter(std::make_shared<ReplacingDates>(dates, [&] {
            interpreter.setHelperObject(nullptr);
            interpreter.reset();
            node.reset();
        }));
        interpreter.setHelperObject(std::move(helper));
    }
    const auto response = interpreter.interpretResponseDict(node, "STMTTRNRS");
    CHECK(shown(response->transactionUID()) == "1");
    REQUIRE(response->status());
    CHECK(shown(response->status()->severity()) == "INFO");
    const auto* statement = dynamic_cast<const TvOFXStatementResponse*>(response.get());
    REQUIRE(statement != nullptr);
    checkStatement(*statement);
    CHECK(interpreter.allResponses().size() == 1);
    CHECK_FALSE(dates.wasDestroyedWhileAsked);
}

TEST_CASE("the helper that a formatter gives the interpreter while it interprets stays") {
    Record dates;
    TvOFXParserResult result;
    result.ofxData = parsed("<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS>" + std::string(kTwoPayments) +
                            "</STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>");
    TvOFXInterpreter interpreter(result);
    const auto next = std::make_shared<TvOFXHelper>();
    {
        auto helper = std::make_shared<TvOFXHelper>();
        helper->setDateFormatter(
            std::make_shared<ReplacingDates>(dates, [&] { interpreter.setHelperObject(next); }));
        interpreter.setHelperObject(std::move(helper));
    }
    REQUIRE(interpreter.interpret());
    CHECK(interpreter.allResponses().size() == 1);
    CHECK(interpreter.helperObject() == next);
    CHECK(dates.asked > 0);
    CHECK_FALSE(dates.wasDestroyedWhileAsked);
}

TEST_CASE("a formatter of the shared helper may take away what a response is read from") {
    Record dates;
    const auto& shared = TvOFXHelper::defaultHelper();
    for (const std::string_view row : {"SONRS", "PROFRS", "ACCTINFORS"}) {
        CAPTURE(row);
        std::optional<ParseDictionary> node = parsed(
            "<DTSERVER>20240131<DTPROFUP>20240131<DTACCTUP>20240131<LANGUAGE>ENG<FINAME>Bank"
            "<ACCTINFO><DESC>text</ACCTINFO>");
        shared->setDateFormatter(std::make_shared<ReplacingDates>(dates, [&] {
            shared->setDateFormatter(nullptr);
            node.reset();
        }));
        if (row == "SONRS") {
            CHECK(shown(TvOFXSignOnResponse::initWithParseDict(node)->language()) == "ENG");
        } else if (row == "PROFRS") {
            CHECK(shown(TvOFXFIProfileResponse::initWithParseDict(node)->fiName()) == "Bank");
        } else {
            CHECK(TvOFXAccountInfoResponse::initWithParseDict(node)->accountInfos().size() == 1);
        }
        checkOutlivedItsUse(dates);
    }
}

TEST_CASE("a formatter may replace helper and tree of the investments that are read") {
    Record numbers;
    std::optional<ParseDictionary> tree = parsed(
        "<INVSTMTRS><DTASOF>20240131<INVPOSLIST><POSSTOCK><INVPOS><UNITS>5<UNITPRICE>1,000.5</INVPOS>"
        "</POSSTOCK></INVPOSLIST></INVSTMTRS>");
    auto helper = std::make_shared<TvOFXHelper>();
    helper->setAmountNumberFormatter(std::make_shared<ReplacingNumbers>(numbers, [&] {
        helper.reset();
        tree.reset();
    }));
    const auto statements = investmentStatements(tree, helper);
    REQUIRE(statements.size() == 1);
    REQUIRE(statements[0].positions().size() == 1);
    CHECK(shown(statements[0].positions()[0].unitPrice()) == "1000.5");
    checkOutlivedItsUse(numbers);
}

TEST_CASE("a formatter may replace the options that a file is opened with") {
    Record numbers;
    Record dates;
    OpenOptions options;
    const auto replace = [&] { options = OpenOptions(); };
    options.numberFormatter = std::make_shared<ReplacingNumbers>(numbers, replace);
    options.dateFormatter = std::make_shared<ReplacingDates>(dates, replace);
    const OpenedFile file =
        openData(Data::copy("OFXHEADER:100\nVERSION:102\n\n<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS>" +
                            std::string(kTwoPayments) + "</STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>"),
                 options);
    REQUIRE(file.statements().size() == 1);
    checkStatement(*file.statements()[0]);
    CHECK(options.numberFormatter == nullptr);
    CHECK_FALSE(numbers.wasDestroyedWhileAsked);
    CHECK_FALSE(dates.wasDestroyedWhileAsked);
}

TEST_CASE("what takes a text in pieces may replace the tree that is written") {
    ParseDictionary tree{{"A", "1"}, {"B", "2"}};
    std::string text;
    CHECK(writeIndentedOFXText(tree, [&](std::string_view piece) {
        tree = ParseDictionary();
        text.append(piece);
        return true;
    }));
    CHECK(text == "<A>1</A>\n<B>2</B>\n");
}
