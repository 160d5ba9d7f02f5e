// SPDX-License-Identifier: Apache-2.0
#include "support/shown.h"

#include <cstdio>

namespace brackwell::tests {

using namespace std::chrono;

std::string shown(const OptionalText& text) { return text ? std::string(*text) : "nothing"; }

std::string shown(const std::optional<Decimal>& number) { return number ? number->toString() : "nothing"; }

std::string shown(const std::optional<Date>& date) {
    if (!date) return "nothing";
    const sys_days midnight = floor<days>(*date);
    const year_month_day day(midnight);
    const hh_mm_ss time(*date - midnight);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d.%03d", int(day.year()),
                  unsigned(day.month()), unsigned(day.day()), static_cast<int>(time.hours().count()),
                  static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
                  static_cast<int>(time.subseconds().count()));
    return text.data();
}

Date utc(int year, unsigned month, unsigned day, unsigned hour, unsigned minute, unsigned second,
         unsigned millisecond) {
    return sys_days(std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day)) +
           hours(hour) + minutes(minute) + seconds(second) + milliseconds(millisecond);
}

}  // namespace brackwell::tests
