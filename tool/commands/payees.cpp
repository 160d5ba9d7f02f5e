// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "history/history.h"
#include "history/period.h"
#include "input/run.h"
#include "money/foreign_amount.h"
#include "money/sum.h"
#include "report/flow.h"
#include "text/searched_letters.h"
#include "text/transaction_text.h"
#include "text/value_text.h"
#include "text/visible_text.h"
#include "text_page/table.h"
#include "text_page/text_page.h"
#include "text_page/totals.h"

namespace tool {
namespace {

using Transaction = brackwell::TvOFXStatementTransaction;

/// What came and went with how many transactions.
struct PayeeFlow {
    std::size_t count = 0;
    Flow money;

    void add(const std::optional<Amount>& amount) {
        ++count;
        if (amount) money.add(*amount);
    }
};

/// All that has one name, but for case and accents.
struct Payee {
    std::string name;  ///< as it is written first
    PayeeFlow total;
    std::map<std::string, PayeeFlow> months;  ///< "2024-03"; "" for what has no date
    Period period;
};

/// The payees of all accounts in one currency, since amounts in different ones are never added.
struct Payees {
    std::map<std::string, Payee> byName;
    std::size_t foreign = 0;  ///< amounts in another currency, which are in no sum
};

void addPayment(Payees& payees, const Transaction& transaction, const std::string& currency) {
    constexpr std::size_t monthLength = 7;
    std::string name = visibleText(payeeOf(transaction).value_or(""));
    std::string key;
    appendSearchedLetters(key, name);
    Payee& payee = payees.byName[key];
    if (payee.total.count == 0) payee.name = std::move(name);
    const auto amount = amountIn(transaction, currency);
    if (!amount && transaction.amount()) ++payees.foreign;
    payee.total.add(amount);
    payee.months[dayText(transaction.datePosted()).substr(0, monthLength)].add(amount);
    payee.period.include(transaction.datePosted());
}

/// Each transaction counts once, in however many files it stands.
void addAccount(Payees& payees, const AccountHistory& account, const Filter& filter) {
    const auto repeats = account.repeatedTransactions();
    for (const HistoryStatement& each : account.statements)
        for (const Transaction* transaction : filter.transactionsOf(*each.statement))
            if (!repeats.contains(transaction)) addPayment(payees, *transaction, account.currency);
}

/// Those that got most first, or as --sort says.
std::vector<const Payee*> sortedPayees(const Payees& payees, Order order) {
    std::vector<const Payee*> list;
    for (const auto& [key, payee] : payees.byName) list.push_back(&payee);
    std::ranges::stable_sort(list, [order](const Payee* a, const Payee* b) {
        if (order == Order::date) return comesBefore(a->period.first, b->period.first);
        if (order == Order::amount)
            return comesBefore(a->total.money.net().value(), b->total.money.net().value());
        return comesBefore(a->total.money.out.value(), b->total.money.out.value());
    });
    return list;
}

Table::Row payeeRow(const std::string& name, const std::string& month, const PayeeFlow& flow) {
    return {name, month, std::to_string(flow.count), shownSum(flow.money.in), shownSum(flow.money.out)};
}

/// A row for a payee, and one below it for each month when there are several.
std::vector<Table::Row> payeeRows(const Payee& payee) {
    const std::string name = payee.name.empty() ? "(no payee)" : payee.name;
    if (payee.months.size() == 1) return {payeeRow(name, payee.months.begin()->first, payee.total)};
    std::vector<Table::Row> rows{payeeRow(name, "", payee.total)};
    for (const auto& [month, flow] : payee.months)
        rows.push_back(payeeRow("", month.empty() ? "no date" : month, flow));
    return rows;
}

void showPayees(TextPage& page, const std::string& currency, const Payees& payees, Order order) {
    const std::vector<const Payee*> list = sortedPayees(payees, order);
    Table table({{"Payee", Column::Kind::text, 8, 9},
                 {"Month", Column::Kind::text, 0, 7},
                 {"Count", Column::Kind::text, 0, 5},
                 {"In", Column::Kind::amount, 0, 6},
                 {"Out", Column::Kind::amount, 0, 8}});
    for (const Payee* payee : list)
        for (const Table::Row& row : payeeRows(*payee)) table.measure(row);
    table.fit(page.width());
    page.heading(currency.empty() ? "Unknown currency" : currency);
    table.writeTitles(page);
    for (const Payee* payee : list) {
        if (!page.isGood()) return;
        for (const Table::Row& row : payeeRows(*payee)) table.writeRow(page, row);
    }
    if (payees.foreign > 0)
        page.fact("Left out", std::to_string(payees.foreign) +
                                  (payees.foreign == 1 ? " amount" : " amounts") + " in another currency");
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
    "are one payee. Who got most stands first; --sort date is by the first day, --sort amount by what is\n"
    "left of in and out.\n\n"
    "Examples:\n"
    "  brackwell payees Downloads\n"
    "  brackwell payees --since 2024-01-01 *.ofx\n"
    "  brackwell payees --search bakery july.ofx\n";

}  // namespace

constexpr Command commands::kPayees({
    .name = "payees",
    .summary = "What came from and went to each payee",
    .traits = kSeveralFiles | kReading | kFilter | kOutput,
    .help = kPayeesHelp,
    .run = runPayees,
});

}  // namespace tool
