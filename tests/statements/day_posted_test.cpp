// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>
#include <doctest/doctest.h>

#include "support/shown.h"
#include "support/time_zone_guard.h"

using namespace brackwell;
using namespace brackwell::tests;
using namespace std::chrono;

namespace {

std::shared_ptr<const TvOFXStatementTransaction> dated(std::string_view date) {
    return TvOFXStatementTransaction::initWithParserDict(ParseDictionary{{"DTPOSTED", date}});
}

}  // namespace

TEST_CASE("the day of a transaction is that of UTC, unless another zone is given") {
    struct Row {
        std::string_view date;
        hours offset;
        year_month_day day;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"20240131", hours(0), 2024y / 1 / 31},
             {"20240131235959", hours(0), 2024y / 1 / 31},
             {"20240131235959", hours(1), 2024y / 2 / 1},
             {"20240301", hours(-5), 2024y / 2 / 29},
             {"20240101003000", hours(-1), 2023y / 12 / 31},
             {"19691231", hours(0), 1969y / 12 / 31},
         }) {
        CAPTURE(row.date);
        CHECK(dated(row.date)->dayPosted(TimeZone::fixed(row.offset)) == row.day);
        if (row.offset == hours(0)) CHECK(dated(row.date)->dayPosted() == row.day);
    }
}

TEST_CASE("the day of a transaction in the system's zone is that of its sort key") {
    for (const char* zone : {"UTC", "<-05>5", "<+09>-9"}) {
        CAPTURE(zone);
        const TimeZoneGuard guard(zone);
        const auto transaction =
            TvOFXStatementTransaction::initWithParserDict(ParseDictionary{{"DTPOSTED", "20240301180000"}});
        const auto day = transaction->dayPosted(TimeZone::system());
        REQUIRE(day);
        const auto number = static_cast<int>(day->year()) * 10000 +
                            static_cast<int>(static_cast<unsigned>(day->month()) * 100) +
                            static_cast<int>(static_cast<unsigned>(day->day()));
        CHECK(shown(transaction->sort_date()) == std::to_string(number));
    }
}

TEST_CASE("a transaction without a date has no day, and one outside of the calendar neither") {
    CHECK_FALSE(TvOFXStatementTransaction().dayPosted());
    CHECK_FALSE(dated("soon")->dayPosted());
    TvOFXStatementTransaction transaction;
    const auto dayAt = [&](Date date) {
        transaction.setDatePosted(date);
        return transaction.dayPosted();
    };
    CHECK(dayAt(sys_days(1y / 1 / 1)) == 1y / 1 / 1);
    CHECK_FALSE(dayAt(sys_days(1y / 1 / 1) - 1ms));
    CHECK(dayAt(sys_days(9999y / 12 / 31)) == 9999y / 12 / 31);
    CHECK_FALSE(dayAt(sys_days(10000y / 1 / 1)));
    CHECK_FALSE(dayAt(Date::max()));
    CHECK_FALSE(dayAt(Date::min()));
}
