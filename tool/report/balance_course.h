// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "report/flow.h"

namespace tool {

struct AccountHistory;

/// What an institution says that an account held at the end of a day.
struct StatedBalance {
    brackwell::Decimal amount;
    std::optional<brackwell::Date> date;
    std::string file;  ///< that says so

    /// The day in UTC; only for one that has a date.
    std::chrono::sys_days day() const { return std::chrono::floor<std::chrono::days>(*date); }
};

struct BalancePoint {
    std::chrono::sys_days day;
    brackwell::Decimal amount;  ///< at the end of the day
};

/// A stated balance that the transactions do not lead to from the latest one.
struct BalanceGap {
    StatedBalance stated;
    brackwell::Decimal computed;
};

/// How the balance of an account went.
struct BalanceCourse {
    /// The day before the first transaction, each day with transactions, and the day of the ledger balance
    /// when that comes after them all. Empty when the balance cannot be told.
    std::vector<BalancePoint> points;
    std::string obstacle;  ///< why it cannot
    std::vector<StatedBalance> confirmed;
    std::vector<BalanceGap> gaps;
};

/// The ledger balances of all statements, by date; those without one come first.
std::vector<StatedBalance> ledgerBalances(const AccountHistory& account);
std::vector<StatedBalance> availableBalances(const AccountHistory& account);

/// The course through all days with transactions. It goes from the last of the ledger balances backwards,
/// and forwards over the transactions of later days. A balance counts as that of the end of its day,
/// whatever the hour.
BalanceCourse balanceCourse(const std::vector<DayFlow>& days, const std::vector<StatedBalance>& ledger);

/// Leaves out of a course what was before or after these days, besides the balance that the first began with.
void limitToDays(BalanceCourse& course, const std::optional<std::chrono::sys_days>& first,
                 const std::optional<std::chrono::sys_days>& last);

}  // namespace tool
