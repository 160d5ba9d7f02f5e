// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bookkeeping/book.h"
#include "bookkeeping/sums_by_statement.h"
#include "money/sum.h"

namespace tool {

/// What an account has before the first of its entries.
struct OpeningBalance {
    std::string_view account;
    std::string_view commodity;
    brackwell::Decimal amount;
    std::string day;  ///< of the account's first entry or balance
};

/// Holds balances against entries and finds the amounts that the accounts began with. A balance of a
/// statement has in it what that statement and earlier ones list up to its day, and what the account began
/// with. Where balances disagree about that, most of them decide, and of as many the earlier ones. Balances
/// that do not hold at the end of their day get an objection.
///
/// Takes n log n time for n entries and balances, and keeps nothing of an entry.
class BalanceCheck {
public:
    /// The balances have to stay where they are.
    explicit BalanceCheck(std::vector<BookBalance>& balances);

    /// A posting of an entry. The entries must come in the order of days.
    void add(const std::string& day, const Posting& posting);

    /// To be called after the last of these. Of accounts that a journal `knows` nothing is found out: it has
    /// more entries than these.
    std::vector<OpeningBalance> settle(const std::function<bool(std::string_view)>& knows);

private:
    /// What is known of an account at a balance.
    struct Known {
        std::optional<brackwell::Decimal> opening;  ///< that the balance asks for
        std::optional<brackwell::Decimal> moved;    ///< by all entries up to the end of its day
    };
    /// What happens to one commodity in one account.
    struct Ledger {
        std::vector<BookBalance*> balances;  ///< by day, then by statement
        std::vector<Known> known;            ///< at those of them that are of the days so far
        SumsByStatement sums = {};
        Sum all = {};
        std::string firstDay = {};  ///< of an entry or a balance

        void knowBefore(std::string_view day);
        std::optional<brackwell::Decimal> electedOpening() const;
        void object(const std::optional<brackwell::Decimal>& opening);
    };
    std::map<std::string_view, std::string> firstDays() const;

    std::map<std::pair<std::string_view, std::string_view>, Ledger> ledgers_;  ///< by account and commodity
};

/// The objection to a balance that held before later entries of its day had come. It is no contradiction.
inline constexpr const char* kHeldEarlier = "later statements have more transactions of this day";

}  // namespace tool
