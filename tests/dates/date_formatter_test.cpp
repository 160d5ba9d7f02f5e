// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <vector>

#include "dates/date_samples.h"
#include "dates/environment_guard.h"
#include "dates/locale_folder.h"

using namespace brackwell;
using namespace brackwell::tests;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {

/// Checks for dates of all years that what is written is read as the date, cut to what the pattern shows.
void checkRoundTrip(const std::string& pattern, milliseconds unit, const TimeZone& zone = {}) {
    CAPTURE(pattern);
    const PatternDateFormatter formatter(pattern, zone, "C");
    RandomDates dates(utc(1, 1, 2), utc(9999, 12, 31), 42);
    for (int i = 0; i < 5000; ++i) {
        const Date date = dates.next();
        const Date cut = date - (date.time_since_epoch() % unit + unit) % unit;
        const std::string text = formatter.stringFromDate(date);
        const auto read = formatter.dateFromString(text);
        if (!read || *read != cut) FAIL(text << " of " << dateDescription(date));
        if (formatter.stringFromDate(*read) != text) FAIL("again: " << text);
    }
}

}  // namespace

TEST_CASE("a formatter tells what it was made of") {
    const PatternDateFormatter plain("dd.MM.yyyy");
    CHECK(plain.pattern() == "dd.MM.yyyy");
    CHECK(plain.locale().empty());
    CHECK(plain.timeZone().offsetAt(utc(2024, 7, 1)).fromUTC == seconds(0));
    const PatternDateFormatter full("MMM", TimeZone::fixed(hours(2)), "de_DE");
    CHECK(full.pattern() == "MMM");
    CHECK(full.locale() == "de_DE");
    CHECK(full.timeZone().offsetAt(utc(2024, 7, 1)).fromUTC == hours(2));
}

TEST_CASE("a formatter is used through its interface") {
    const std::shared_ptr<const DateFormatter> formatter =
        std::make_shared<PatternDateFormatter>("dd.MM.yyyy");
    CHECK(formatter->dateFromString("31.12.2024") == utc(2024, 12, 31));
    CHECK(formatter->stringFromDate(utc(2024, 12, 31)) == "31.12.2024");
}

TEST_CASE("copies of a formatter are independent, and one that was moved from stays usable") {
    PatternDateFormatter first("yyyy");
    PatternDateFormatter second(first);
    first = PatternDateFormatter("MM");
    CHECK(first.pattern() == "MM");
    CHECK(second.pattern() == "yyyy");
    const PatternDateFormatter third(std::move(second));
    CHECK(third.pattern() == "yyyy");
    CHECK(second.dateFromString("2024") == utc(2024, 1, 1));  // NOLINT: what is tested
    second = std::move(first);
    CHECK(second.pattern() == "MM");
    CHECK(first.pattern() == "MM");  // NOLINT: what is tested
    PatternDateFormatter& self = second;
    second = self;
    CHECK(second.pattern() == "MM");
}

TEST_CASE("what is written is read as the same date, in all years") {
    constexpr milliseconds day = hours(24);
    checkRoundTrip("yyyyMMddHHmmss.SSS[ZZZ:zz]", milliseconds(1));
    checkRoundTrip("yyyyMMddHHmmss[ZZZ:zz]", seconds(1));
    checkRoundTrip("yyyyMMddHHmmss.SSS", milliseconds(1));
    checkRoundTrip("yyyyMMddHHmmss", seconds(1));
    checkRoundTrip("yyyyMMdd", day);
    checkRoundTrip("yyyyDDD", day);
    checkRoundTrip("d.M.y", day);
    checkRoundTrip("EEEE, d. MMMM y", day);
    checkRoundTrip("EEE, dd LLL yyyy KK:mm:ss.S a Z", milliseconds(100));
    checkRoundTrip("h:m:s.SSSSSS a 'on' M/d/y", milliseconds(1));
    checkRoundTrip("EEEEE EEEEEE k'h'mm ss 'D'D y XXXXX", seconds(1));
    checkRoundTrip("yyyy-MM-dd'T'HH:mm:ss.SSSX", milliseconds(1));
    checkRoundTrip("yyyyMMdd ZHHmmss.SSS", milliseconds(1), TimeZone::fixed(std::chrono::minutes(-210)));
}

TEST_CASE("what is written with an offset is read as the same date, in every zone") {
    for (const std::string name : {"Europe/Berlin", "America/New_York", "Asia/Kolkata", "Africa/Casablanca",
                                   "Australia/Lord_Howe", "Pacific/Apia"}) {
        CAPTURE(name);
        const TimeZone zone = zoneNamed(name);
        for (const std::string pattern :
             {"yyyyMMddHHmmss.SSS Z", "y-M-d h:mm:ss.SSS a ZZZZ", "yyyy D HH:mm:ss.SSS ZZZZZ",
              "yyyy-MM-dd'T'HH:mm:ss.SSSXXXX", "dd LLLL yyyy HH:mm:ss.SSS xxxxx"})
            checkRoundTrip(pattern, milliseconds(1), zone);
    }
}

TEST_CASE("an abbreviation tells the two times apart that clocks show twice") {
    for (const std::string name : {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe"}) {
        CAPTURE(name);
        const PatternDateFormatter formatter("yyyy-MM-dd HH:mm z", zoneNamed(name), "C");
        for (Date date = utc(2023, 1, 1); date < utc(2026, 1, 1); date += std::chrono::minutes(30)) {
            const std::string text = formatter.stringFromDate(date);
            if (formatter.dateFromString(text) != date) FAIL(text);
        }
    }
}

TEST_CASE("the system's zone is asked at each use") {
    const PatternDateFormatter formatter("yyyyMMdd", TimeZone::system(), "de_DE");
    const Date lateEvening = utc(2024, 1, 31, {23, 30});
    struct Row {
        std::string zone;
        std::string text;
    };
    for (const Row& row : std::vector<Row>{{"UTC0", "20240131"},
                                           {"CET-1CEST,M3.5.0,M10.5.0/3", "20240201"},
                                           {"PST8PDT,M3.2.0,M11.1.0", "20240131"},
                                           {"Asia/Kolkata", "20240201"}}) {
        CAPTURE(row.zone);
        const EnvironmentGuard guard("TZ", row.zone);
        CHECK(formatter.stringFromDate(lateEvening) == row.text);
        const auto midnight = formatter.dateFromString(row.text);
        REQUIRE(midnight);
        CHECK(formatter.stringFromDate(*midnight) == row.text);
        CHECK(formatter.stringFromDate(*midnight - milliseconds(1)) != row.text);
    }
}

TEST_CASE("names are written and read in the language of the locale") {
    LocaleFolder folder;
    const bool made = folder.add("de_DE", "UTF-8", "de_DE.UTF-8");
    if (!made) MESSAGE("No locale could be made on this machine; only English is tested.");
    const PatternDateFormatter formatter("EEEE, d. MMMM yyyy", {}, "de_DE");
    const Date date = utc(2024, 3, 5);
    const std::string text = formatter.stringFromDate(date);
    CHECK(text == (made ? "Dienstag, 5. M\xC3\xA4rz 2024" : "Tuesday, 5. March 2024"));
    CHECK(formatter.dateFromString(text) == date);
    CHECK(formatter.dateFromString(made ? "DIENSTAG, 5. m\xC3\xA4rz 2024" : "TUESDAY, 5. march 2024") ==
          date);
    CHECK(formatter.dateFromString(made ? "Tuesday, 5. March 2024" : "Dienstag, 5. M\xC3\xA4rz 2024") ==
          std::nullopt);
}

TEST_CASE("the longest name of a language wins") {
    LocaleFolder folder;
    if (!folder.add("vi_VN", "UTF-8", "vi_VN.UTF-8")) {
        MESSAGE("No locale could be made on this machine.");
        return;
    }
    // The tenth month's name begins those of the two after it.
    const PatternDateFormatter formatter("MMMM yyyy", {}, "vi_VN");
    for (unsigned month = 1; month <= 12; ++month) {
        const std::string text = formatter.stringFromDate(utc(2024, month, 1));
        CAPTURE(text);
        CHECK(formatter.dateFromString(text) == utc(2024, month, 1));
    }
}

TEST_CASE("a locale that the system does not have is English") {
    const PatternDateFormatter formatter("EEE, d MMM yyyy h a", {}, "xx_NOWHERE");
    CHECK(formatter.stringFromDate(utc(2024, 3, 5, {15})) == "Tue, 5 Mar 2024 3 PM");
    CHECK(formatter.dateFromString("Tue, 5 Mar 2024 3 PM") == utc(2024, 3, 5, {15}));
}

TEST_CASE("arbitrary patterns and texts do no harm") {
    std::mt19937 engine(11);
    const std::string letters = "yMLdDEahHKkmsSzZXx'G .:-+0915AMPZGTUCa\xC3\xA4\xFF";
    const auto randomText = [&engine, &letters](unsigned most) {
        std::string text;
        for (auto size = engine() % most; size > 0; --size) text += letters[engine() % letters.size()];
        return text;
    };
    const Date date = utc(2024, 12, 31, {23, 59, 59, 999});
    int read = 0;
    for (int i = 0; i < 20000; ++i) {
        const PatternDateFormatter formatter(randomText(12), TimeZone::fixed(hours(5)), "C");
        const std::string text = formatter.stringFromDate(date);
        for (const std::string& input : {text, randomText(12), text.substr(0, text.size() / 2)}) {
            const auto result = formatter.dateFromString(input);
            if (!result) continue;
            ++read;
            REQUIRE(*result >= utc(1, 1, 1));
            REQUIRE(*result < utc(10000, 1, 1));
        }
    }
    CHECK(read > 1000);
}
