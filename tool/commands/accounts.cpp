// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/account_names.h"
#include "history/history.h"
#include "history/period.h"
#include "input/run.h"
#include "investments/facts.h"
#include "text/shown_values.h"
#include "text/value_text.h"
#include "text/visible_text.h"
#include "text_page/account_list.h"
#include "text_page/table.h"
#include "text_page/text_page.h"

namespace tool {
namespace {

using brackwell::TvOFXAccountStatement;

/// What the statements say they cover; where they do not say it, what their transactions do.
Period periodOf(const AccountHistory& account) {
    Period period;
    for (const HistoryStatement& held : account.statements) {
        period.include(held.statement->transactionStartDateTime());
        period.include(held.statement->transactionEndDateTime());
    }
    if (!period.first)
        for (const HistoryEntry& entry : account.entries) period.include(entry.transaction->datePosted());
    return period;
}

/// The statement with the latest balance; null when none has one. Of those without a date, the last.
const TvOFXAccountStatement* latestBalance(const AccountHistory& account) {
    const TvOFXAccountStatement* latest = nullptr;
    for (const HistoryStatement& held : account.statements) {
        const TvOFXAccountStatement& statement = *held.statement;
        if (!statement.ledgerBalanceAmount()) continue;
        if (latest == nullptr || statement.ledgerBalanceDateTime() >= latest->ledgerBalanceDateTime())
            latest = &statement;
    }
    return latest;
}

/// "Checking" where the heading of the column says that it is an account.
std::string shortKindOf(const AccountHistory& account) {
    constexpr std::string_view end = " account";
    std::string_view kind = kindOf(account);
    if (kind.ends_with(end)) kind.remove_suffix(end.size());
    return std::string(kind);
}

Table::Row rowOf(const AccountHistory& account, bool isFull) {
    const Period period = periodOf(account);
    const TvOFXAccountStatement* balance = latestBalance(account);
    return {
        visibleText(account.institution()),
        shortKindOf(account),
        visibleText(shownNumber(account.number(), isFull)),
        balance != nullptr ? shownAmount(*balance->ledgerBalanceAmount(), account.currency) : "",
        visibleText(account.currency),
        balance != nullptr ? dayText(balance->ledgerBalanceDateTime()) : "",
        std::to_string(account.entries.size() - account.repeats),
        dayText(period.first),
        dayText(period.last),
    };
}

/// What the statements say they cover; where they do not say it, what their transactions do.
Period periodOf(const InvestmentAccount& account) {
    Period period;
    for (const InvestmentSource& source : account.statements) {
        period.include(source.statement.start());
        period.include(source.statement.end());
    }
    if (!period.first)
        for (const InvestmentEntry& entry : account.entries) period.include(dateOf(entry.transaction));
    return period;
}

/// The balance is what the holdings are worth, and the cash.
Table::Row rowOf(const InvestmentAccount& account, bool isFull) {
    const Period period = periodOf(account);
    const auto worth = totalWorthOf(account.latest());
    return {
        visibleText(account.institution()),
        "Investment",
        visibleText(shownNumber(account.number, isFull)),
        worth ? shownAmount(worth->shown(), account.currency) : "",
        visibleText(account.currency),
        worth ? dayText(account.latest().asOf()) : "",
        std::to_string(account.entries.size() - account.repeats),
        dayText(period.first),
        dayText(period.last),
    };
}

void showWhyNoBalance(TextPage& page, const InvestmentAccount& account, bool isFull) {
    const std::string why = whyNoWorth(account.latest());
    if (!why.empty())
        page.paragraph("No balance of " + shownNumber(account.number, isFull) + ": " + why + ".");
}

void showRows(TextPage& page, const std::vector<Table::Row>& rows) {
    Table table({{"Institution", Column::Kind::text, 7, 6},
                 {"Account", Column::Kind::text, 6, 7},
                 {"Number", Column::Kind::text, 8, 9},
                 {"Balance", Column::Kind::amount, 0, 9},
                 {"", Column::Kind::text, 3, 5},  // the balance's currency
                 {"On", Column::Kind::text, 10, 2},
                 {"Count", Column::Kind::text, 5, 1},
                 {"From", Column::Kind::text, 10, 3},
                 {"To", Column::Kind::text, 10, 3}});
    for (const Table::Row& row : rows) table.measure(row);
    table.fit(page.width());
    table.writeTitles(page);
    for (const Table::Row& row : rows) table.writeRow(page, row);
}

bool runAccounts(Run& run) {
    History history;
    const bool allRead = readHistory(run, history);
    std::vector<Table::Row> rows;
    std::size_t nameless = 0;
    const bool isFull = run.options.showsFullNumbers;
    for (const AccountHistory& account : history.accounts()) {
        if (account.bankAccount || account.card)
            rows.push_back(rowOf(account, isFull));
        else
            ++nameless;
    }
    for (const InvestmentAccount& account : history.investments().accounts()) {
        if (!account.number.empty())
            rows.push_back(rowOf(account, isFull));
        else
            ++nameless;
    }
    TextPage page(run.output);
    if (!rows.empty()) showRows(page, rows);
    for (const InvestmentAccount& account : history.investments().accounts())
        if (!account.number.empty()) showWhyNoBalance(page, account, isFull);
    if (nameless > 0)
        page.paragraph("Statements that name no account: " + std::to_string(nameless));
    else if (rows.empty() && history.listed().empty() && allRead)
        page.paragraph("The documents have neither statements nor lists of accounts.");
    if (!history.listed().empty()) showListedAccounts(page, history.listed(), isFull);
    return allRead;
}

constexpr const char* kAccountsHelp =
    "An account that occurs in several files is one row: with its latest balance, the number of its\n"
    "transactions (each counted once) and the days that its statements cover. Accounts are the same when\n"
    "number and currency are, and nothing else that both have differs. The balance of an investment\n"
    "account is the value of its positions plus the available cash, without margin: what was borrowed has\n"
    "to be subtracted. When a position has no value there is no balance, and a line says so. The accounts\n"
    "of account lists follow in a table of their own.\n\n"
    "Examples:\n"
    "  brackwell accounts *.ofx\n"
    "  brackwell accounts --full july.ofx august.ofx\n";

}  // namespace

constexpr Command commands::kAccounts({
    .name = "accounts",
    .summary = "The accounts of all files, one row for each",
    .traits = kSeveralFiles | kReading | kNumbers | kOutput | kPage,
    .help = kAccountsHelp,
    .run = runAccounts,
});

}  // namespace tool
