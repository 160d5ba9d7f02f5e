// SPDX-License-Identifier: Apache-2.0
#include "report/figures.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "accounts/account_names.h"
#include "accounts/account_titles.h"
#include "command_line/options.h"
#include "history/history.h"
#include "money/foreign_amount.h"
#include "text/mask.h"
#include "text/shown_values.h"

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

/// As an institution books them: it rounds what a rate has converted before it adds it to a balance.
std::vector<DatedAmount> booked(std::vector<DatedAmount> amounts) {
    for (DatedAmount& dated : amounts) dated.amount = dated.amount.shown();
    return amounts;
}

/// All transactions, each once.
Transactions originalsOf(const AccountHistory& account) {
    Transactions transactions;
    transactions.reserve(account.entries.size());
    for (const HistoryEntry& entry : account.entries)
        if (entry.isOriginal()) transactions.push_back(entry.transaction);
    return transactions;
}

/// Those of them that are wanted, and their statements.
void takeWanted(AccountFigures& figures, const AccountHistory& account, const Filter& filter) {
    figures.transactions.reserve(account.entries.size());
    figures.sources.reserve(account.entries.size());
    auto entry = account.entries.begin();
    for (const HistoryStatement& statement : account.statements)
        for (const auto* transaction : filter.transactionsOf(*statement.statement)) {
            while (entry->transaction != transaction) ++entry;  // both are in the order of the statements
            if (!entry->isOriginal()) continue;
            figures.transactions.push_back(transaction);
            figures.sources.push_back(&statement);
        }
}

void count(AccountFigures& figures, const brackwell::TvOFXStatementTransaction& transaction) {
    if (!transaction.datePosted()) ++figures.withoutDate;
    if (const auto amount = amountIn(transaction, figures.history->currency))
        figures.flow.add(*amount);
    else
        ++(transaction.amount() ? figures.foreign : figures.withoutAmount);
}

AccountName accountNameOf(const AccountHistory& account, const AccountTitles& titles, bool isFull) {
    AccountName name{std::string(kindOf(account)), dottedNumber(account.number(), isFull), {}};
    const auto bank = account.bankAccount ? account.bankAccount->bankID() : std::nullopt;
    const std::string_view title =
        account.isCard ? titles.ofCard(account.number()) : titles.ofBank(bank, account.number());
    name.take(title, account.number().value_or(""));
    return name;
}

AccountFigures figuresOfAccount(const AccountHistory& account, const AccountTitles& titles,
                                const Filter& filter, const Options& options) {
    AccountFigures figures;
    figures.history = &account;
    figures.number = dottedNumber(account.number(), options.showsFullNumbers);
    figures.name = accountNameOf(account, titles, options.showsFullNumbers);
    figures.institution = account.institution();
    const std::vector<StatedBalance> ledger = ledgerBalances(account);
    figures.ledger = lastOf(ledger);
    figures.available = lastOf(availableBalances(account));
    takeWanted(figures, account, filter);
    for (const auto* transaction : figures.transactions) count(figures, *transaction);
    figures.days = flowsByDay(amountsOf(figures.transactions, account.currency));
    figures.months = flowsByMonth(figures.days);
    figures.balance =
        balanceCourse(flowsByDay(booked(amountsOf(originalsOf(account), account.currency))), ledger);
    limit(figures.balance, filter);
    return figures;
}

/// The sum of what is known of all accounts; nothing after one of which it is not.
void addBalance(CurrencyFigures& figures, const std::optional<Amount>& balance) {
    if (!balance)
        figures.balance.reset();
    else if (figures.balance)
        figures.balance->add(*balance);
}

void addTogether(CurrencyFigures& figures) {
    figures.balance = Sum();
    std::vector<const std::vector<MonthFlow>*> months;
    for (const AccountFigures* account : figures.accounts) {
        addBalance(figures, account->ledger ? std::optional<Amount>(account->ledger->amount) : std::nullopt);
        figures.flow.add(account->flow);
        figures.transactions += account->transactions.size();
        months.push_back(&account->months);
    }
    for (const InvestmentFigures* account : figures.investments) {
        addBalance(figures, account->worth);
        figures.flow.add(account->flow);
        figures.transactions += account->trades.size();
        months.push_back(&account->months);
    }
    figures.months = together(months);
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
    const AccountTitles titles(history.listed());
    std::vector<AccountFigures> figures;
    for (const AccountHistory& account : history.accounts())
        figures.push_back(figuresOfAccount(account, titles, filter, options));
    return figures;
}

void distinguishNames(std::vector<AccountFigures>& accounts, std::vector<InvestmentFigures>& investments) {
    std::vector<NamedAccount> names;
    for (AccountFigures& account : accounts)
        names.push_back({&account.name, account.institution, account.history->currency});
    for (InvestmentFigures& account : investments)
        names.push_back(
            {&account.name, std::string(account.account->institution()), account.account->currency});
    distinguish(names);
}

std::vector<CurrencyFigures> figuresByCurrency(const std::vector<AccountFigures>& accounts,
                                               const std::vector<InvestmentFigures>& investments) {
    std::map<std::string, CurrencyFigures> byCurrency;
    for (const AccountFigures& account : accounts)
        byCurrency[account.history->currency].accounts.push_back(&account);
    for (const InvestmentFigures& account : investments)
        byCurrency[account.account->currency].investments.push_back(&account);
    std::vector<CurrencyFigures> figures;
    for (auto& [currency, sharing] : byCurrency) {
        if (currency.empty() || sharing.count() < 2) continue;
        sharing.currency = currency;
        addTogether(sharing);
        figures.push_back(std::move(sharing));
    }
    return figures;
}

}  // namespace tool
