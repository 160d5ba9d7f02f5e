// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace brackwell {

inline constexpr std::int64_t kSecondsPerDay = 86400;

/// The Gregorian calendar repeats itself, weekdays included, every 400 years.
inline constexpr std::int64_t kDaysPerCycle = 146097;
inline constexpr std::int64_t kYearsPerCycle = 400;

/// The quotient rounded towards negative infinity, for a divisor above zero.
constexpr std::int64_t floorDivide(std::int64_t number, std::int64_t divisor) noexcept {
    return number / divisor - (number % divisor < 0 ? 1 : 0);
}

/// What that division leaves: 0 to divisor - 1.
constexpr std::int64_t floorRemainder(std::int64_t number, std::int64_t divisor) noexcept {
    const std::int64_t rest = number % divisor;
    return rest < 0 ? rest + divisor : rest;
}

/// The whole seconds of UTC that have passed at a date.
constexpr std::int64_t secondsOf(Date date) noexcept {
    return floorDivide(date.time_since_epoch().count(), 1000);
}

/// What calendar and clock show. Every Date has one, those far outside of the years 1 to 9999 too.
struct CivilTime {
    std::int64_t year = 0;  ///< 0 is the year before 1
    unsigned month = 1;
    unsigned day = 1;
    unsigned dayOfYear = 1;
    unsigned weekday = 0;  ///< from 0, a Sunday
    unsigned hour = 0;
    unsigned minute = 0;
    unsigned second = 0;
    unsigned millisecond = 0;
};

/// What is shown at a date where clocks are `offset` ahead of UTC.
CivilTime civilTime(Date date, std::chrono::seconds offset) noexcept;

/// Appends a number with zeros before it up to `width` digits.
void appendPadded(std::string& text, std::uint64_t number, std::size_t width);

/// The same for a year: one before 0 gets a minus sign.
void appendYear(std::string& text, std::int64_t year, std::size_t width);

}  // namespace brackwell
