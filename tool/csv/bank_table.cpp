// SPDX-License-Identifier: Apache-2.0
#include "csv/bank_table.h"

#include <optional>

#include "command_line/options.h"
#include "console/output.h"
#include "csv/row.h"
#include "money/foreign_amount.h"
#include "text/transaction_text.h"

namespace tool {
namespace {

using brackwell::OptionalText;

constexpr std::string_view kColumns[] = {
    "file",
    "accountClass",
    "bankID",
    "branchID",
    "accountID",
    "accountType",
    "defaultCurrency",
    "transactionType",
    "datePosted",
    "dateUserInit",
    "dateFundsAvailable",
    "amount",
    "fiTransactionID",
    "checkOrReferenceNumber",
    "referenceNumber",
    "payeeName",
    "memo",
    "transactionCurrency",
    "currencyRate",
    "isConverted",
};
constexpr std::size_t kColumnsOfCurrencies = 3;

/// As a table of investments has it.
void addCurrency(Row& row, const std::optional<brackwell::TransactionCurrency>& currency) {
    if (!currency) return row.addEmpty(kColumnsOfCurrencies);
    row.add(OptionalText(currency->symbol));
    row.add(currency->rate);
    row.add(OptionalText(currency->isConverted ? "Y" : "N"));
}

void addTransaction(Row& row, const brackwell::TvOFXStatementTransaction& transaction, bool keepsDecimals) {
    row.add(transaction.transactionType());
    row.add(transaction.datePosted());
    row.add(transaction.dateUserInit());
    row.add(transaction.dateFundsAvailable());
    row.add(transaction.amount(), keepsDecimals ? writtenAmountOf(transaction) : std::nullopt);
    row.add(transaction.fiTransactionID());
    row.add(transaction.checkOrReferenceNumber());
    row.add(transaction.referenceNumber());
    row.add(transaction.payeeName());
    row.add(transaction.memo());
}

}  // namespace

std::span<const std::string_view> bankColumns() noexcept { return kColumns; }

void addStatementFields(Row& row, const std::string& file,
                        const brackwell::TvOFXAccountStatement& statement) {
    using namespace brackwell;
    row.add(OptionalText(file));
    const auto* bank = dynamic_cast<const TvOFXStatementResponse*>(&statement);
    const auto* card = dynamic_cast<const TvOFXCCStatementResponse*>(&statement);
    if (bank != nullptr && bank->bankAccountFrom()) {
        const TvOFXBankAccount& account = *bank->bankAccountFrom();
        row.add(account.className());
        row.add(account.bankID());
        row.add(account.branchID());
        row.add(account.accountID());
        row.add(TvOFXBankAccount::accountTypeStringFromAccountType(account.accountType()));
    } else {
        const auto account = card != nullptr ? card->creditCardAccountFrom() : nullptr;
        row.add(account ? OptionalText(account->className()) : std::nullopt);
        row.addEmpty(2);
        row.add(account ? account->accountID() : std::nullopt);
        row.addEmpty(1);
    }
    row.add(statement.defaultCurrency());
}

void addTransactionFields(Row& row, const brackwell::TvOFXStatementTransaction& transaction) {
    addTransaction(row, transaction, false);
    addCurrency(row, currencyOf(transaction));
}

BankTable::BankTable(const Options& options, Output& output)
    : output_(output),
      hasCurrencies_(options.hasCurrencies || !options.csv.columns.empty()),
      layout_(layoutOf(options.csv, kColumns)) {
    const std::span<const std::string_view> all = kColumns;
    Row header(layout_);
    for (const std::string_view name : hasCurrencies_ ? all : all.first(all.size() - kColumnsOfCurrencies))
        header.add(OptionalText(name));
    header.write(output_);
}

std::size_t BankTable::write(const std::string& file, const brackwell::TvOFXAccountStatement& statement,
                             const Filter::Transactions& transactions) const {
    Row common(layout_);
    addStatementFields(common, file, statement);
    Row row(layout_);
    std::size_t foreign = 0;
    for (const auto* transaction : transactions) {
        if (!output_.isGood()) break;
        row.beginWith(common);
        addTransaction(row, *transaction, layout_.format.keepsDecimals);
        const auto currency = currencyOf(*transaction);
        if (hasCurrencies_)
            addCurrency(row, currency);
        else if (transaction->amount() && isForeign(currency, statement.defaultCurrency()))
            ++foreign;
        row.write(output_);
    }
    return foreign;
}

}  // namespace tool
