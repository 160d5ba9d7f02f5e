// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <chrono>
#include <random>
#include <string>

namespace brackwell::tests {

/// The time of a day, as tests write it.
struct Clock {
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;

    std::chrono::milliseconds sinceMidnight() const {
        return std::chrono::hours(hour) + std::chrono::minutes(minute) + std::chrono::seconds(second) +
               std::chrono::milliseconds(millisecond);
    }
};

inline Date utc(int year, unsigned month, unsigned day, Clock clock = {}) {
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                           std::chrono::day(day)};
    return std::chrono::sys_days(date) + clock.sinceMidnight();
}

using LocalDate = std::chrono::local_time<std::chrono::milliseconds>;

inline LocalDate local(int year, unsigned month, unsigned day, Clock clock = {}) {
    return LocalDate(utc(year, month, day, clock).time_since_epoch());
}

/// An even spread of dates between two.
class RandomDates {
public:
    RandomDates(Date first, Date last, unsigned seed)
        : engine_(seed), count_(first.time_since_epoch().count(), last.time_since_epoch().count()) {}
    Date next() { return Date(std::chrono::milliseconds(count_(engine_))); }

private:
    std::mt19937_64 engine_;
    std::uniform_int_distribution<std::int64_t> count_;
};

/// A zone of the system's zone files.
inline TimeZone zoneNamed(const std::string& name) {
    CAPTURE(name);
    const auto zone = TimeZone::named(name);
    REQUIRE_MESSAGE(zone, "the system's zone files are needed");
    return *zone;
}

}  // namespace brackwell::tests
