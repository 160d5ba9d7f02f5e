// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <vector>

#include "dates/date_samples.h"

using namespace brackwell;
using namespace brackwell::tests;

TEST_CASE("the current date is the moment of the call") {
    using std::chrono::system_clock;
    const auto before = std::chrono::floor<std::chrono::milliseconds>(system_clock::now());
    const Date now = currentDate();
    const auto after = system_clock::now();
    CHECK(now >= before);
    CHECK(now <= after);
}

TEST_CASE("a date's default text is its time in UTC") {
    struct Row {
        Date date;
        std::string text;
    };
    const std::vector<Row> rows = {
        {utc(2024, 1, 31, {17, 5}), "2024-01-31 17:05:00 +0000"},
        {utc(2000, 2, 29, {23, 59, 59, 999}), "2000-02-29 23:59:59 +0000"},
        {utc(1970, 1, 1), "1970-01-01 00:00:00 +0000"},
        {utc(1969, 12, 31, {23, 59, 59, 999}), "1969-12-31 23:59:59 +0000"},
        {utc(1, 1, 1), "0001-01-01 00:00:00 +0000"},
        {utc(9999, 12, 31, {23, 59, 59}), "9999-12-31 23:59:59 +0000"},
        {utc(10000, 1, 1), "10000-01-01 00:00:00 +0000"},
        {utc(0, 12, 31), "0000-12-31 00:00:00 +0000"},
        {utc(-44, 3, 15), "-0044-03-15 00:00:00 +0000"},
        {Date::min(), "-292275055-05-16 16:47:04 +0000"},
        {Date::max(), "292278994-08-17 07:12:55 +0000"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.text);
        CHECK(dateDescription(row.date) == row.text);
    }
}
