// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/account_names.h"
#include "history/history.h"
#include "input/run.h"
#include "investments/facts.h"
#include "investments/security_lookup.h"
#include "money/foreign_amount.h"
#include "text/shown_values.h"
#include "text/transaction_text.h"
#include "text/value_text.h"
#include "text/visible_text.h"
#include "text_page/table.h"
#include "text_page/text_page.h"

namespace tool {
namespace {

using brackwell::SecurityList;

/// The entries of an account that are the same transaction, by the number of the first; those that occur once
/// are not in it.
template <class Entry>
using Groups = std::map<std::uint32_t, std::vector<const Entry*>>;

template <class Entry>
Groups<Entry> groupsOf(const std::vector<Entry>& entries) {
    Groups<Entry> groups;
    for (const Entry& entry : entries) {
        if (entry.isOriginal()) continue;
        auto& group = groups[entry.original];
        if (group.empty()) group.push_back(&entries[entry.original]);
        group.push_back(&entry);
    }
    return groups;
}

/// "july.ofx, august.ofx (2 times)": the files that a transaction stands in.
template <class Account, class Entry>
std::string filesOf(const Account& account, const std::vector<const Entry*>& group) {
    std::string text;
    for (auto entry = group.begin(); entry != group.end();) {
        // cppcheck-suppress derefInvalidIteratorRedundantCheck ; the inner loop ends there too
        const std::string& file = account.statements[(*entry)->statement].file;
        std::size_t times = 0;
        for (; entry != group.end() && account.statements[(*entry)->statement].file == file; ++entry) ++times;
        text.append(text.empty() ? "in " : ", ").append(file);
        if (times > 1) text += " (" + std::to_string(times) + " times)";
    }
    return text;
}

Table::Row rowOf(const brackwell::TvOFXStatementTransaction& transaction, std::size_t times,
                 const std::string& accountCurrency) {
    const auto date = transaction.datePosted();
    const std::string foreign = foreignSymbol(currencyOf(transaction), accountCurrency);
    return {
        dayText(date),
        visibleText(payeeOf(transaction).value_or("")),
        visibleText(transaction.memo().value_or("")),
        visibleText(transaction.fiTransactionID().value_or("")),
        std::to_string(times),
        transaction.amount() ? shownAmount(*transaction.amount(), firstOf(foreign, accountCurrency)) : "",
        visibleText(foreign),
    };
}

Table::Row rowOf(const AccountHistory& account, const HistoryEntry& entry, std::size_t times,
                 const SecurityList&) {
    return rowOf(*entry.transaction, times, account.currency);
}

/// What it is and of which security stands in the place of the payee. A bank transaction has its own.
Table::Row rowOf(const InvestmentAccount& account, const InvestmentEntry& entry, std::size_t times,
                 const SecurityList& others) {
    const brackwell::InvestmentTransaction& transaction = entry.transaction;
    if (const auto bank = transaction.bankTransaction()) return rowOf(*bank, times, account.currency);
    const auto date = dateOf(transaction);
    const auto amount = amountOf(transaction);
    const std::string foreign = foreignSymbol(currencyOf(transaction), account.currency);
    const SecurityLookup securities(*account.statements[entry.statement].securities, others);
    const std::string_view name = nameOf(securities.find(transaction), transaction.securityID());
    return {
        dayText(date),
        visibleText(kindInWords(transaction) + (name.empty() ? "" : " ") + std::string(name)),
        visibleText(memoOf(transaction).value_or("")),
        visibleText(identifierOf(transaction).value_or("")),
        std::to_string(times),
        amount ? shownAmount(*amount, firstOf(foreign, account.currency)) : "",
        visibleText(foreign),
    };
}

template <class Account, class Entry>
void showGroups(TextPage& page, const Account& account, const Groups<Entry>& groups,
                const SecurityList& securities) {
    const auto row = [&](const auto& group) {
        return rowOf(account, *group.front(), group.size(), securities);
    };
    Table table({{"Date", Column::Kind::text, 0, 9},
                 {"Payee", Column::Kind::text, 8, 8},
                 {"Memo", Column::Kind::text, 8, 4},
                 {"ID", Column::Kind::text, 6, 5},
                 {"Times", Column::Kind::text, 5, 6},
                 {"Amount", Column::Kind::amount, 0, 9},
                 {"", Column::Kind::text, 3, 7}});  // the currency, where it is not the account's
    for (const auto& [number, group] : groups) table.measure(row(group));
    table.fit(page.width());
    table.writeTitles(page);
    for (const auto& [number, group] : groups) {
        if (!page.isGood()) return;
        table.writeRow(page, row(group));
        page.fact("", filesOf(account, group));
    }
}

/// True when a transaction of the account stands in two statements.
template <class Account>
bool showRepeats(TextPage& page, const Account& account, std::string_view kind,
                 brackwell::OptionalText number, bool isFull, const SecurityList& securities) {
    const auto groups = groupsOf(account.entries);
    if (groups.empty()) return false;
    page.heading(std::string(kind) + " " + shownNumber(number, isFull));
    showGroups(page, account, groups, securities);
    return true;
}

bool runDuplicates(Run& run) {
    History history;
    const bool allRead = readHistory(run, history);
    const bool isFull = run.options.showsFullNumbers;
    TextPage page(run.output);
    bool isAny = false;
    for (const AccountHistory& account : history.accounts())
        isAny = showRepeats(page, account, kindOf(account), account.number(), isFull, {}) || isAny;
    const SecurityList securities(history.investments().securities());
    for (const InvestmentAccount& account : history.investments().accounts())
        isAny = showRepeats(page, account, "Investment account", account.number, isFull, securities) || isAny;
    if (!isAny) page.paragraph("No transaction occurs in two statements.");
    return allRead;
}

constexpr const char* kDuplicatesHelp =
    "Statements of the same account are compared, also those of one file. Two transactions are the\n"
    "same when their amounts are equal, no field that both have differs, and their identifiers (FITID)\n"
    "are equal, or their dates posted where one has no identifier. Equal transactions of one statement\n"
    "are different ones. Each is compared with at most 64 others of the same date and amount. The exit\n"
    "status does not say whether any was found.\n\n"
    "Examples:\n"
    "  brackwell duplicates july.ofx august.ofx\n"
    "  brackwell duplicates --full *.ofx\n";

}  // namespace

constexpr Command commands::kDuplicates({
    .name = "duplicates",
    .summary = "Transactions that occur in more than one statement",
    .traits = kSeveralFiles | kReading | kNumbers | kOutput | kPage,
    .help = kDuplicatesHelp,
    .run = runDuplicates,
});

}  // namespace tool
