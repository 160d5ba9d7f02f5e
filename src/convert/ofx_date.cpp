// SPDX-License-Identifier: Apache-2.0
#include "convert/ofx_date.h"

#include <chrono>
#include <cstddef>

#include "convert/digit_pairs.h"
#include "text/ascii_digit.h"
#include "text/utf8.h"

namespace brackwell {
namespace {

using namespace std::chrono;

/// The number of days from 1970-01-01 to a day of the proleptic Gregorian calendar; nothing when there is
/// no such day in the years 1 to 9999.
std::optional<sys_days> dayOf(unsigned yearNumber, unsigned monthNumber, unsigned dayNumber) noexcept {
    const year_month_day date(year(static_cast<int>(yearNumber)), month(monthNumber), day(dayNumber));
    if (yearNumber == 0 || !date.ok()) return std::nullopt;
    return sys_days(date);
}

/// Reads "yyyyMMdd".
std::optional<Date> dateOfDay(std::string_view text) noexcept {
    const auto pairs = fourPairs(text.data());
    if (!pairs) return std::nullopt;
    return dayOf((*pairs)[0] * 100 + (*pairs)[1], (*pairs)[2], (*pairs)[3]);
}

/// Reads "HHmmss", which follows two digits, as a time of the day.
std::optional<milliseconds> timeBehind(const char* twoDigits) noexcept {
    const auto pairs = fourPairs(twoDigits);
    if (!pairs) return std::nullopt;
    const auto [before, hour, minute, second] = *pairs;
    if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return hours(hour) + minutes(minute) + seconds(second);
}

/// Reads "SSS", which follows a point.
std::optional<milliseconds> millisecondsBehind(const char* point) noexcept {
    unsigned value = 0;
    for (const char* digit = point + 1; digit != point + 4; ++digit) {
        if (digitValue(*digit) > 9) return std::nullopt;
        value = value * 10 + digitValue(*digit);
    }
    return milliseconds(value);
}

}  // namespace

void readOFXDate(std::string_view text, std::optional<Date>& date) noexcept {
    constexpr std::size_t dayLength = 8;
    constexpr std::size_t secondLength = 14;
    constexpr std::size_t millisecondLength = 18;
    text = firstCharacters(text, millisecondLength);
    date = text.size() >= dayLength ? dateOfDay(text) : std::nullopt;
    if (!date) return;
    // A zone in brackets is never applied, and a time before it is dropped: intended.
    const bool withMilliseconds = text.size() == millisecondLength && text[secondLength] == '.';
    if (!withMilliseconds && text.size() != secondLength) return;
    const auto time = timeBehind(text.data() + dayLength - 2);
    const auto fraction = withMilliseconds ? millisecondsBehind(text.data() + secondLength) : milliseconds(0);
    if (time && fraction) *date += *time + *fraction;
}

}  // namespace brackwell
