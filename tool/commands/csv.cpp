// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "csv/investment_table.h"
#include "csv/row.h"
#include "input/run.h"
#include "money/foreign_amount.h"

namespace tool {
namespace {

using brackwell::OptionalText;

constexpr std::string_view kHeader =
    "file,accountClass,bankID,branchID,accountID,accountType,defaultCurrency,transactionType,datePosted,"
    "dateUserInit,dateFundsAvailable,amount,fiTransactionID,checkOrReferenceNumber,referenceNumber,payeeName,"
    "memo";
constexpr std::string_view kCurrencyHeader = ",transactionCurrency,currencyRate,isConverted";

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

/// As a table of investments has it.
void addCurrency(Row& row, const std::optional<brackwell::TransactionCurrency>& currency) {
    if (!currency) return row.addMade(",,,");
    row.add(OptionalText(currency->symbol));
    row.add(currency->rate);
    row.add(OptionalText(currency->isConverted ? "Y" : "N"));
}

/// Returns how many of the rows have amounts in another currency, which the table does not say.
std::size_t writeStatement(Run& run, const std::string& file,
                           const brackwell::TvOFXAccountStatement& statement) {
    Row common;
    addStatement(common, file, statement);
    Row row;
    std::size_t foreign = 0;
    for (const auto* transaction : run.options.filter.transactionsOf(statement)) {
        if (!run.output.isGood()) break;
        row.clear();
        row.addMade(common.text());
        addTransaction(row, *transaction);
        const auto currency = currencyOf(*transaction);
        if (run.options.hasCurrencies)
            addCurrency(row, currency);
        else if (transaction->amount() && isForeign(currency, statement.defaultCurrency()))
            ++foreign;
        row.write(run.output);
    }
    return foreign;
}

void sayForeign(Run& run, const InputFile& input, std::size_t foreign) {
    if (foreign == 0) return;
    sayNotInTable(run, input,
                  std::to_string(foreign) + (foreign == 1 ? " amount is" : " amounts are") +
                      " in a currency other than the account's; add --currencies to see which.");
}

bool runCsv(Run& run) {
    if (run.options.table != TableKind::bank) return writeInvestmentTable(run);
    run.output.write(kHeader);
    if (run.options.hasCurrencies) run.output.write(kCurrencyHeader);
    run.output.write("\r\n");
    return forEachFile(run, [&run](const InputFile& input) {
        std::size_t foreign = 0;
        for (const auto& statement : input.file.statements())
            if (run.options.filter.takes(*statement)) foreign += writeStatement(run, input.name, *statement);
        sayForeign(run, input, foreign);
        sayWhatIsLeftOut(run, input);
    });
}

const std::map<std::string, TableKind>& tableKinds() {
    static const std::map<std::string, TableKind> kinds{{"bank", TableKind::bank},
                                                        {"investments", TableKind::investments},
                                                        {"positions", TableKind::positions},
                                                        {"securities", TableKind::securities}};
    return kinds;
}

void declareCsvOptions(CLI::App& command, Options& options) {
    command
        .add_option_function<std::string>(
            "--kind", [&options](const std::string& kind) { options.table = tableKinds().at(kind); },
            "The rows: bank, investments, positions or securities")
        ->type_name("KIND")
        ->check(CLI::IsMember(tableKinds()).description(""));
    command.add_flag("--currencies", options.hasCurrencies,
                     "Add columns for amounts in another currency to a table of bank transactions");
}

constexpr const char* kCsvHelp =
    "--kind bank writes the transactions of bank and card statements; investments those of investment\n"
    "statements, including the bank transactions in them; positions the holdings; and securities the\n"
    "descriptions of securities. Names and tickers come from the securities of the same document, or\n"
    "else of all files. The default table is followed by a message on standard error that counts what\n"
    "the files have of other kinds, and amounts in a currency other than the account's unless\n"
    "--currencies is given.\n"
    "A field that a spreadsheet might take for a formula begins with an apostrophe.\n\n"
    "Examples:\n"
    "  brackwell csv *.ofx --output year.csv\n"
    "  brackwell csv --account 5678 --account 2290 --since 2024-07-01 *.ofx\n"
    "  brackwell csv --kind positions *.ofx --output holdings.csv\n"
    "  brackwell csv --decimal-separator , --grouping-separator . juli.ofx\n";

}  // namespace

constexpr Command commands::kCsv({
    .name = "csv",
    .summary = "One row per transaction, with a header row",
    .traits = kSeveralFiles | kReading | kFilter | kOutput,
    .help = kCsvHelp,
    .run = runCsv,
    .declareOptions = declareCsvOptions,
});

}  // namespace tool
