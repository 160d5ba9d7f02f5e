// SPDX-License-Identifier: Apache-2.0
#include <map>

#include "history/history.h"
#include "run.h"
#include "text/value_text.h"
#include "text/visible_text.h"
#include "view/account_names.h"
#include "view/page.h"
#include "view/sections.h"
#include "view/table.h"

namespace tool {
namespace {

/// The entries of an account that are the same transaction, by the number of the first; those that occur once
/// are not in it.
using Groups = std::map<std::uint32_t, std::vector<const HistoryEntry*>>;

Groups groupsOf(const AccountHistory& account) {
    Groups groups;
    for (const HistoryEntry& entry : account.entries) {
        if (entry.isOriginal()) continue;
        auto& group = groups[entry.original];
        if (group.empty()) group.push_back(&account.entries[entry.original]);
        group.push_back(&entry);
    }
    return groups;
}

/// "july.ofx, august.ofx (2 times)": the files that a transaction stands in.
std::string filesOf(const AccountHistory& account, const std::vector<const HistoryEntry*>& group) {
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

Table::Row rowOf(const brackwell::TvOFXStatementTransaction& transaction, std::size_t times) {
    const auto payee = transaction.payee();
    const auto date = transaction.datePosted();
    brackwell::OptionalText name = transaction.payeeName();
    if (!name && payee) name = payee->name();
    return {
        date ? std::string(DateText(*date).day()) : "",
        visibleText(name.value_or("")),
        visibleText(transaction.memo().value_or("")),
        visibleText(transaction.fiTransactionID().value_or("")),
        std::to_string(times),
        transaction.amount() ? shownAmount(*transaction.amount()) : "",
    };
}

void showGroups(Page& page, const AccountHistory& account, const Groups& groups) {
    Table table({{"Date", Column::Kind::text, 0, 9},
                 {"Payee", Column::Kind::text, 8, 8},
                 {"Memo", Column::Kind::text, 8, 4},
                 {"ID", Column::Kind::text, 6, 5},
                 {"Times", Column::Kind::text, 5, 6},
                 {"Amount", Column::Kind::amount, 0, 9}});
    for (const auto& [number, group] : groups)
        table.measure(rowOf(*group.front()->transaction, group.size()));
    table.fit(page.width());
    table.writeTitles(page);
    for (const auto& [number, group] : groups) {
        if (!page.isGood()) return;
        table.writeRow(page, rowOf(*group.front()->transaction, group.size()));
        page.fact("", filesOf(account, group));
    }
}

}  // namespace

bool runDuplicates(Run& run) {
    History history;
    const bool allRead = readHistory(run, history);
    Page page(run.output);
    bool isAny = false;
    for (const AccountHistory& account : history.accounts()) {
        const Groups groups = groupsOf(account);
        if (groups.empty()) continue;
        isAny = true;
        page.heading(std::string(kindOf(account)) + " " +
                     shownNumber(account.number(), run.options.showsFullNumbers));
        showGroups(page, account, groups);
    }
    if (!isAny) page.paragraph("No transaction stands in two statements.");
    return allRead;
}

}  // namespace tool
