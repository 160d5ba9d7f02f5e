// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/balances.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <utility>

#include "money/sum.h"

namespace tool {
namespace {

using brackwell::Decimal;

constexpr const char* kNotCovered = "the documents do not have the transactions up to this day";

struct Leg {
    const std::string* day;
    std::uint32_t statement;
    const Decimal* quantity;
};

/// What happens to one commodity in one account.
struct AccountLedger {
    std::vector<Leg> legs;               ///< by day
    std::vector<BookBalance*> balances;  ///< by day, then by statement
};
using AccountLedgers = std::map<std::pair<std::string, std::string>, AccountLedger>;

/// Sums of what the statements up to one have (a binary indexed tree).
class SumsByStatement {
public:
    explicit SumsByStatement(const std::vector<Leg>& legs) {
        for (const Leg& leg : legs) statements_.push_back(leg.statement);
        std::ranges::sort(statements_);
        statements_.erase(std::unique(statements_.begin(), statements_.end()), statements_.end());
        sums_.resize(statements_.size() + 1);
    }

    /// The statement must be one of the legs'.
    void add(std::uint32_t statement, const Decimal& quantity) {
        for (std::size_t i = countUpTo(statement); i < sums_.size(); i += lowestBit(i))
            sums_[i].add(quantity);
    }
    Sum upTo(std::uint32_t statement) const {
        Sum sum;
        for (std::size_t i = countUpTo(statement); i > 0; i -= lowestBit(i)) sum.add(sums_[i]);
        return sum;
    }

private:
    static std::size_t lowestBit(std::size_t number) noexcept { return number & (~number + 1); }
    std::size_t countUpTo(std::uint32_t statement) const {
        return static_cast<std::size_t>(std::ranges::upper_bound(statements_, statement) -
                                        statements_.begin());
    }

    std::vector<std::uint32_t> statements_;  ///< sorted
    std::vector<Sum> sums_;
};

/// What is known of an account at a balance.
struct Known {
    std::optional<Decimal> opening;  ///< that the balance asks for
    std::optional<Decimal> moved;    ///< by all entries up to the end of its day
};

std::vector<Known> knownAt(const AccountLedger& ledger) {
    SumsByStatement sums(ledger.legs);
    Sum all;
    std::vector<Known> known;
    auto leg = ledger.legs.begin();
    for (const BookBalance* balance : ledger.balances) {
        for (; leg != ledger.legs.end() && *leg->day <= balance->day; ++leg) {
            sums.add(leg->statement, *leg->quantity);
            all.add(*leg->quantity);
        }
        const auto listed = sums.upTo(balance->statement).value();
        known.push_back({listed ? balance->amount.minus(*listed) : std::nullopt, all.value()});
    }
    return known;
}

/// The opening that most balances ask for; of as many, the one of the earliest balance.
std::optional<Decimal> electedOpening(const AccountLedger& ledger, const std::vector<Known>& known) {
    std::map<Decimal, std::size_t> votes;
    std::size_t most = 0;
    for (std::size_t i = 0; i < known.size(); ++i)
        if (ledger.balances[i]->isCovered && known[i].opening)
            most = std::max(most, ++votes[*known[i].opening]);
    for (std::size_t i = 0; i < known.size(); ++i)
        if (ledger.balances[i]->isCovered && known[i].opening && votes[*known[i].opening] == most)
            return known[i].opening;
    return std::nullopt;
}

std::string objectionTo(const BookBalance& balance, const Known& known,
                        const std::optional<Decimal>& opening) {
    if (!balance.isCovered || !opening) return kNotCovered;
    const auto actual = known.moved ? known.moved->plus(*opening) : std::nullopt;
    if (actual == balance.amount) return {};
    if (known.opening == opening) return kHeldEarlier;
    return "with the other balances, the transactions come to " + (actual ? actual->toString() : "too much");
}

/// By what balances are about; entries without a balance are not needed.
AccountLedgers ledgersOf(const std::vector<BookEntry>& entries, std::vector<BookBalance>& balances) {
    AccountLedgers ledgers;
    for (BookBalance& balance : balances)
        ledgers[{balance.account, balance.commodity}].balances.push_back(&balance);
    for (const BookEntry& entry : entries)
        for (const Posting& posting : entry.postings) {
            const auto ledger = ledgers.find({posting.account, posting.commodity});
            if (ledger != ledgers.end())
                ledger->second.legs.push_back({&entry.day, posting.statement, &posting.quantity});
        }
    for (auto& [key, ledger] : ledgers)
        std::ranges::stable_sort(ledger.balances, [](const BookBalance* a, const BookBalance* b) {
            return std::pair(std::string_view(a->day), a->statement) <
                   std::pair(std::string_view(b->day), b->statement);
        });
    return ledgers;
}

/// The first day of each account with a balance.
std::map<std::string, std::string> firstDays(const AccountLedgers& ledgers) {
    std::map<std::string, std::string> days;
    for (const auto& [key, ledger] : ledgers) {
        std::string first = ledger.balances.front()->day;
        if (!ledger.legs.empty()) first = std::min(first, *ledger.legs.front().day);
        const auto [day, isNew] = days.try_emplace(key.first, first);
        if (!isNew) day->second = std::min(day->second, first);
    }
    return days;
}

}  // namespace

std::vector<OpeningBalance> settleBalances(const std::vector<BookEntry>& entries,
                                           std::vector<BookBalance>& balances,
                                           const std::function<bool(const std::string&)>& knows) {
    std::vector<OpeningBalance> openings;
    const AccountLedgers ledgers = ledgersOf(entries, balances);
    const std::map<std::string, std::string> days = firstDays(ledgers);
    for (const auto& [key, ledger] : ledgers) {
        const auto& [account, commodity] = key;
        if (knows(account)) {
            for (BookBalance* balance : ledger.balances)
                if (!balance->isCovered) balance->objection = kNotCovered;
            continue;
        }
        const std::vector<Known> known = knownAt(ledger);
        const std::optional<Decimal> opening = electedOpening(ledger, known);
        for (std::size_t i = 0; i < known.size(); ++i)
            ledger.balances[i]->objection = objectionTo(*ledger.balances[i], known[i], opening);
        if (opening && !opening->isZero())
            openings.push_back({account, commodity, *opening, days.at(account)});
    }
    return openings;
}

}  // namespace tool
