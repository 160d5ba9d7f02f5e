// SPDX-License-Identifier: Apache-2.0
#include "json/statements.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <variant>

#include "filter/filter.h"
#include "json/accounts.h"
#include "json/fields.h"

namespace tool {
namespace {

void writePayee(JsonWriter& json, const brackwell::TvOFXPayee& payee) {
    json.beginObject();
    writeField(json, "name", payee.name());
    writeField(json, "address", std::string_view(payee.address()));
    writeField(json, "city", payee.city());
    writeField(json, "state", payee.state());
    writeField(json, "zipCode", payee.zipCode());
    writeField(json, "country", payee.country());
    writeField(json, "phoneNumber", payee.phoneNumber());
    json.endObject();
}

using Transaction = brackwell::TvOFXStatementTransaction;

/// The source text of a transaction, no further than to where the next one begins. It runs on when the close
/// tag is missing or odd, often to the end of the document; all of them in full would be far longer than
/// that.
std::string_view ownSourceText(std::string_view text) {
    constexpr std::string_view name = "STMTTRN";
    if (text.find(name) == text.npos) return text;
    for (std::size_t open = text.find('<'); open != text.npos;) {
        const std::size_t close = text.find('>', open);
        if (close == text.npos) break;
        if (brackwell::trimWhiteSpace(text.substr(open + 1, close - open - 1)) == name)
            return text.substr(0, open);
        open = text.find('<', close);
    }
    return text;
}

void writeValue(JsonWriter& json, std::string_view name, brackwell::OptionalText text) {
    if (text && name == "originalDataString") text = ownSourceText(*text);
    writeField(json, name, text);
}
void writeValue(JsonWriter& json, std::string_view name, const auto& dateOrAmount) {
    writeField(json, name, dateOrAmount);
}
void writeValue(JsonWriter& json, std::string_view name,
                const std::shared_ptr<brackwell::TvOFXPayee>& payee) {
    writeField(json, name, payee, writePayee);
}
void writeValue(JsonWriter& json, std::string_view name,
                const std::shared_ptr<brackwell::TvOFXBankAccount>& account) {
    writeField(json, name, account, writeBankAccount);
}
void writeValue(JsonWriter& json, std::string_view name,
                const std::shared_ptr<brackwell::TvOFXCreditCardAccount>& account) {
    writeField(json, name, account, writeCreditCardAccount);
}

/// The fields after the account.
void writeAccountStatement(JsonWriter& json, const brackwell::TvOFXAccountStatement& statement,
                           const Filter& filter) {
    writeField(json, "transactionStartDateTime", statement.transactionStartDateTime());
    writeField(json, "transactionEndDateTime", statement.transactionEndDateTime());
    writeList(json, "statementTransactions", filter.transactionsOf(statement), writeTransaction);
    writeField(json, "ledgerBalanceAmount", statement.ledgerBalanceAmount());
    writeField(json, "ledgerBalanceDateTime", statement.ledgerBalanceDateTime());
    writeField(json, "availableBalanceAmount", statement.availableBalanceAmount());
    writeField(json, "availableBalanceDateTime", statement.availableBalanceDateTime());
}

}  // namespace

void writeCurrency(JsonWriter& json, std::string_view name,
                   const std::optional<brackwell::TransactionCurrency>& currency) {
    if (!currency) return;
    json.field(name);
    json.beginObject();
    writeField(json, "symbol", brackwell::OptionalText(currency->symbol));
    writeField(json, "rate", currency->rate);
    writeField(json, "isConverted", currency->isConverted);
    json.endObject();
}

void writeTransaction(JsonWriter& json, const Transaction& transaction) {
    json.beginObject();
    for (const Transaction::Field& field : Transaction::fields())
        std::visit([&](const auto get) { writeValue(json, field.name, (transaction.*get)()); }, field.get);
    // The getters have a text only, which most documents do not have here.
    if (!transaction.currency() && !transaction.origCurrency())
        writeCurrency(json, "transactionCurrency", currencyOf(transaction));
    json.endObject();
}

void writeStatementFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice) {
    const auto& statement = static_cast<const brackwell::TvOFXStatementResponse&>(response);
    writeField(json, "defaultCurrency", statement.defaultCurrency());
    writeField(json, "bankAccountFrom", statement.bankAccountFrom(), writeBankAccount);
    writeAccountStatement(json, statement, choice.filter);
}

void writeCCStatementFields(JsonWriter& json, const brackwell::TvOFXResponse& response,
                            const Choice& choice) {
    const auto& statement = static_cast<const brackwell::TvOFXCCStatementResponse&>(response);
    writeField(json, "defaultCurrency", statement.defaultCurrency());
    writeField(json, "creditCardAccountFrom", statement.creditCardAccountFrom(), writeCreditCardAccount);
    writeAccountStatement(json, statement, choice.filter);
}

}  // namespace tool
