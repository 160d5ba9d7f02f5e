// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// \file
/// The yearly rule of a time zone, in the notation of the TZ variable: "CET-1CEST,M3.5.0,M10.5.0/3".

namespace brackwell {

/// How clocks of a zone go for some while.
struct LocalTimeType {
    std::int32_t fromUTC = 0;  ///< seconds east of UTC
    std::string abbreviation;
};

/// Every offset of a zone is smaller than this many seconds, either way.
inline constexpr std::int32_t kZoneOffsetLimit = 26 * 3600;

/// A day of every year, and a time on it.
struct YearlyMoment {
    enum class Form : std::uint8_t {
        dayWithoutLeap,  ///< "J60": day 1 to 365, of which 29 February is none
        dayFromZero,     ///< "59": day 0 to 365
        weekday,         ///< "M3.5.0": month, week (5 is the last), weekday (0 is Sunday)
    };
    Form form = Form::dayFromZero;
    unsigned day = 0;  ///< or weekday
    unsigned month = 0;
    unsigned week = 0;
    std::int64_t time = 7200;  ///< seconds after the day's midnight, up to a week either way

    /// The seconds from 1970 until then by clocks that go by UTC.
    std::int64_t inYear(int number) const noexcept;
};

class ZoneRule {
public:
    /// Nothing when the text is no such rule. A zone with daylight saving time must tell when that
    /// begins and ends.
    static std::optional<ZoneRule> parse(std::string_view text);

    /// How clocks go at a moment, in seconds of UTC from 1970 on.
    const LocalTimeType& typeAt(std::int64_t seconds) const noexcept;

private:
    struct Daylight {
        LocalTimeType type;
        YearlyMoment begin;
        YearlyMoment end;
    };
    LocalTimeType standard_;
    std::optional<Daylight> daylight_;
};

}  // namespace brackwell
