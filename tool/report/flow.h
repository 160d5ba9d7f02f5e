// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

#include <chrono>
#include <string>
#include <vector>

#include "money/sum.h"

namespace tool {

/// Money that comes in and goes out. Sums are exact; what goes out is negative.
struct Flow {
    Sum in;
    Sum out;

    void add(const Amount& amount) { (amount.isNegative() ? out : in).add(amount); }
    void add(const Flow& other) {
        in.add(other.in);
        out.add(other.out);
    }
    Sum net() const {
        Sum sum = in;
        sum.add(out);
        return sum;
    }
};

/// The flow on a day of UTC.
struct DayFlow {
    std::chrono::sys_days day;
    Flow flow;
};

/// The flow in a month of UTC.
struct MonthFlow {
    std::chrono::year_month month;
    Flow flow;
};

using Transactions = std::vector<const brackwell::TvOFXStatementTransaction*>;

/// An amount on a day of UTC.
struct DatedAmount {
    std::chrono::sys_days day;
    Amount amount;
};

inline std::chrono::sys_days dayOf(brackwell::Date date) noexcept {
    return std::chrono::floor<std::chrono::days>(date);
}

/// The days on which there are amounts, in order.
std::vector<DayFlow> flowsByDay(std::vector<DatedAmount> amounts);
/// The amounts of transactions that have a date, and an amount in this currency.
std::vector<DatedAmount> amountsOf(const Transactions& transactions, const std::string& currency);

/// The months in which there are, in order.
std::vector<MonthFlow> flowsByMonth(const std::vector<DayFlow>& days);

/// The months of several lists together, in order.
std::vector<MonthFlow> together(const std::vector<const std::vector<MonthFlow>*>& lists);

}  // namespace tool
