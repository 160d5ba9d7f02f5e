// SPDX-License-Identifier: Apache-2.0
#include "report/flow.h"

#include <algorithm>

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

std::vector<DayFlow> flowsByDay(const Transactions& transactions) {
    std::vector<std::pair<sys_days, const brackwell::Decimal*>> amounts;
    for (const auto* transaction : transactions)
        if (transaction->datePosted() && transaction->amount())
            amounts.emplace_back(floor<std::chrono::days>(*transaction->datePosted()),
                                 &*transaction->amount());
    std::ranges::stable_sort(amounts, {}, [](const auto& amount) { return amount.first; });
    std::vector<DayFlow> days;
    for (const auto& [day, amount] : amounts) {
        Flow flow;
        flow.add(*amount);
        addTo(days, &DayFlow::day, day, flow);
    }
    return days;
}

std::vector<MonthFlow> flowsByMonth(const std::vector<DayFlow>& days) {
    std::vector<MonthFlow> months;
    for (const DayFlow& day : days) {
        const year_month_day date(day.day);
        addTo(months, &MonthFlow::month, date.year() / date.month(), day.flow);
    }
    return months;
}

}  // namespace tool
