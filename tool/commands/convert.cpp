// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "bookkeeping/account_map.h"
#include "bookkeeping/book_format.h"
#include "bookkeeping/book_maker.h"
#include "bookkeeping/drafts.h"
#include "bookkeeping/known_journal.h"
#include "console/messages.h"
#include "history/history.h"
#include "input/run.h"

namespace tool {
namespace {

/// The last day that a file says anything of.
std::optional<brackwell::Date> lastDateOf(const brackwell::OpenedFile& file) {
    std::optional<brackwell::Date> last;
    for (const auto& statement : file.statements())
        for (const auto date : {statement->ledgerBalanceDateTime(), statement->transactionEndDateTime()})
            last = std::max(last, date);
    for (const brackwell::InvestmentStatement& statement : file.investmentStatements())
        for (const auto date : {statement.asOf(), statement.end()}) last = std::max(last, date);
    return last;
}

/// What the files say in the order of time, whatever their order on the command line is. Files of one day are
/// in the order of their bytes.
bool readInOrderOfTime(Run& run, History& history) {
    std::vector<std::pair<std::optional<brackwell::Date>, InputFile>> files;
    const bool allRead = forEachFile(
        run, [&files](const InputFile& input) { files.emplace_back(lastDateOf(input.file), input); });
    std::ranges::stable_sort(files, [](const auto& a, const auto& b) {
        if (a.first != b.first) return a.first < b.first;
        return a.second.file.bytes().bytes() < b.second.file.bytes().bytes();
    });
    for (const auto& [date, input] : files) history.add(input, run.options.filter);
    return allRead;
}

void sayNotes(Run& run, const BookNotes& notes) {
    run.findings += notes.size();
    if (run.options.isQuiet) return;
    for (const BookNote& note : notes) say(note.file.empty() ? "convert" : note.file, note.text);
}

bool runConvert(Run& run) {
    const ConvertRequest& request = run.options.convert;
    AccountMap map;
    KnownJournal journal;
    std::string error;
    if (request.accountMap && !map.read(*request.accountMap, request.format, error)) {
        say(*request.accountMap, error);
        return false;
    }
    for (const std::string& path : request.journals)
        if (!journal.read(path, error)) {
            say(path, error);
            return false;
        }
    History history;
    const bool allRead = readInOrderOfTime(run, history);
    history.finish();
    BookNotes notes;
    const BookSettings settings{request.format, request.hasOpenings, request.hasAssertions};
    Drafts drafts(history, map);
    const Book book = makeBook(drafts, journal, settings, notes);
    sayNotes(run, notes);
    writeBook(run.output, book, request.format);
    return allRead;
}

// ---------------------------------------------------------------------------------------------
// Options

const std::map<std::string, BookFormat>& bookFormats() {
    static const std::map<std::string, BookFormat> kFormats{{"hledger", BookFormat::hledger},
                                                            {"ledger", BookFormat::ledger},
                                                            {"beancount", BookFormat::beancount}};
    return kFormats;
}

void declareConvertOptions(CLI::App& command, Options& options) {
    ConvertRequest& request = options.convert;
    command
        .add_option_function<std::string>(
            "--to", [&request](const std::string& name) { request.format = bookFormats().at(name); },
            "The format of the journal, hledger unless given: hledger, ledger or beancount")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(bookFormats()).description(""));
    command
        .add_option("--accounts", request.accountMap, "The names of accounts, payees and commodities (TOML)")
        ->type_name("FILE");
    command.add_option("--unless", request.journals, "Leave out what stands in this journal already")
        ->type_name("FILE")
        ->allow_extra_args(false);
    command.add_flag_callback(
        "--no-opening-balances", [&request] { request.hasOpenings = false; },
        "No entries for what accounts began with");
    command.add_flag_callback(
        "--no-assertions", [&request] { request.hasAssertions = false; }, "Balances as comments only");
}

bool areOneFile(const std::string& a, const std::string& b) {
    std::error_code unknown;
    return std::filesystem::equivalent(a, b, unknown);
}

/// What is left out because a journal has it would be nowhere when the output took the journal's place.
void checkConvertTargets(const Options& options) {
    if (!options.outputFile) return;
    const ConvertRequest& request = options.convert;
    for (const std::string& journal : request.journals)
        if (areOneFile(journal, *options.outputFile))
            throw CLI::ValidationError(
                "--output", *options.outputFile + " is also a journal of --unless; append to it with >>");
    if (request.accountMap && areOneFile(*request.accountMap, *options.outputFile))
        throw CLI::ValidationError("--output", *options.outputFile + " is also the file of --accounts");
}

constexpr const char* kConvertHelp =
    "A journal for plain-text accounting, in the order of days. Each transaction has a tag that tells it "
    "from\n"
    "all others. A later conversion with --unless and the journal leaves out what is in it, however its\n"
    "entries were changed and in whatever file they were downloaded again; journals that it includes are\n"
    "read, too. Without --unless, what several files have counts once.\n\n"
    "An account begins with what its balances ask for, unless the journal has it already. Balances are\n"
    "asserted at the end of their day, for Beancount on the next. One that transactions contradict, or that\n"
    "is of a day which the files do not cover, is a comment, and named on standard error. Two transactions\n"
    "become one transfer when one names the account of the other, both are of one day and of one amount, "
    "and\n"
    "no other could be meant. Securities are booked with what was paid for them; which lots are sold,\n"
    "documents do not say.\n\n"
    "The file of --accounts has tables like these; each line is optional:\n\n"
    "  [accounts]                       # numbers of accounts, or their ends; \"bank/number\" is exact\n"
    "  \"12345678\" = \"Assets:Checking\"\n"
    "  [payees]                         # the first counts of which all words occur in payee or memo\n"
    "  \"corner bakery\" = \"Expenses:Food\"\n"
    "  [names]                          # also bank, card, credit-line, investment, opening, transfers,\n"
    "  unknown-expense = \"Expenses:To-Do\"  # unknown-income, fees, commissions, taxes, interest,\n"
    "                                   # interest-paid, dividends, gains, other-income, securities\n"
    "  [commodities]                    # currencies, tickers, or identifiers of securities\n"
    "  \"900000101\" = \"ALDR\"\n\n"
    "Examples:\n"
    "  brackwell convert --to hledger Downloads --accounts map.toml > 2024.journal\n"
    "  brackwell convert --to hledger Downloads --accounts map.toml --unless 2024.journal >> 2024.journal\n"
    "  brackwell convert --to beancount july.ofx --unless main.beancount --output july.beancount\n";

}  // namespace

constexpr Command commands::kConvert({
    .name = "convert",
    .summary = "A journal for plain-text accounting: hledger, Ledger, Beancount",
    .traits = kSeveralFiles | kReading | kOutput,
    .help = kConvertHelp,
    .run = runConvert,
    .declareOptions = declareConvertOptions,
    .check = checkConvertTargets,
});

}  // namespace tool
