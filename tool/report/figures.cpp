// SPDX-License-Identifier: Apache-2.0
#include "report/figures.h"

#include <map>

#include "history/history.h"
#include "options.h"
#include "text/mask.h"
#include "view/account_names.h"
#include "view/sections.h"

namespace tool {
namespace {

/// Leaves out what lies outside the time that is wanted.
void limit(BalanceCourse& course, const Filter& filter) {
    using namespace std::chrono;
    const auto first = filter.since ? std::optional(floor<days>(*filter.since)) : std::nullopt;
    const auto last =
        filter.before ? std::optional(floor<days>(*filter.before - milliseconds(1))) : std::nullopt;
    limitToDays(course, first, last);
}

std::optional<StatedBalance> lastOf(const std::vector<StatedBalance>& balances) {
    return balances.empty() ? std::nullopt : std::optional(balances.back());
}

/// All transactions, each once.
Transactions originalsOf(const AccountHistory& account) {
    Transactions transactions;
    for (const HistoryEntry& entry : account.entries)
        if (entry.isOriginal()) transactions.push_back(entry.transaction);
    return transactions;
}

/// Those of them that are wanted.
Transactions wantedOf(const AccountHistory& account, const Filter& filter) {
    Transactions transactions;
    auto entry = account.entries.begin();
    for (const HistoryStatement& statement : account.statements)
        for (const auto* transaction : filter.transactionsOf(*statement.statement)) {
            while (entry->transaction != transaction) ++entry;  // both are in the order of the statements
            if (entry->isOriginal()) transactions.push_back(transaction);
        }
    return transactions;
}

void count(AccountFigures& figures, const brackwell::TvOFXStatementTransaction& transaction) {
    if (!transaction.datePosted()) ++figures.withoutDate;
    if (transaction.amount())
        figures.flow.add(*transaction.amount());
    else
        ++figures.withoutAmount;
}

AccountFigures figuresOfAccount(const AccountHistory& account, const Filter& filter, bool showsFullNumbers) {
    AccountFigures figures;
    figures.history = &account;
    figures.kind = kindOf(account);
    figures.number = dottedNumber(account.number(), showsFullNumbers);
    figures.institution = account.institution();
    const std::vector<StatedBalance> ledger = ledgerBalances(account);
    figures.ledger = lastOf(ledger);
    figures.available = lastOf(availableBalances(account));
    figures.transactions = wantedOf(account, filter);
    for (const auto* transaction : figures.transactions) count(figures, *transaction);
    figures.days = flowsByDay(figures.transactions);
    figures.months = flowsByMonth(figures.days);
    figures.balance = balanceCourse(flowsByDay(originalsOf(account)), ledger);
    limit(figures.balance, filter);
    return figures;
}

CurrencyFigures together(const std::string& currency, const std::vector<const AccountFigures*>& accounts) {
    CurrencyFigures figures{currency, accounts, Sum(), {}, {}};
    Transactions transactions;
    for (const AccountFigures* account : accounts) {
        if (!account->ledger)
            figures.ledger.reset();
        else if (figures.ledger)
            figures.ledger->add(account->ledger->amount);
        figures.flow.add(account->flow);
        transactions.insert(transactions.end(), account->transactions.begin(), account->transactions.end());
    }
    figures.months = flowsByMonth(flowsByDay(transactions));
    return figures;
}

}  // namespace

std::string dottedNumber(brackwell::OptionalText number, bool isFull) {
    std::string shown = shownNumber(number, isFull);
    if (shown == number.value_or("")) return shown;
    const std::string last = shown.substr(kMask.size());
    return last.empty() ? "\u2022\u2022" : "\u2022\u2022 " + last;
}

std::vector<AccountFigures> figuresOf(const History& history, const Options& options) {
    Filter filter = options.filter;
    filter.order = Order::document;
    std::vector<AccountFigures> figures;
    for (const AccountHistory& account : history.accounts())
        figures.push_back(figuresOfAccount(account, filter, options.showsFullNumbers));
    return figures;
}

std::vector<CurrencyFigures> figuresByCurrency(const std::vector<AccountFigures>& accounts) {
    std::map<std::string, std::vector<const AccountFigures*>> byCurrency;
    for (const AccountFigures& account : accounts)
        if (!account.history->currency.empty()) byCurrency[account.history->currency].push_back(&account);
    std::vector<CurrencyFigures> figures;
    for (const auto& [currency, sharing] : byCurrency)
        if (sharing.size() > 1) figures.push_back(together(currency, sharing));
    return figures;
}

}  // namespace tool
