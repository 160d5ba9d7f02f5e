// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <functional>

#include "support/documents.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

bool isSlice(std::string_view text, std::string_view source) {
    const std::less_equal<> isNotBehind;
    return isNotBehind(source.data(), text.data()) &&
           isNotBehind(text.data() + text.size(), source.data() + source.size());
}

struct Field {
    const char* name;
    OptionalText (TvOFXStatementTransaction::*get)() const noexcept;
};

constexpr Field kFields[] = {
    {"transactionType", &TvOFXStatementTransaction::transactionType},
    {"fiTransactionID", &TvOFXStatementTransaction::fiTransactionID},
    {"payeeName", &TvOFXStatementTransaction::payeeName},
    {"memo", &TvOFXStatementTransaction::memo},
    {"originalDatePostedString", &TvOFXStatementTransaction::originalDatePostedString},
    {"originalDataString", &TvOFXStatementTransaction::originalDataString},
};

}  // namespace

// The document has no entities; a text that held one is kept by itself.
TEST_CASE("the texts of an import are slices of the bytes that were imported") {
    const Data document = exampleData("checking_april.ofx");
    const auto message = TovanaOFXController::importOFXFileFromData(document);
    REQUIRE(message);
    const auto account = message->bankAccountsFound().at(0);
    CHECK(isSlice(account->accountID().value(), document.bytes()));
    for (const Field& field : kFields) {
        INFO(std::string(field.name));
        std::size_t count = 0;
        for (const auto& transaction : message->statementsForBankAccount(account)->statementTransactions()) {
            const OptionalText text = ((*transaction).*field.get)();
            if (!text) continue;
            ++count;
            CHECK(isSlice(*text, document.bytes()));
        }
        CHECK(count > 0);
    }
}

TEST_CASE("what was read from a caller's bytes is a copy of them, made once") {
    const std::string bytes(exampleData("checking.ofx").bytes());
    const auto message = TovanaOFXController::importOFXFileFromData(Data::view(bytes));
    REQUIRE(message);
    const auto account = message->bankAccountsFound().at(0);
    const auto& transactions = message->statementsForBankAccount(account)->statementTransactions();
    const std::string_view first = transactions.front()->originalDataString().value();
    CHECK_FALSE(isSlice(first, bytes));
    const char* const begin = first.data() - (bytes.find(first));
    const std::string_view copy(begin, bytes.size());
    CHECK(copy == bytes);
    CHECK(isSlice(transactions.back()->fiTransactionID().value(), copy));
}

TEST_CASE("a detached statement has its text once, even where no transaction is closed") {
    // The source text of every transaction reaches to the end, so that all of them together have gigabytes.
    constexpr std::size_t count = 100'000;
    const std::string piece = "<STMTTRN><NAME>x</STMTTRN >";
    std::string document = "OFXHEADER:100\n\n<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS><BANKTRANLIST>";
    for (std::size_t i = 0; i < count; ++i) document += piece;
    std::shared_ptr<TvOFXAccountStatement> copy;
    std::string last;
    {
        const OpenedFile file = openData(Data::view(document), OpenOptions::asIs());
        REQUIRE(file.statements().size() == 1);
        copy = detached(file.statements()[0]);
        last = file.statements()[0]->statementTransactions().back()->description();
    }
    const auto& transactions = copy->statementTransactions();
    REQUIRE(transactions.size() == count);
    CHECK(transactions.back()->description() == last);
    const std::string_view all = transactions.front()->originalDataString().value();
    CHECK(all.size() == count * piece.size() - std::string_view("<STMTTRN>").size());
    for (const auto& transaction : transactions) {
        REQUIRE(isSlice(transaction->originalDataString().value(), all));
        REQUIRE(isSlice(transaction->payeeName().value(), all));
    }
}
