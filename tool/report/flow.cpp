// SPDX-License-Identifier: Apache-2.0
#include "report/flow.h"

#include <algorithm>
#include <utility>

#include "money/foreign_amount.h"

namespace tool {
namespace {

using namespace std::chrono;

/// Adds to the last place of a list, or to a new one when that has another key.
template <class Place, class Key>
void addTo(std::vector<Place>& places, Key Place::*key, Key value, const Flow& flow) {
    if (places.empty() || places.back().*key != value) {
        places.emplace_back();
        places.back().*key = value;
    }
    places.back().flow.add(flow);
}

}  // namespace

std::vector<DayFlow> flowsByDay(std::vector<DatedAmount> amounts) {
    std::ranges::stable_sort(amounts, {}, &DatedAmount::day);
    std::vector<DayFlow> days;
    for (const auto& [day, amount] : amounts) {
        Flow flow;
        flow.add(amount);
        addTo(days, &DayFlow::day, day, flow);
    }
    return days;
}

std::vector<DatedAmount> amountsOf(const Transactions& transactions, const std::string& currency) {
    std::vector<DatedAmount> amounts;
    amounts.reserve(transactions.size());
    for (const auto* transaction : transactions)
        if (transaction->datePosted())
            if (const auto amount = amountIn(*transaction, currency))
                amounts.push_back({dayOf(*transaction->datePosted()), *amount});
    return amounts;
}

std::vector<MonthFlow> flowsByMonth(const std::vector<DayFlow>& days) {
    std::vector<MonthFlow> months;
    for (const DayFlow& day : days) {
        const year_month_day date(day.day);
        addTo(months, &MonthFlow::month, date.year() / date.month(), day.flow);
    }
    return months;
}

std::vector<MonthFlow> together(const std::vector<const std::vector<MonthFlow>*>& lists) {
    std::vector<MonthFlow> all;
    for (const auto* list : lists) all.insert(all.end(), list->begin(), list->end());
    std::ranges::stable_sort(all, {}, &MonthFlow::month);
    std::vector<MonthFlow> months;
    for (const MonthFlow& month : all) addTo(months, &MonthFlow::month, month.month, month.flow);
    return months;
}

}  // namespace tool
