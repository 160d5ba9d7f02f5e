// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "history/history.h"
#include "input/run.h"
#include "report/payees.h"
#include "text/counted.h"
#include "text_page/table.h"
#include "text_page/text_page.h"
#include "text_page/totals.h"

namespace tool {
namespace {

using Transaction = brackwell::TvOFXStatementTransaction;

/// Each transaction counts once, in however many files it stands.
void addAccount(Payees& payees, const AccountHistory& account, const Filter& filter) {
    const auto repeats = account.repeatedTransactions();
    for (const HistoryStatement& each : account.statements)
        for (const Transaction* transaction : filter.transactionsOf(*each.statement))
            if (!std::ranges::binary_search(repeats, transaction)) payees.add(*transaction, account.currency);
}

Table::Row payeeRow(const std::string& name, const std::string& month, const PayeeFlow& flow,
                    const std::string& currency) {
    return {name, month, std::to_string(flow.count), shownSum(flow.money.in, currency),
            shownSum(flow.money.out, currency)};
}

/// A row for a payee, and one below it for each month when there are several.
std::vector<Table::Row> payeeRows(const Payee& payee, const std::string& currency) {
    const std::string name = payee.name.empty() ? "(no payee)" : payee.name;
    if (payee.months.size() == 1) return {payeeRow(name, payee.months.begin()->first, payee.total, currency)};
    std::vector<Table::Row> rows{payeeRow(name, "", payee.total, currency)};
    for (const auto& [month, flow] : payee.months)
        rows.push_back(payeeRow("", month.empty() ? "no date" : month, flow, currency));
    return rows;
}

void showPayees(TextPage& page, const std::string& currency, const Payees& payees, Order order) {
    const std::vector<const Payee*> list = sortedPayees(payees, order);
    Table table({{"Payee", Column::Kind::text, 8, 9},
                 {"Month", Column::Kind::text, 0, 7},
                 {"Count", Column::Kind::amount, 0, 5},
                 {"In", Column::Kind::amount, 0, 6},
                 {"Out", Column::Kind::amount, 0, 8}});
    for (const Payee* payee : list)
        for (const Table::Row& row : payeeRows(*payee, currency)) table.measure(row);
    table.fit(page.width());
    page.heading(currency.empty() ? "Unknown currency" : currency);
    table.writeTitles(page);
    for (const Payee* payee : list) {
        if (!page.isGood()) return;
        for (const Table::Row& row : payeeRows(*payee, currency)) table.writeRow(page, row);
    }
    if (payees.foreign > 0)
        page.fact("Left out", counted(payees.foreign, "amount", "amounts") + " in another currency");
}

bool runPayees(Run& run) {
    History history;
    const bool allRead = readHistory(run, history);
    const Filter& filter = run.options.filter;
    std::map<std::string, Payees> currencies;
    for (const AccountHistory& account : history.accounts())
        addAccount(currencies[account.currency], account, filter);
    std::erase_if(currencies, [](const auto& each) { return each.second.byName.empty(); });
    TextPage page(run.output);
    for (const auto& [currency, payees] : currencies) showPayees(page, currency, payees, filter.order);
    if (currencies.empty()) page.paragraph("There are no such transactions in bank and card statements.");
    return allRead;
}

constexpr const char* kPayeesHelp =
    "What bank and card statements say of each payee: how many transactions, and what came in and went\n"
    "out, with a row for each month where there are several. A transaction that stands in several files\n"
    "counts once, and each currency has a table of its own. Names that differ only in case and accents\n"
    "are one payee; a transaction without a name has its memo as one. Who got most stands first; --sort\n"
    "date is by the first day, --sort amount by what is left of in and out.\n\n"
    "Examples:\n"
    "  brackwell payees Downloads\n"
    "  brackwell payees --since 2024-01-01 *.ofx\n"
    "  brackwell payees --search bakery july.ofx\n";

}  // namespace

constexpr Command commands::kPayees({
    .name = "payees",
    .summary = "What came from and went to each payee",
    .traits = kSeveralFiles | kReading | kFilter | kOutput | kPage,
    .help = kPayeesHelp,
    .run = runPayees,
});

}  // namespace tool
