// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/balances.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace tool {
namespace {

using brackwell::Decimal;

constexpr const char* kNotCovered = "the documents do not have the transactions up to this day";

/// That at the end of all days.
constexpr std::string_view kNever = "\x7F";

}  // namespace

BalanceCheck::BalanceCheck(std::vector<BookBalance>& balances) {
    for (BookBalance& balance : balances)
        ledgers_[{balance.account, balance.commodity}].balances.push_back(&balance);
    for (auto& [key, ledger] : ledgers_) {
        std::ranges::stable_sort(ledger.balances, [](const BookBalance* a, const BookBalance* b) {
            return std::pair(std::string_view(a->day), a->statement) <
                   std::pair(std::string_view(b->day), b->statement);
        });
        ledger.firstDay = ledger.balances.front()->day;
        std::vector<std::uint32_t> statements;
        for (const BookBalance* balance : ledger.balances) statements.push_back(balance->statement);
        ledger.sums.willAsk(std::move(statements));
    }
}

/// Without a balance nothing is needed of it.
void BalanceCheck::add(const std::string& day, const Posting& posting) {
    const auto found = ledgers_.find({posting.account, posting.commodity});
    if (found == ledgers_.end()) return;
    Ledger& ledger = found->second;
    ledger.knowBefore(day);
    ledger.firstDay = std::min(ledger.firstDay, day);
    ledger.sums.add(posting.statement, posting.quantity);
    ledger.all.add(posting.quantity);
}

/// Notes what is known at the balances before a day.
void BalanceCheck::Ledger::knowBefore(std::string_view day) {
    while (known.size() < balances.size() && balances[known.size()]->day < day) {
        const BookBalance& balance = *balances[known.size()];
        const auto listed = sums.upTo(balance.statement).value();
        known.push_back({listed ? balance.amount.minus(*listed) : std::nullopt, all.value()});
    }
}

/// The opening that most balances ask for; of as many, the one of the earliest balance.
std::optional<Decimal> BalanceCheck::Ledger::electedOpening() const {
    std::map<Decimal, std::size_t> votes;
    std::size_t most = 0;
    for (std::size_t i = 0; i < known.size(); ++i)
        if (balances[i]->isCovered && known[i].opening) most = std::max(most, ++votes[*known[i].opening]);
    for (std::size_t i = 0; i < known.size(); ++i)
        if (balances[i]->isCovered && known[i].opening && votes[*known[i].opening] == most)
            return known[i].opening;
    return std::nullopt;
}

/// Objects to the balances that do not hold where the account has begun with an amount.
void BalanceCheck::Ledger::object(const std::optional<Decimal>& opening) {
    const auto objectionTo = [&opening](const BookBalance& balance, const Known& at) -> std::string {
        if (!balance.isCovered || !opening) return kNotCovered;
        const auto actual = at.moved ? at.moved->plus(*opening) : std::nullopt;
        if (actual == balance.amount) return {};
        if (at.opening == opening) return kHeldEarlier;
        return "with the other balances, the transactions come to " +
               (actual ? actual->toString() : "too much");
    };
    for (std::size_t i = 0; i < known.size(); ++i)
        balances[i]->objection = objectionTo(*balances[i], known[i]);
}

std::vector<OpeningBalance> BalanceCheck::settle(const std::function<bool(std::string_view)>& knows) {
    const std::map<std::string_view, std::string> days = firstDays();
    std::vector<OpeningBalance> openings;
    for (auto& [key, ledger] : ledgers_) {
        const auto& [account, commodity] = key;
        if (knows(account)) {
            for (BookBalance* balance : ledger.balances)
                if (!balance->isCovered) balance->objection = kNotCovered;
            continue;
        }
        ledger.knowBefore(kNever);
        const auto opening = ledger.electedOpening();
        ledger.object(opening);
        if (opening && !opening->isZero())
            openings.push_back({account, commodity, *opening, days.at(account)});
    }
    return openings;
}

/// The first day of each account with a balance.
std::map<std::string_view, std::string> BalanceCheck::firstDays() const {
    std::map<std::string_view, std::string> days;
    for (const auto& [key, ledger] : ledgers_) {
        const auto [day, isNew] = days.try_emplace(key.first, ledger.firstDay);
        if (!isNew) day->second = std::min(day->second, ledger.firstDay);
    }
    return days;
}

}  // namespace tool
