// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/book_day.h"

namespace tool {

std::optional<BookDay> firstBookDay(std::initializer_list<std::optional<brackwell::Date>> dates) {
    using namespace std::chrono;
    constexpr sys_days first = year(1400) / 1 / 1;
    constexpr sys_days last = year(9999) / 12 / 31;
    for (const auto& date : dates)
        if (date && *date >= first && *date < last) return floor<BookDay::duration>(*date);
    return std::nullopt;
}

}  // namespace tool
