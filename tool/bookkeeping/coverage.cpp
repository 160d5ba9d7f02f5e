// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/coverage.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tool {

using namespace std::chrono;

void Coverage::add(std::optional<brackwell::Date> start, std::optional<brackwell::Date> end,
                   std::optional<brackwell::Date> asOf) {
    if (!end) end = start ? std::max(start, asOf) : asOf;
    if (!start) start = end;
    if (!start || !end) return;
    Days days{floor<std::chrono::days>(*start), floor<std::chrono::days>(*end)};
    if (days.last < days.first) std::swap(days.first, days.last);
    periods_.push_back(days);
}

void Coverage::finish() {
    std::ranges::sort(periods_, {}, &Days::first);
    std::vector<Days> merged;
    for (const Days& period : periods_) {
        if (!merged.empty() && period.first - days(1) <= merged.back().last)
            merged.back().last = std::max(merged.back().last, period.last);
        else
            merged.push_back(period);
    }
    periods_ = std::move(merged);
}

bool Coverage::covers(brackwell::Date from, brackwell::Date to) const {
    const sys_days first = floor<days>(from);
    const auto after = std::ranges::upper_bound(periods_, first + days(1), {}, &Days::first);
    if (after == periods_.begin()) return false;
    const sys_days last = std::prev(after)->last + days(1);
    return first <= last && floor<days>(to) <= last;
}

}  // namespace tool
