// SPDX-License-Identifier: Apache-2.0
#include "report/balance_course.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "history/history.h"

namespace tool {
namespace {

using namespace std::chrono;
using brackwell::TvOFXAccountStatement;

template <class Amount, class When>
std::vector<StatedBalance> balancesOf(const AccountHistory& account, Amount amount, When date) {
    std::vector<StatedBalance> balances;
    for (const HistoryStatement& statement : account.statements)
        if (const auto& stated = (*statement.statement.*amount)())
            balances.push_back({*stated, (*statement.statement.*date)(), statement.file});
    std::ranges::stable_sort(balances, {}, &StatedBalance::date);
    return balances;
}

/// The balance at the end of each day, from one that is known.
std::vector<BalancePoint> pointsFrom(const std::vector<DayFlow>& days, const StatedBalance& known) {
    // First as if nothing had been there at the beginning, then lifted to where the known balance is.
    Sum sum;
    Sum start;
    start.add(known.amount);
    std::vector<std::pair<sys_days, Sum>> sums{{days.front().day - std::chrono::days(1), sum}};
    for (const DayFlow& day : days) {
        sum.add(day.flow.net());
        sums.emplace_back(day.day, sum);
        if (day.day <= known.day()) start.subtract(day.flow.net());
    }
    if (days.back().day < known.day()) sums.emplace_back(known.day(), sum);
    std::vector<BalancePoint> points;
    for (auto& [day, fromNothing] : sums) {
        fromNothing.add(start);
        if (!fromNothing.value()) return {};
        points.push_back({day, *fromNothing.value()});
    }
    return points;
}

/// The course's balance at the end of a day; nothing before its beginning.
const BalancePoint* pointAt(const std::vector<BalancePoint>& points, sys_days day) {
    const auto after = std::ranges::upper_bound(points, day, {}, &BalancePoint::day);
    return after == points.begin() ? nullptr : &*(after - 1);
}

/// Sorts the stated balances into those that the course goes through and those that it does not.
void compare(BalanceCourse& course, const std::vector<StatedBalance>& ledger) {
    for (const StatedBalance& stated : ledger) {
        const BalancePoint* point = stated.date ? pointAt(course.points, stated.day()) : nullptr;
        if (point == nullptr) continue;
        if (point->amount == stated.amount)
            course.confirmed.push_back(stated);
        else
            course.gaps.push_back({stated, point->amount});
    }
}

}  // namespace

std::vector<StatedBalance> ledgerBalances(const AccountHistory& account) {
    return balancesOf(account, &TvOFXAccountStatement::ledgerBalanceAmount,
                      &TvOFXAccountStatement::ledgerBalanceDateTime);
}

std::vector<StatedBalance> availableBalances(const AccountHistory& account) {
    return balancesOf(account, &TvOFXAccountStatement::availableBalanceAmount,
                      &TvOFXAccountStatement::availableBalanceDateTime);
}

BalanceCourse balanceCourse(const std::vector<DayFlow>& days, const std::vector<StatedBalance>& ledger) {
    BalanceCourse course;
    if (ledger.empty())
        course.obstacle = "The document states no ledger balance, so the balance over time is not known.";
    else if (!ledger.back().date)
        course.obstacle = "The ledger balance has no date, so the balance over time is not known.";
    else if (days.empty())
        course.obstacle = "There are no transactions with a date and an amount.";
    if (!course.obstacle.empty()) return course;
    course.points = pointsFrom(days, ledger.back());
    if (course.points.empty()) course.obstacle = "The balance takes more digits than can be represented.";
    compare(course, ledger);
    return course;
}

void limitToDays(BalanceCourse& course, const std::optional<sys_days>& first,
                 const std::optional<sys_days>& last) {
    if (course.points.empty()) return;
    std::vector<BalancePoint>& points = course.points;
    const auto isOutside = [&](sys_days day) { return (first && day < *first) || (last && day > *last); };
    const BalancePoint* opening = first ? pointAt(points, *first - std::chrono::days(1)) : nullptr;
    std::vector<BalancePoint> limited;
    if (opening != nullptr) limited.push_back({*first - std::chrono::days(1), opening->amount});
    std::ranges::copy_if(points, std::back_inserter(limited), std::not_fn(isOutside), &BalancePoint::day);
    points = std::move(limited);
    std::erase_if(course.confirmed, [&](const StatedBalance& stated) { return isOutside(stated.day()); });
    if (points.size() > 1) return;
    points.clear();
    course.obstacle = "Nothing changed the balance in this time.";
}

}  // namespace tool
