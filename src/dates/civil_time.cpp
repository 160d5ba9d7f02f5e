// SPDX-License-Identifier: Apache-2.0
#include "dates/civil_time.h"

namespace brackwell {

CivilTime civilTime(Date date, std::chrono::seconds offset) noexcept {
    const std::int64_t seconds = secondsOf(date) + offset.count();
    const std::int64_t dayNumber = floorDivide(seconds, kSecondsPerDay);
    const auto secondOfDay = static_cast<unsigned>(floorRemainder(seconds, kSecondsPerDay));

    // The library's calendar has 65,536 years, a Date millions: the day is looked up in one cycle.
    const std::chrono::sys_days day{
        std::chrono::days(static_cast<int>(floorRemainder(dayNumber, kDaysPerCycle)))};
    const std::chrono::year_month_day date400(day);
    const std::chrono::sys_days firstDay = date400.year() / std::chrono::January / 1;

    CivilTime civil;
    civil.year = int{date400.year()} + kYearsPerCycle * floorDivide(dayNumber, kDaysPerCycle);
    civil.month = unsigned{date400.month()};
    civil.day = unsigned{date400.day()};
    civil.dayOfYear = static_cast<unsigned>((day - firstDay).count()) + 1;
    civil.weekday = std::chrono::weekday(day).c_encoding();
    civil.hour = secondOfDay / 3600;
    civil.minute = secondOfDay / 60 % 60;
    civil.second = secondOfDay % 60;
    civil.millisecond = static_cast<unsigned>(floorRemainder(date.time_since_epoch().count(), 1000));
    return civil;
}

void appendPadded(std::string& text, std::uint64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    if (digits.size() < width) text.append(width - digits.size(), '0');
    text += digits;
}

void appendYear(std::string& text, std::int64_t year, std::size_t width) {
    if (year < 0) text += '-';
    appendPadded(text, static_cast<std::uint64_t>(year < 0 ? -year : year), width);
}

}  // namespace brackwell
