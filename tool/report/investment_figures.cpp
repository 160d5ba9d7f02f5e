// SPDX-License-Identifier: Apache-2.0
#include "report/investment_figures.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "accounts/account_titles.h"
#include "command_line/options.h"
#include "history/history.h"
#include "investments/security_lookup.h"
#include "report/figures.h"

namespace tool {
namespace {

using namespace brackwell;

bool movesMoney(InvestmentTransactionKind kind) noexcept {
    using enum InvestmentTransactionKind;
    return kind == bankTransaction || kind == income || kind == expense || kind == marginInterest ||
           kind == returnOfCapital;
}

/// Those that are wanted, each once.
std::vector<Trade> tradesOf(const InvestmentAccount& account, const Filter& filter, const SecurityList& all) {
    std::vector<Trade> trades;
    for (const InvestmentEntry& entry : account.entries) {
        const InvestmentSource& source = account.statements[entry.statement];
        const SecurityLookup securities(*source.securities, all);
        if (!entry.isOriginal() || !filter.takes(entry.transaction, securities)) continue;
        trades.push_back({&source, entry.transaction, securities.find(entry.transaction),
                          dateOf(entry.transaction), amountOf(entry.transaction, source.statement),
                          movesMoney(entry.transaction.kind())});
    }
    return trades;
}

std::vector<Holding> holdingsOf(const InvestmentSource& source, const Filter& filter,
                                const SecurityList& all) {
    const SecurityLookup securities(*source.securities, all);
    std::vector<Holding> holdings;
    for (const Position& position : filter.positionsOf(source.statement, securities))
        holdings.push_back({position, securities.find(position), valueOf(position, source.statement)});
    return holdings;
}

/// Income that was reinvested at once is written as money that leaves the account.
std::optional<Amount> incomeOf(const Trade& trade) {
    const bool isReinvested = trade.transaction.kind() == InvestmentTransactionKind::reinvestment;
    if (!isReinvested || !trade.amount || !trade.amount->isNegative()) return trade.amount;
    return trade.amount->negated();
}

bool isIncome(const Trade& trade) noexcept {
    const InvestmentTransactionKind kind = trade.transaction.kind();
    return kind == InvestmentTransactionKind::income || kind == InvestmentTransactionKind::reinvestment;
}

Income incomeOf(const std::vector<Trade>& trades) {
    Income income;
    std::vector<DatedAmount> amounts;
    for (const Trade& trade : trades) {
        if (!isIncome(trade)) continue;
        const auto amount = incomeOf(trade);
        if (!amount) {
            ++income.unknown;
        } else if (trade.date) {
            amounts.push_back({dayOf(*trade.date), *amount});
        } else {
            income.withoutDate.add(*amount);
            ++income.undated;
        }
    }
    income.months = flowsByMonth(flowsByDay(std::move(amounts)));
    return income;
}

void addFlows(InvestmentFigures& figures) {
    std::vector<DatedAmount> amounts;
    for (const Trade& trade : figures.trades) {
        if (!trade.movesMoney || !trade.amount) continue;
        figures.flow.add(*trade.amount);
        if (trade.date) amounts.push_back({dayOf(*trade.date), *trade.amount});
    }
    figures.days = flowsByDay(std::move(amounts));
    figures.months = flowsByMonth(figures.days);
}

AccountName investmentNameOf(const InvestmentAccount& account, const AccountTitles& titles, bool isFull) {
    AccountName name{"Investment account", dottedNumber(account.number, isFull), {}};
    const std::string_view title = titles.ofInvestment(account.broker, account.number);
    name.take(title, account.number);
    return name;
}

InvestmentFigures figuresOfAccount(const InvestmentAccount& account, const AccountTitles& titles,
                                   const SecurityList& all, const Options& options) {
    InvestmentFigures figures{&account, account.latest(), {}, {}, {}, {}, {}, {}, {}, {}, {}};
    figures.number = dottedNumber(account.number, options.showsFullNumbers);
    figures.name = investmentNameOf(account, titles, options.showsFullNumbers);
    figures.worth = totalWorthOf(figures.latest);
    figures.holdings = holdingsOf(account.latestSource(), options.filter, all);
    figures.trades = tradesOf(account, options.filter, all);
    figures.income = incomeOf(figures.trades);
    addFlows(figures);
    return figures;
}

}  // namespace

std::vector<InvestmentFigures> investmentFiguresOf(const History& history, const SecurityList& all,
                                                   const Options& options) {
    const AccountTitles titles(history.listed());
    std::vector<InvestmentFigures> figures;
    for (const InvestmentAccount& account : history.investments().accounts())
        figures.push_back(figuresOfAccount(account, titles, all, options));
    return figures;
}

}  // namespace tool
