// SPDX-License-Identifier: Apache-2.0
#include "csv/investments.h"
#include "csv/row.h"
#include "run.h"

namespace tool {
namespace {

using brackwell::OptionalText;

constexpr std::string_view kHeader =
    "file,accountClass,bankID,branchID,accountID,accountType,defaultCurrency,transactionType,datePosted,"
    "dateUserInit,dateFundsAvailable,amount,fiTransactionID,checkOrReferenceNumber,referenceNumber,payeeName,"
    "memo\r\n";

/// The fields that are the same in all rows of a statement.
void addStatement(Row& row, const std::string& file, const brackwell::TvOFXAccountStatement& statement) {
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
        row.addMade(",,");
        row.add(account ? account->accountID() : std::nullopt);
        row.addMade(",");
    }
    row.add(statement.defaultCurrency());
}

void addTransaction(Row& row, const brackwell::TvOFXStatementTransaction& transaction) {
    row.add(transaction.transactionType());
    row.add(transaction.datePosted());
    row.add(transaction.dateUserInit());
    row.add(transaction.dateFundsAvailable());
    row.add(transaction.amount());
    row.add(transaction.fiTransactionID());
    row.add(transaction.checkOrReferenceNumber());
    row.add(transaction.referenceNumber());
    row.add(transaction.payeeName());
    row.add(transaction.memo());
}

void writeStatement(Run& run, const std::string& file, const brackwell::TvOFXAccountStatement& statement) {
    Row common;
    addStatement(common, file, statement);
    Row row;
    for (const auto* transaction : run.options.filter.transactionsOf(statement)) {
        if (!run.output.isGood()) return;
        row.clear();
        row.addMade(common.text());
        addTransaction(row, *transaction);
        row.write(run.output);
    }
}

}  // namespace

bool runCsv(Run& run) {
    if (run.options.table != TableKind::bank) return writeInvestmentTable(run);
    run.output.write(kHeader);
    return forEachFile(run, [&run](const Document& document) {
        for (const auto& statement : document.file.statements())
            if (run.options.filter.takes(*statement)) writeStatement(run, document.name, *statement);
        sayWhatIsLeftOut(run, document);
    });
}

}  // namespace tool
