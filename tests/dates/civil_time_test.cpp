// SPDX-License-Identifier: Apache-2.0
#include "dates/civil_time.h"

#include <doctest/doctest.h>

#include "dates/date_samples.h"

using namespace brackwell;
using namespace brackwell::tests;
using std::chrono::seconds;

TEST_CASE("division rounds towards negative infinity and leaves what is not negative") {
    for (std::int64_t divisor : {1, 2, 7, 1000}) {
        for (std::int64_t number = -2500; number <= 2500; ++number) {
            CAPTURE(number);
            CAPTURE(divisor);
            const std::int64_t rest = floorRemainder(number, divisor);
            REQUIRE(floorDivide(number, divisor) * divisor + rest == number);
            REQUIRE(rest >= 0);
            REQUIRE(rest < divisor);
        }
    }
}

TEST_CASE("calendar and clock at a date") {
    const CivilTime civil = civilTime(utc(2024, 12, 31, {23, 59, 58, 7}), seconds(0));
    CHECK(civil.year == 2024);
    CHECK(civil.month == 12);
    CHECK(civil.day == 31);
    CHECK(civil.dayOfYear == 366);
    CHECK(civil.weekday == 2);
    CHECK(civil.hour == 23);
    CHECK(civil.minute == 59);
    CHECK(civil.second == 58);
    CHECK(civil.millisecond == 7);
}

TEST_CASE("an offset leads into the day that clocks show") {
    CHECK(civilTime(utc(2024, 2, 29, {23, 30}), seconds(3600)).month == 3);
    CHECK(civilTime(utc(2024, 1, 1), seconds(-1)).year == 2023);
    CHECK(civilTime(utc(2024, 1, 1), seconds(-1)).second == 59);
}

TEST_CASE("dates before 1970 count their milliseconds forwards") {
    const CivilTime civil = civilTime(Date(std::chrono::milliseconds(-1)), seconds(0));
    CHECK(civil.year == 1969);
    CHECK(civil.second == 59);
    CHECK(civil.millisecond == 999);
}

TEST_CASE("every day of the first 10,000 years has its place in the calendar") {
    using namespace std::chrono;
    for (sys_days day = year(-5) / January / 1; day < sys_days(year(10005) / January / 1); day += days(1)) {
        const year_month_day expected(day);
        const CivilTime civil = civilTime(day, seconds(0));
        const bool same = civil.year == int{expected.year()} && civil.month == unsigned{expected.month()} &&
                          civil.day == unsigned{expected.day()} &&
                          civil.weekday == weekday(day).c_encoding() &&
                          day == sys_days(expected.year() / January / 1) + days(civil.dayOfYear - 1);
        if (!same) FAIL("day " << day.time_since_epoch().count());
    }
}

TEST_CASE("the first and the last date of all have calendar and clock") {
    const CivilTime first = civilTime(Date::min(), seconds(-86399));
    CHECK(first.year == -292275055);
    CHECK(first.millisecond == 192);
    const CivilTime last = civilTime(Date::max(), seconds(86399));
    CHECK(last.year == 292278994);
    CHECK(last.millisecond == 807);
}

TEST_CASE("numbers are padded with zeros and never cut") {
    std::string text;
    appendPadded(text, 7, 3);
    appendPadded(text, 1234, 2);
    appendYear(text, -44, 4);
    appendYear(text, 0, 1);
    CHECK(text == "0071234-00440");
}
