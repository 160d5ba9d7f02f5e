// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <vector>

#include "dates/date_samples.h"
#include "dates/environment_guard.h"

using namespace brackwell;
using namespace brackwell::tests;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

namespace {

LocalDate shown(const TimeZone& zone, Date moment) {
    return LocalDate(moment.time_since_epoch() + zone.offsetAt(moment).fromUTC);
}

struct OffsetRow {
    std::string zone;
    Date moment;
    seconds fromUTC;
    std::string abbreviation;
};

const std::vector<OffsetRow> kOffsetRows = {
    {"UTC", utc(2024, 7, 1), hours(0), "UTC"},
    {"Europe/Berlin", utc(1890, 1, 1), seconds(3208), "LMT"},
    {"Europe/Berlin", utc(2024, 1, 1), hours(1), "CET"},
    {"Europe/Berlin", utc(2024, 7, 1), hours(2), "CEST"},
    {"Europe/Berlin", utc(2100, 7, 1), hours(2), "CEST"},
    {"Europe/Berlin", utc(2100, 12, 1), hours(1), "CET"},
    {"America/New_York", utc(1945, 6, 1), hours(-4), "EWT"},
    {"America/New_York", utc(2024, 3, 10, {6, 59, 59, 999}), hours(-5), "EST"},
    {"America/New_York", utc(2024, 3, 10, {7}), hours(-4), "EDT"},
    {"America/New_York", utc(9999, 12, 31), hours(-5), "EST"},
    {"Asia/Kolkata", utc(2024, 7, 1), minutes(330), "IST"},
    {"Asia/Kolkata", utc(1943, 7, 1), minutes(390), "+0630"},
    {"Australia/Lord_Howe", utc(2024, 1, 1), hours(11), "+11"},
    {"Australia/Lord_Howe", utc(2024, 7, 1), minutes(630), "+1030"},
    {"Africa/Casablanca", utc(2023, 1, 1), hours(1), "+01"},
    {"Africa/Casablanca", utc(2023, 4, 1), hours(0), "+00"},
    {"Europe/Dublin", utc(2024, 1, 1), hours(0), "GMT"},
    {"Pacific/Apia", utc(2011, 12, 30, {9, 59}), hours(-10), "-10"},
    {"Pacific/Apia", utc(2011, 12, 30, {10}), hours(14), "+14"},
};

}  // namespace

TEST_CASE("a zone of no further description is UTC") {
    for (const TimeZone& zone : {TimeZone(), TimeZone::utc(), TimeZone::fixed(seconds(0))}) {
        CHECK(zone.offsetAt(utc(2024, 7, 1)).fromUTC == seconds(0));
        CHECK(zone.offsetAt(utc(2024, 7, 1)).abbreviation == "UTC");
        CHECK(zone.fromLocal(local(2024, 7, 1, {1, 2, 3, 4})) == utc(2024, 7, 1, {1, 2, 3, 4}));
    }
}

TEST_CASE("a fixed offset holds always and is less than 24 hours") {
    struct Row {
        seconds asked;
        seconds fromUTC;
        std::string abbreviation;
    };
    const std::vector<Row> rows = {
        {hours(1), hours(1), "GMT+1"},
        {minutes(-210), minutes(-210), "GMT-3:30"},
        {seconds(-3600 - 1), seconds(-3601), "GMT-1:00:01"},
        {hours(24), seconds(86399), "GMT+23:59:59"},
        {hours(-24), seconds(-86399), "GMT-23:59:59"},
        {seconds::max(), seconds(86399), "GMT+23:59:59"},
        {seconds::min(), seconds(-86399), "GMT-23:59:59"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.abbreviation);
        const TimeZone zone = TimeZone::fixed(row.asked);
        for (const Date moment : {Date::min(), utc(1, 1, 1), utc(2024, 7, 1), Date::max()}) {
            CHECK(zone.offsetAt(moment).fromUTC == row.fromUTC);
            CHECK(zone.offsetAt(moment).abbreviation == row.abbreviation);
        }
        CHECK(zone.fromLocal(local(2024, 7, 1)) == utc(2024, 7, 1) - row.fromUTC);
    }
}

TEST_CASE("a named zone has the offset and the abbreviation of the moment") {
    for (const OffsetRow& row : kOffsetRows) {
        CAPTURE(row.zone);
        CAPTURE(dateDescription(row.moment));
        const TimeZone::Offset offset = zoneNamed(row.zone).offsetAt(row.moment);
        CHECK(offset.fromUTC == row.fromUTC);
        CHECK(offset.abbreviation == row.abbreviation);
    }
}

TEST_CASE("the system's zone has the offset and the abbreviation of the moment") {
    for (const OffsetRow& row : kOffsetRows) {
        CAPTURE(row.zone);
        CAPTURE(dateDescription(row.moment));
        const EnvironmentGuard guard("TZ", row.zone);
        const TimeZone::Offset offset = TimeZone::system().offsetAt(row.moment);
        CHECK(offset.fromUTC == row.fromUTC);
        CHECK(offset.abbreviation == row.abbreviation);
    }
}

TEST_CASE("the system's zone is the one that the process has at each use") {
    const TimeZone zone = TimeZone::system();
    const auto hoursAhead = [&zone](const std::string& name) {
        const EnvironmentGuard guard("TZ", name);
        return zone.offsetAt(utc(2024, 1, 1)).fromUTC / hours(1);
    };
    CHECK(hoursAhead("CET-1") == 1);
    CHECK(hoursAhead("EST5") == -5);
    CHECK(hoursAhead("UTC0") == 0);
    CHECK(hoursAhead("Asia/Tokyo") == 9);
}

TEST_CASE("no zone has a name that is no zone's") {
    for (const std::string name :
         {"", "Europe", "Europe/Nowhere", "europe/", "/etc/localtime", "../zoneinfo/UTC", "../../etc/passwd",
          "zone.tab", "CET-1CEST,M3.5.0,M10.5.0/3"}) {
        CAPTURE(name);
        CHECK_FALSE(TimeZone::named(name));
    }
}

TEST_CASE("zones are values whose copies share their rules") {
    auto zone = TimeZone::named("Europe/Berlin");
    REQUIRE(zone);
    TimeZone copy = TimeZone::fixed(hours(5));
    copy = *zone;
    zone.reset();
    CHECK(copy.offsetAt(utc(2024, 7, 1)).abbreviation == "CEST");
}

namespace {

struct LocalRow {
    std::string zone;
    LocalDate shown;
    Date moment;
};

const std::vector<LocalRow> kLocalRows = {
    {"Europe/Berlin", local(2024, 1, 1, {12}), utc(2024, 1, 1, {11})},
    {"Europe/Berlin", local(2024, 7, 1, {12}), utc(2024, 7, 1, {10})},
    // skipped from 02:00 to 03:00
    {"Europe/Berlin", local(2024, 3, 31, {1, 59, 59, 999}), utc(2024, 3, 31, {0, 59, 59, 999})},
    {"Europe/Berlin", local(2024, 3, 31, {2}), utc(2024, 3, 31, {1})},
    {"Europe/Berlin", local(2024, 3, 31, {2, 30}), utc(2024, 3, 31, {1, 30})},
    {"Europe/Berlin", local(2024, 3, 31, {2, 59, 59, 999}), utc(2024, 3, 31, {1, 59, 59, 999})},
    {"Europe/Berlin", local(2024, 3, 31, {3}), utc(2024, 3, 31, {1})},
    // shown twice from 02:00 to 03:00
    {"Europe/Berlin", local(2024, 10, 27, {1, 59, 59, 999}), utc(2024, 10, 26, {23, 59, 59, 999})},
    {"Europe/Berlin", local(2024, 10, 27, {2}), utc(2024, 10, 27)},
    {"Europe/Berlin", local(2024, 10, 27, {2, 59, 59, 999}), utc(2024, 10, 27, {0, 59, 59, 999})},
    {"Europe/Berlin", local(2024, 10, 27, {3}), utc(2024, 10, 27, {2})},
    // the same by the rule for later years
    {"Europe/Berlin", local(2100, 3, 28, {2, 30}), utc(2100, 3, 28, {1, 30})},
    {"Europe/Berlin", local(2100, 10, 31, {2, 30}), utc(2100, 10, 31, {0, 30})},
    {"America/New_York", local(2024, 3, 10, {2, 30}), utc(2024, 3, 10, {7, 30})},
    {"America/New_York", local(2024, 11, 3, {1, 30}), utc(2024, 11, 3, {5, 30})},
    {"Asia/Kolkata", local(2024, 7, 1), utc(2024, 6, 30, {18, 30})},
    // half an hour is skipped, and shown twice
    {"Australia/Lord_Howe", local(2024, 10, 6, {2, 15}), utc(2024, 10, 5, {15, 45})},
    {"Australia/Lord_Howe", local(2024, 4, 7, {1, 45}), utc(2024, 4, 6, {14, 45})},
    // back in March, forth in April
    {"Africa/Casablanca", local(2023, 3, 19, {2, 30}), utc(2023, 3, 19, {1, 30})},
    {"Africa/Casablanca", local(2023, 4, 23, {2, 30}), utc(2023, 4, 23, {2, 30})},
    // a whole day is skipped, and one shown twice
    {"Pacific/Apia", local(2011, 12, 30, {6}), utc(2011, 12, 30, {16})},
    {"Pacific/Kwajalein", local(1993, 8, 21, {12}), utc(1993, 8, 22, {0})},
    {"America/Juneau", local(1867, 10, 18, {16}), utc(1867, 10, 18, {0, 57, 41})},
};

void checkLocal(const TimeZone& zone, const LocalRow& row) {
    const Date moment = zone.fromLocal(row.shown);
    CHECK(dateDescription(moment) == dateDescription(row.moment));
    CHECK(moment == row.moment);
}

}  // namespace

TEST_CASE("a named zone finds the moment at which its clocks show a time") {
    for (const LocalRow& row : kLocalRows) {
        CAPTURE(row.zone);
        checkLocal(zoneNamed(row.zone), row);
    }
}

TEST_CASE("the system's zone finds the moment at which its clocks show a time") {
    for (const LocalRow& row : kLocalRows) {
        CAPTURE(row.zone);
        const EnvironmentGuard guard("TZ", row.zone);
        checkLocal(TimeZone::system(), row);
    }
}

namespace {

/// True when the zone finds, for what is shown at a moment, that moment or the earlier one that shows it.
bool isFoundAndEarliest(const TimeZone& zone, Date moment) {
    const LocalDate time = shown(zone, moment);
    const Date found = zone.fromLocal(time);
    return shown(zone, found) == time && found <= moment && moment - found <= hours(1) &&
           shown(zone, found - minutes(30)) != time && shown(zone, found - hours(1)) != time;
}

}  // namespace

TEST_CASE("near every change of its clocks a zone finds the earliest moment that shows a time") {
    for (const std::string name :
         {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe", "Africa/Casablanca"}) {
        CAPTURE(name);
        const TimeZone zone = zoneNamed(name);
        int changes = 0;
        for (Date day = utc(1995, 1, 1); day < utc(2045, 1, 1); day += hours(24)) {
            const seconds before = zone.offsetAt(day - hours(24)).fromUTC;
            if (before == zone.offsetAt(day + hours(48)).fromUTC) continue;
            ++changes;
            for (Date moment = day; moment < day + hours(24); moment += minutes(30))
                if (!isFoundAndEarliest(zone, moment)) FAIL(dateDescription(moment));
        }
        CHECK(changes >= 100);
    }
}

TEST_CASE("named zones and the system's agree") {
    for (const std::string name :
         {"Europe/Berlin", "America/New_York", "Asia/Kolkata", "Africa/Casablanca", "Australia/Lord_Howe",
          "Europe/Dublin", "America/Nuuk", "Asia/Gaza", "Etc/GMT+5"}) {
        CAPTURE(name);
        const EnvironmentGuard guard("TZ", name);
        const TimeZone zone = zoneNamed(name);
        const TimeZone system = TimeZone::system();
        RandomDates dates(utc(1850, 1, 1), utc(2600, 1, 1), 3);
        for (int i = 0; i < 5000; ++i) {
            const Date moment = dates.next();
            const LocalDate time(moment.time_since_epoch());
            if (zone.offsetAt(moment).fromUTC != system.offsetAt(moment).fromUTC ||
                zone.offsetAt(moment).abbreviation != system.offsetAt(moment).abbreviation ||
                zone.fromLocal(time) != system.fromLocal(time))
                FAIL(dateDescription(moment));
        }
    }
}

TEST_CASE("zones serve the first and the last date of all") {
    const EnvironmentGuard guard("TZ", "EST5EDT,M3.2.0,M11.1.0");
    for (const TimeZone& zone :
         {TimeZone(), TimeZone::fixed(hours(-23)), TimeZone::system(), zoneNamed("Europe/Berlin")}) {
        for (const Date moment : {Date::min(), Date::max()}) {
            CHECK(std::chrono::abs(zone.offsetAt(moment).fromUTC) < hours(26));
            const Date found = zone.fromLocal(LocalDate(moment.time_since_epoch()));
            CHECK((moment == Date::min() ? found - moment : moment - found) < hours(24 * 4));
        }
    }
}
