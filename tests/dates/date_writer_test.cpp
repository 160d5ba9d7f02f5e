// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <vector>

#include "dates/date_samples.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

struct WriterRow {
    std::string pattern;
    std::string text;
};

void checkTexts(Date date, const std::vector<WriterRow>& rows, const TimeZone& zone = {}) {
    for (const WriterRow& row : rows) {
        CAPTURE(row.pattern);
        CHECK(PatternDateFormatter(row.pattern, zone, "C").stringFromDate(date) == row.text);
    }
}

}  // namespace

TEST_CASE("every letter is written in each of its widths") {
    checkTexts(
        utc(2024, 3, 5, {9, 7, 4, 56}),
        {{"y", "2024"},    {"yy", "24"},    {"yyy", "2024"},  {"yyyy", "2024"},    {"yyyyyy", "002024"},
         {"M", "3"},       {"MM", "03"},    {"MMM", "Mar"},   {"MMMM", "March"},   {"MMMMM", "M"},
         {"L", "3"},       {"LL", "03"},    {"LLL", "Mar"},   {"LLLL", "March"},   {"LLLLL", "M"},
         {"d", "5"},       {"dd", "05"},    {"ddd", "005"},   {"D", "65"},         {"DDD", "065"},
         {"E", "Tue"},     {"EE", "Tue"},   {"EEE", "Tue"},   {"EEEE", "Tuesday"}, {"EEEEE", "T"},
         {"EEEEEE", "Tu"}, {"a", "AM"},     {"aaaa", "AM"},   {"aaaaa", "AM"},     {"h", "9"},
         {"hh", "09"},     {"H", "9"},      {"HH", "09"},     {"K", "9"},          {"KK", "09"},
         {"k", "9"},       {"kk", "09"},    {"m", "7"},       {"mm", "07"},        {"s", "4"},
         {"ss", "04"},     {"S", "0"},      {"SS", "05"},     {"SSS", "056"},      {"SSSSSS", "056000"},
         {"z", "UTC"},     {"zzzz", "GMT"}, {"Z", "+0000"},   {"ZZZZZ", "Z"},      {"X", "Z"},
         {"XXX", "Z"},     {"x", "+00"},    {"xxx", "+00:00"}});
}

TEST_CASE("the clocks of 12 and 24 hours at each of their ends") {
    const std::string pattern = "h H K k a";
    const std::vector<std::pair<int, std::string>> rows = {{0, "12 0 0 24 AM"},    {1, "1 1 1 1 AM"},
                                                           {11, "11 11 11 11 AM"}, {12, "12 12 0 12 PM"},
                                                           {13, "1 13 1 13 PM"},   {23, "11 23 11 23 PM"}};
    for (const auto& row : rows) {
        CAPTURE(row.first);
        checkTexts(utc(2024, 1, 1, {row.first, 59, 59, 999}), {{pattern, row.second}});
    }
}

TEST_CASE("fractions of the second are cut, not rounded") {
    checkTexts(utc(2024, 1, 1, {0, 0, 0, 999}), {{"s.S", "0.9"}, {"s.SS", "0.99"}, {"s.SSS", "0.999"}});
    checkTexts(Date(std::chrono::milliseconds(-1)), {{"yyyy-MM-dd HH:mm:ss.SSS", "1969-12-31 23:59:59.999"}});
}

TEST_CASE("years are written whole, or in two digits") {
    checkTexts(utc(1, 1, 1), {{"y", "1"}, {"yy", "01"}, {"yyyy", "0001"}});
    checkTexts(utc(1999, 1, 1), {{"y", "1999"}, {"yy", "99"}});
    checkTexts(utc(2000, 1, 1), {{"yy", "00"}});
    checkTexts(utc(12345, 1, 1), {{"y", "12345"}, {"yy", "45"}, {"yyyy", "12345"}});
    checkTexts(utc(0, 1, 1), {{"y", "0"}, {"yyyy", "0000"}, {"yy", "00"}});
    checkTexts(utc(-44, 3, 15), {{"y", "-44"}, {"yyyy", "-0044"}, {"yy", "44"}});
    checkTexts(Date::min(), {{"y-MM-dd HH:mm:ss.SSS", "-292275055-05-16 16:47:04.192"}});
    checkTexts(Date::max(), {{"y-MM-dd HH:mm:ss.SSS", "292278994-08-17 07:12:55.807"}});
}

TEST_CASE("the last day of a leap year is its 366th") {
    checkTexts(utc(2024, 12, 31), {{"D", "366"}});
    checkTexts(utc(2023, 12, 31), {{"D", "365"}});
    checkTexts(utc(1900, 12, 31), {{"DDD", "365"}});
}

TEST_CASE("all months and weekdays have their names") {
    const std::vector<std::string> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    for (unsigned month = 1; month <= 12; ++month)
        checkTexts(utc(2024, month, 1), {{"MMM", months[month - 1]}});
    const std::vector<std::string> weekdays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    for (unsigned day = 0; day < 7; ++day) checkTexts(utc(2024, 9, 1 + day), {{"E", weekdays[day]}});
}

TEST_CASE("text between the letters is written as it stands") {
    checkTexts(utc(2024, 3, 5, {9}), {{"", ""},
                                      {"h 'o''clock'", "9 o'clock"},
                                      {"''yy", "'24"},
                                      {"y\xE5\xB9\xB4M\xE6\x9C\x88",
                                       "2024\xE5\xB9\xB4"
                                       "3\xE6\x9C\x88"},
                                      {"d 'of MMMM", "5 of MMMM"},
                                      {"[dd/MM]", "[05/03]"},
                                      {"'yyyy'", "yyyy"}});
}

TEST_CASE("a letter without meaning is written as it stands") {
    checkTexts(utc(2024, 3, 5), {{"yyyy G", "2024 G"},
                                 {"QQQ yyyy", "QQQ 2024"},
                                 {"MMMMMM", "MMMMMM"},
                                 {"EEEEEEE d", "EEEEEEE 5"},
                                 {"ZZZZZZ", "ZZZZZZ"},
                                 {"YYYY-ww", "YYYY-ww"}});
}

TEST_CASE("a date is written as clocks of the zone show it") {
    const Date late = utc(2023, 12, 31, {23, 30});
    checkTexts(late, {{"yyyy-MM-dd HH:mm Z", "2024-01-01 00:30 +0100"}},
               TimeZone::fixed(std::chrono::hours(1)));
    checkTexts(late, {{"yyyy-MM-dd HH:mm z", "2023-12-31 15:30 GMT-8"}},
               TimeZone::fixed(std::chrono::hours(-8)));
    const auto kolkata = TimeZone::named("Asia/Kolkata");
    REQUIRE(kolkata);
    checkTexts(late, {{"yyyy-MM-dd HH:mm z|zzzz|XXX", "2024-01-01 05:00 IST|GMT+05:30|+05:30"}}, *kolkata);
    const auto berlin = TimeZone::named("Europe/Berlin");
    REQUIRE(berlin);
    checkTexts(utc(2024, 7, 1), {{"HH:mm z", "02:00 CEST"}}, *berlin);
    checkTexts(utc(2100, 7, 1), {{"HH:mm z", "02:00 CEST"}}, *berlin);
    checkTexts(utc(1890, 1, 1), {{"HH:mm:ss z Z", "00:53:28 LMT +005328"}}, *berlin);
    const auto lordHowe = TimeZone::named("Australia/Lord_Howe");
    REQUIRE(lordHowe);
    checkTexts(utc(2024, 7, 1), {{"HH:mm z", "10:30 GMT+10:30"}}, *lordHowe);
}

TEST_CASE("the system's own patterns are written") {
    checkTexts(utc(2024, 1, 31, {15, 4, 5, 6}),
               {{"yyyyMMddHHmmss.SSS[ZZZ:zz]", "20240131150405.006[+0000:UTC]"},
                {"yyyyMMddHHmmss[ZZZ:zz]", "20240131150405[+0000:UTC]"},
                {"yyyyMMddHHmmss.SSS", "20240131150405.006"},
                {"yyyyMMddHHmmss", "20240131150405"},
                {"yyyyMMdd", "20240131"},
                {"yyyyMMddhhmmss", "20240131030405"}});
    checkTexts(utc(2024, 1, 31), {{"yyyyMMddhhmmss", "20240131120000"}});
}
