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
