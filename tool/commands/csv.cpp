// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "csv/bank_table.h"
#include "csv/investment_table.h"
#include "history/history.h"
#include "input/run.h"
#include "text/counted.h"

namespace tool {
namespace {

/// Amounts of a file whose currency the table does not say.
void sayForeign(Run& run, const std::string& file, std::size_t foreign) {
    if (foreign == 0) return;
    sayNotInTable(run, file,
                  counted(foreign, "amount is", "amounts are") +
                      " in a currency other than the account's; add --currencies to see which.");
}

/// By account, since what an account has twice is known when all files are read.
bool writeUnique(Run& run, const BankTable& table) {
    History history;
    const bool allRead =
        readHistory(run, history, [&run](const InputFile& input) { sayWhatIsLeftOut(run, input); });
    std::map<std::string, std::size_t> foreign;
    for (const AccountHistory& account : history.accounts()) {
        const auto repeats = account.repeatedTransactions();
        for (const HistoryStatement& each : account.statements) {
            Filter::Transactions transactions = run.options.filter.transactionsOf(*each.statement);
            std::erase_if(transactions, [&repeats](const auto* transaction) {
                return std::ranges::binary_search(repeats, transaction);
            });
            foreign[each.file] += table.write(each.file, *each.statement, transactions);
        }
    }
    for (const auto& [file, count] : foreign) sayForeign(run, file, count);
    return allRead;
}

bool runCsv(Run& run) {
    if (run.options.table != TableKind::bank) return writeInvestmentTable(run);
    const BankTable table(run.options, run.output);
    if (run.options.csv.isUnique) return writeUnique(run, table);
    return forEachFile(run, [&](const InputFile& input) {
        std::size_t foreign = 0;
        for (const auto& statement : input.file.statements())
            if (run.options.filter.takes(*statement))
                foreign += table.write(input.name, *statement, run.options.filter.transactionsOf(*statement));
        sayForeign(run, input.name, foreign);
        sayWhatIsLeftOut(run, input);
    });
}

// ---------------------------------------------------------------------------------------------
// Options

const std::map<std::string, TableKind>& tableKinds() {
    static const std::map<std::string, TableKind> kKinds{{"bank", TableKind::bank},
                                                         {"investments", TableKind::investments},
                                                         {"positions", TableKind::positions},
                                                         {"securities", TableKind::securities}};
    return kKinds;
}

/// What stands between commas.
std::vector<std::string> partsOf(const std::string& text) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == ',')
            parts.emplace_back();
        else if (c != ' ')  // no column has one in its name
            parts.back() += c;
    }
    return parts;
}

/// What is wrong with a text, "" for nothing.
std::string checkDelimiter(const std::string& text) {
    const bool isOne = text.size() == 1 && text[0] > ' ' && text[0] < 0x7F && text[0] != '"';
    return isOne || text == "tab" ? "" : "neither a single character nor tab: \"" + text + "\"";
}

void checkTable(const Options& options) {
    const bool isBank = options.table == TableKind::bank;
    if (options.csv.isUnique && !isBank)
        throw CLI::ValidationError("--unique", "is for tables of bank transactions only");
    std::vector<std::string_view> known(bankColumns().begin(), bankColumns().end());
    if (!isBank) known = investmentColumns(options.table);
    const std::optional<std::string> unknown = unknownColumn(options.csv.columns, known);
    if (!unknown) return;
    std::string problem = "no column of this table is called \"" + *unknown + "\"; there are ";
    for (const std::string_view name : known) problem.append(name == known.front() ? "" : ", ").append(name);
    throw CLI::ValidationError("--columns", problem);
}

void declareFormat(CLI::App& command, CsvFormat& format) {
    command
        .add_option_function<std::string>(
            "--columns", [&format](const std::string& names) { format.columns = partsOf(names); },
            "Only these columns, in this order, with commas between them")
        ->type_name("NAMES");
    command
        .add_option_function<std::string>(
            "--delimiter",
            [&format](const std::string& text) { format.delimiter = text == "tab" ? '\t' : text[0]; },
            "Put this character between fields, or tab for a tab; else a comma")
        ->type_name("CHAR")
        ->check(CLI::Validator(checkDelimiter, ""));
    command
        .add_option_function<std::string>(
            "--decimal-mark", [&format](const std::string& mark) { format.decimalMark = mark[0]; },
            "Write amounts with a point or a comma before the decimals")
        ->type_name("CHAR")
        ->check(CLI::Validator(CLI::IsMember({".", ","})).description(""));
    command.add_flag("--decimals", format.keepsDecimals,
                     "Write amounts with the decimals of the document (-6.40)");
    command.add_flag("--days", format.hasDays, "Write dates without a time of day as days (2024-03-01)");
    command.add_flag("--raw", format.isRaw, "No apostrophe before what a spreadsheet might run");
    command.add_flag("--unique", format.isUnique, "Leave out what an earlier statement had already");
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
    declareFormat(command, options.csv);
}

constexpr const char* kCsvHelp =
    "--kind bank writes the transactions of bank and card statements; investments those of investment\n"
    "statements, including the bank transactions in them; positions the holdings; and securities the\n"
    "descriptions of securities. Names and tickers come from the securities of the same document, or\n"
    "else of all files. The default table is followed by a message on standard error that counts what\n"
    "the files have of other kinds, and amounts in a currency other than the account's unless\n"
    "--currencies is given.\n"
    "A field that a spreadsheet might take for a formula begins with an apostrophe, unless --raw is given.\n"
    "--decimal-separator and --grouping-separator say how amounts are read; --decimal-mark how they are\n"
    "written. Without --decimals an amount has no zeros at its end. With --unique the rows are grouped by\n"
    "account, and what counts as the same is what \"brackwell duplicates\" says.\n\n"
    "Columns of the tables, for --columns; those of currencies are in a table of bank transactions only\n"
    "with --currencies or when they are named:\n"
    "  bank: file, accountClass, bankID, branchID, accountID, accountType, defaultCurrency,\n"
    "  transactionType, datePosted, dateUserInit, dateFundsAvailable, amount, fiTransactionID,\n"
    "  checkOrReferenceNumber, referenceNumber, payeeName, memo, transactionCurrency, currencyRate,\n"
    "  isConverted.\n"
    "  investments: file, brokerID, accountID, currency, kind, fiTransactionID, serverTransactionID,\n"
    "  tradeDate, settleDate, securityID, securityIDType, securityName, ticker, units, unitPrice,\n"
    "  total, commission, fees, taxes, load, markup, markdown, withholding, stateWithholding, penalty,\n"
    "  accruedInterest, gain, averageCostBasis, transactionCurrency, currencyRate, isConverted,\n"
    "  tradeType, incomeType, optionAction, transferAction, positionType, sellReason,\n"
    "  securitySubAccount, fundSubAccount, fromSubAccount, toSubAccount, isTaxExempt,\n"
    "  sharesPerContract, secured, relatedFITID, relationType, reversalFITID, reversalFees, oldUnits,\n"
    "  newUnits, numerator, denominator, cashForFractions, purchaseDate, transferBrokerID,\n"
    "  transferAccountID, source401k, loanID, loanPrincipal, loanInterest, payrollDate,\n"
    "  isPriorYearContribution, transactionType, payeeName, checkOrReferenceNumber, referenceNumber,\n"
    "  memo.\n"
    "  positions: file, brokerID, accountID, currency, asOf, kind, securityID, securityIDType,\n"
    "  securityName, ticker, subAccount, positionType, units, unitPrice, marketValue, priceDate,\n"
    "  averageCostBasis, positionCurrency, currencyRate, source401k, secured, unitsStreet, unitsUser,\n"
    "  reinvestsDividends, reinvestsGains, memo.\n"
    "  securities: file, kind, id, idType, name, ticker, institutionID, rating, unitPrice, priceDate,\n"
    "  priceCurrency, currencyRate, assetClass, institutionAssetClass, typeDescription, stockType,\n"
    "  fundType, yield, yieldDate, optionType, strikePrice, expiryDate, sharesPerContract,\n"
    "  underlyingID, underlyingIDType, parValue, debtType, debtClass, couponRate, couponDate,\n"
    "  couponFrequency, callPrice, yieldToCall, callDate, callType, yieldToMaturity, maturityDate,\n"
    "  memo.\n"
    "\n"
    "Examples:\n"
    "  brackwell csv *.ofx --output year.csv\n"
    "  brackwell csv --account 5678 --account 2290 --since 2024-07-01 *.ofx\n"
    "  brackwell csv --kind positions *.ofx --output holdings.csv\n"
    "  brackwell csv --columns datePosted,payeeName,amount --days --decimals july.ofx\n"
    "  brackwell csv --delimiter \";\" --decimal-mark , --unique Downloads --output year.csv\n"
    "  brackwell csv --decimal-separator , --grouping-separator . juli.ofx\n";

}  // namespace

constexpr Command commands::kCsv({
    .name = "csv",
    .summary = "One row per transaction, with a header row",
    .traits = kSeveralFiles | kReading | kFilter | kOutput,
    .help = kCsvHelp,
    .run = runCsv,
    .declareOptions = declareCsvOptions,
    .check = checkTable,
});

}  // namespace tool
