// SPDX-License-Identifier: Apache-2.0
#include "dates/zone_rule.h"

#include <doctest/doctest.h>
#include <time.h>  // NOLINT(modernize-deprecated-headers): localtime_r is of POSIX

#include <vector>

#include "dates/civil_time.h"
#include "dates/date_samples.h"
#include "dates/environment_guard.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

struct RuleRow {
    std::string rule;
    Date moment;
    std::int32_t fromUTC;
    std::string abbreviation;
};

void checkRules(const std::vector<RuleRow>& rows) {
    for (const RuleRow& row : rows) {
        CAPTURE(row.rule);
        CAPTURE(dateDescription(row.moment));
        const auto rule = ZoneRule::parse(row.rule);
        REQUIRE(rule);
        const LocalTimeType& type = rule->typeAt(secondsOf(row.moment));
        CHECK(type.fromUTC == row.fromUTC);
        CHECK(type.abbreviation == row.abbreviation);
    }
}

constexpr std::int32_t kHour = 3600;
const std::string kBerlin = "CET-1CEST,M3.5.0,M10.5.0/3";

}  // namespace

TEST_CASE("a rule without daylight saving time holds always") {
    checkRules({{"UTC0", utc(2024, 1, 1), 0, "UTC"},
                {"EST5", utc(1, 1, 1), -5 * kHour, "EST"},
                {"IST-5:30", utc(2024, 7, 1), 5 * kHour + 1800, "IST"},
                {"<+01>-1", utc(9999, 7, 1), kHour, "+01"},
                {"<-03>+3:00:01", utc(2024, 7, 1), -3 * kHour - 1, "-03"},
                {"ABC-24:59:59", utc(2024, 7, 1), 25 * kHour - 1, "ABC"}});
}

TEST_CASE("clocks change at the very second that a rule tells") {
    checkRules({{kBerlin, utc(2024, 3, 31, {0, 59, 59, 999}), kHour, "CET"},
                {kBerlin, utc(2024, 3, 31, {1}), 2 * kHour, "CEST"},
                {kBerlin, utc(2024, 10, 27, {0, 59, 59, 999}), 2 * kHour, "CEST"},
                {kBerlin, utc(2024, 10, 27, {1}), kHour, "CET"},
                {"EST5EDT,M3.2.0,M11.1.0", utc(2024, 3, 10, {6, 59, 59}), -5 * kHour, "EST"},
                {"EST5EDT,M3.2.0,M11.1.0", utc(2024, 3, 10, {7}), -4 * kHour, "EDT"},
                {"EST5EDT,M3.2.0,M11.1.0", utc(2024, 11, 3, {5, 59, 59}), -4 * kHour, "EDT"},
                {"EST5EDT,M3.2.0,M11.1.0", utc(2024, 11, 3, {6}), -5 * kHour, "EST"}});
}

TEST_CASE("summer of the southern half of the earth reaches over the end of the year") {
    const std::string lordHowe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";
    checkRules({{lordHowe, utc(2024, 12, 31, {23}), 11 * kHour, "+11"},
                {lordHowe, utc(2025, 1, 1, {12}), 11 * kHour, "+11"},
                {lordHowe, utc(2025, 4, 5, {14, 59, 59}), 11 * kHour, "+11"},
                {lordHowe, utc(2025, 4, 5, {15}), 10 * kHour + 1800, "+1030"},
                {lordHowe, utc(2025, 10, 4, {15, 29, 59}), 10 * kHour + 1800, "+1030"},
                {lordHowe, utc(2025, 10, 4, {15, 30}), 11 * kHour, "+11"}});
}

TEST_CASE("days of a rule count with or without 29 February") {
    checkRules({{"AAA0BBB,J60/0,J300", utc(2024, 2, 29, {23, 59, 59}), 0, "AAA"},
                {"AAA0BBB,J60/0,J300", utc(2024, 3, 1), kHour, "BBB"},
                {"AAA0BBB,J60/0,J300", utc(2023, 3, 1), kHour, "BBB"},
                {"AAA0BBB,J59/0,J300", utc(2024, 2, 28), kHour, "BBB"},
                {"AAA0BBB,59/0,300", utc(2024, 2, 28, {23, 59, 59}), 0, "AAA"},
                {"AAA0BBB,59/0,300", utc(2024, 2, 29), kHour, "BBB"},
                {"AAA0BBB,59/0,300", utc(2023, 3, 1), kHour, "BBB"},
                {"AAA0BBB,0/0,1/1", utc(2023, 1, 1, {23, 59, 59}), kHour, "BBB"},
                {"AAA0BBB,0/0,1/1", utc(2023, 1, 2), 0, "AAA"}});
}

TEST_CASE("times of a rule reach up to a week to both sides of their day") {
    checkRules({{"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", utc(2024, 3, 31, {0, 59, 59}), -2 * kHour, "-02"},
                {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", utc(2024, 3, 31, {1}), -1 * kHour, "-01"},
                {"EET-2EEST,M3.4.4/50,M10.4.4/50", utc(2030, 3, 29, {23, 59, 59}), 2 * kHour, "EET"},
                {"EET-2EEST,M3.4.4/50,M10.4.4/50", utc(2030, 3, 30), 3 * kHour, "EEST"},
                {"AAA0BBB,J365/167,J100", utc(2025, 1, 6, {22, 59, 59}), 0, "AAA"},
                {"AAA0BBB,J365/167,J100", utc(2025, 1, 6, {23}), kHour, "BBB"},
                {"AAA0BBB,J100/0,J1/-167", utc(2024, 12, 24, {23, 59, 59}), kHour, "BBB"},
                {"AAA0BBB,J100/0,J1/-167", utc(2024, 12, 25), 0, "AAA"},
                {"AAA0BBB,J364/167,J365/167", utc(2025, 1, 2), 0, "AAA"},
                {"AAA0BBB,J364/167,J365/167", utc(2025, 1, 6), kHour, "BBB"}});
}

TEST_CASE("daylight saving time may be behind standard time, or last all year") {
    checkRules({{"IST-1GMT0,M10.5.0,M3.5.0/1", utc(2024, 1, 1), 0, "GMT"},
                {"IST-1GMT0,M10.5.0,M3.5.0/1", utc(2024, 7, 1), kHour, "IST"},
                {"XXX3EDT4,0/0,J365/23", utc(2024, 1, 1, {2, 59, 59}), -4 * kHour, "EDT"},
                {"XXX3EDT4,0/0,J365/23", utc(2024, 1, 1, {3}), -4 * kHour, "EDT"},
                {"XXX3EDT4,0/0,J365/23", utc(2024, 7, 1), -4 * kHour, "EDT"}});
}

TEST_CASE("a rule holds for the first and the last date of all") {
    const auto rule = ZoneRule::parse(kBerlin);
    REQUIRE(rule);
    CHECK(rule->typeAt(secondsOf(Date::min())).abbreviation == "CEST");  // in May
    CHECK(rule->typeAt(secondsOf(Date::max())).abbreviation == "CEST");  // in August
    CHECK(rule->typeAt(secondsOf(utc(9999, 12, 31))).abbreviation == "CET");
    CHECK(rule->typeAt(secondsOf(utc(-9999, 12, 31))).abbreviation == "CET");
}

TEST_CASE("what is no rule gives nothing") {
    const std::vector<std::string> texts = {
        "",
        "C-1",
        "CE-1",
        "CET",
        "CET-",
        "CET-25",
        "CET-1:60",
        "CET-1:00:60",
        "CET-1:",
        "CET-001:00:00:00",
        "<CET-1",
        "<>-1",
        "<+1>-1",
        "<C T>-1",
        "CET-1CEST",
        "CET-1CEST,",
        "CET-1CEST-2",
        "CET-1CEST,M3.5.0",
        "CET-1,M3.5.0,M10.5.0",
        "CET-1CEST,M3.5.0,M10.5.0,",
        "CET-1CEST,M3.5.0,M10.5.0/3 ",
        "CET-1CEST,M0.5.0,M10.5.0",
        "CET-1CEST,M13.5.0,M10.5.0",
        "CET-1CEST,M3.0.0,M10.5.0",
        "CET-1CEST,M3.6.0,M10.5.0",
        "CET-1CEST,M3.5.7,M10.5.0",
        "CET-1CEST,M3.5,M10.5.0",
        "CET-1CEST,J0,J300",
        "CET-1CEST,J366,J300",
        "CET-1CEST,366,300",
        "CET-1CEST,J10/168,J300",
        "CET-1CEST,J10/-168,J300",
        "CET-1CEST,J10/,J300",
        "CET-1CEST,J0010,J300",
        " CET-1",
        "CET -1",
        "CET--1",
        ":Europe/Berlin",
    };
    for (const std::string& text : texts) {
        CAPTURE(text);
        CHECK_FALSE(ZoneRule::parse(text));
    }
}

TEST_CASE("rules mean what they mean to the C library") {
    const std::vector<std::string> rules = {kBerlin,
                                            "EST5EDT,M3.2.0,M11.1.0",
                                            "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0",
                                            "AAA3BBB,J60/0,J300",
                                            "AAA-3BBB,J59/5:30:10,300/1",
                                            "AAA0BBB-1:30,M2.4.6/0,M9.1.3/22"};
    for (const std::string& text : rules) {
        CAPTURE(text);
        const EnvironmentGuard zone("TZ", text);
        ::tzset();
        const auto rule = ZoneRule::parse(text);
        REQUIRE(rule);
        // Before 1971 the C library does not apply them.
        RandomDates dates(utc(1971, 1, 1), utc(2500, 1, 1), 1);
        for (int i = 0; i < 20000; ++i) {
            const time_t moment = secondsOf(dates.next());
            struct tm local = {};
            REQUIRE(::localtime_r(&moment, &local) != nullptr);
            if (rule->typeAt(moment).fromUTC != local.tm_gmtoff) FAIL("at " << moment);
        }
    }
}
