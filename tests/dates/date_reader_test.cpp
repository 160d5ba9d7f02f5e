// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <vector>

#include "dates/date_samples.h"

using namespace brackwell;
using namespace brackwell::tests;
using std::chrono::hours;

namespace {

std::string readWith(const std::string& pattern, const std::string& text, const TimeZone& zone) {
    const auto date = PatternDateFormatter(pattern, zone, "C").dateFromString(text);
    if (!date) return "nothing";
    const auto millisecond = date->time_since_epoch().count() % 1000;
    const std::string plain = dateDescription(*date).substr(0, 19);
    return millisecond == 0 ? plain : plain + "+" + std::to_string((millisecond + 1000) % 1000);
}

struct ReaderRow {
    std::string pattern;
    std::string text;
    std::string date;  // in UTC; without time it is midnight's
};

void checkReadings(const std::vector<ReaderRow>& rows, const TimeZone& zone = {}) {
    for (const ReaderRow& row : rows) {
        CAPTURE(row.pattern);
        CAPTURE(row.text);
        CHECK(readWith(row.pattern, row.text, zone) == row.date + (row.date.size() == 10 ? " 00:00:00" : ""));
    }
}

void checkNothing(const std::string& pattern, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        CAPTURE(pattern);
        CAPTURE(text);
        CHECK(readWith(pattern, text, TimeZone()) == "nothing");
    }
}

}  // namespace

TEST_CASE("every letter is read in each of its widths") {
    checkReadings({{"y", "2024", "2024-01-01"},
                   {"yy", "24", "2024-01-01"},
                   {"yyy", "0987", "0987-01-01"},
                   {"yyyy", "2024", "2024-01-01"},
                   {"M", "3", "2000-03-01"},
                   {"MM", "12", "2000-12-01"},
                   {"MMM", "Mar", "2000-03-01"},
                   {"MMMM", "September", "2000-09-01"},
                   {"MMMMM", "D", "2000-12-01"},
                   {"L", "3", "2000-03-01"},
                   {"LL", "03", "2000-03-01"},
                   {"LLL", "Oct", "2000-10-01"},
                   {"LLLL", "May", "2000-05-01"},
                   {"LLLLL", "F", "2000-02-01"},
                   {"d", "31", "2000-01-31"},
                   {"dd", "05", "2000-01-05"},
                   {"D", "60", "2000-02-29"},
                   {"DDD", "366", "2000-12-31"},
                   {"E", "Tue", "2000-01-01"},
                   {"EEE", "Sat", "2000-01-01"},
                   {"EEEE", "Wednesday", "2000-01-01"},
                   {"EEEEE", "T", "2000-01-01"},
                   {"EEEEEE", "We", "2000-01-01"},
                   {"a", "PM", "2000-01-01 12:00:00"},
                   {"aaaa", "AM", "2000-01-01"},
                   {"aaaaa", "PM", "2000-01-01 12:00:00"},
                   {"h a", "12 AM", "2000-01-01"},
                   {"h a", "11 PM", "2000-01-01 23:00:00"},
                   {"hh a", "12 PM", "2000-01-01 12:00:00"},
                   {"a h", "PM 1", "2000-01-01 13:00:00"},
                   {"h", "12", "2000-01-01"},
                   {"h", "11", "2000-01-01 11:00:00"},
                   {"H", "0", "2000-01-01"},
                   {"HH", "23", "2000-01-01 23:00:00"},
                   {"K a", "0 PM", "2000-01-01 12:00:00"},
                   {"KK a", "11 AM", "2000-01-01 11:00:00"},
                   {"k", "24", "2000-01-01"},
                   {"kk", "01", "2000-01-01 01:00:00"},
                   {"m", "59", "2000-01-01 00:59:00"},
                   {"mm", "07", "2000-01-01 00:07:00"},
                   {"s", "59", "2000-01-01 00:00:59"},
                   {"ss", "04", "2000-01-01 00:00:04"},
                   {"S", "5", "2000-01-01 00:00:00+500"},
                   {"SSS", "056", "2000-01-01 00:00:00+56"},
                   {"H z", "12 EST", "2000-01-01 17:00:00"},
                   {"H z", "12 GMT+1", "2000-01-01 11:00:00"},
                   {"H zzzz", "12 GMT-03:30", "2000-01-01 15:30:00"},
                   {"H Z", "12 +0100", "2000-01-01 11:00:00"},
                   {"H ZZZZ", "12 GMT", "2000-01-01 12:00:00"},
                   {"H ZZZZZ", "12 -01:00", "2000-01-01 13:00:00"},
                   {"H X", "12 Z", "2000-01-01 12:00:00"},
                   {"H X", "12 +0530", "2000-01-01 06:30:00"},
                   {"H XXX", "12 +05:30", "2000-01-01 06:30:00"},
                   {"H x", "12 -03", "2000-01-01 15:00:00"},
                   {"H xxxxx", "12 +00:53:28", "2000-01-01 11:06:32"}});
}

TEST_CASE("fields that a pattern does not name are those of the first moment of 2000") {
    checkReadings({{"", "", "2000-01-01"},
                   {"'day'", "day", "2000-01-01"},
                   {"dd.MM.", "29.02.", "2000-02-29"},
                   {"HH:mm", "10:30", "2000-01-01 10:30:00"},
                   {"yyyy", "1999", "1999-01-01"}});
    checkReadings({{"HH:mm", "10:30", "2000-01-01 09:30:00"}}, zoneNamed("Europe/Berlin"));
}

TEST_CASE("a text is read only as a whole") {
    checkNothing("yyyyMMdd",
                 {"", "2024013", "202401311", "20240131 ", " 20240131", "20240131\n", "2024013x", "x0240131",
                  "2024-01-31", std::string("20240131\0", 9), "+2024131", "2024 131"});
    checkNothing("dd.MM.yyyy",
                 {"31.12.", "31.12.2024.", "31.12,2024", "31. 12.2024", "31.12", "..", ".12.2024"});
    checkNothing("", {" ", "x"});
}

TEST_CASE("numbers beside each other take as many digits as letters") {
    checkReadings({{"yyyyMMdd", "20240131", "2024-01-31"},
                   {"yyyyMMdd", "00010101", "0001-01-01"},
                   {"yyyyMMdd", "99991231", "9999-12-31"},
                   {"yyMMdd", "491231", "2049-12-31"},
                   {"HHmmssSSS", "235959999", "2000-01-01 23:59:59+999"},
                   {"Hmm", "730", "2000-01-01 07:30:00"},
                   {"yyyyDDD", "2024366", "2024-12-31"},
                   {"HHmmss.SSS", "120000.500", "2000-01-01 12:00:00+500"},
                   {"HH'0'mm", "12034", "2000-01-01 12:34:00"}});
    checkNothing("HHmm", {"123", "12345", "1:34", "12 4"});
    checkNothing("yyyyMMdd", {"2024131", "120240131"});
}

TEST_CASE("a number on its own takes as many digits as there are") {
    checkReadings({{"dd.MM.yyyy", "1.2.2024", "2024-02-01"},
                   {"d.M.y", "01.02.2024", "2024-02-01"},
                   {"d.M.yyyy", "0000000031.0012.02024", "2024-12-31"},
                   {"d.M.yyyy", "1.1.7", "0007-01-01"},
                   {"d MMM yyyy", "31 Dec 2024", "2024-12-31"},
                   {"dMMMyyyy", "31Dec2024", "2024-12-31"},
                   {"H'h'm", "7h5", "2000-01-01 07:05:00"}});
    checkNothing("d.M.yyyy", {"1.1.20245", "1.1.4294969320", "1.1.18446744073709553640",
                              "1.1." + std::string(100000, '9'), "001.1." + std::string(100000, '0')});
}

TEST_CASE("a fraction of the second has as many digits as letters and is cut to milliseconds") {
    checkReadings({{"s.S", "7.5", "2000-01-01 00:00:07+500"},
                   {"s.SS", "7.05", "2000-01-01 00:00:07+50"},
                   {"s.SSS", "7.056", "2000-01-01 00:00:07+56"},
                   {"s.SSSSSS", "7.056999", "2000-01-01 00:00:07+56"},
                   {"ssSS", "0712", "2000-01-01 00:00:07+120"}});
    checkNothing("s.SSS",
                 {"7.", "7", "7.x", "7.-1", "7.5", "7.05", "7.0009", "7.1" + std::string(100000, '0')});
}

TEST_CASE("a year of two digits lies in 1950 to 2049") {
    checkReadings({{"yy", "00", "2000-01-01"},
                   {"yy", "49", "2049-01-01"},
                   {"yy", "50", "1950-01-01"},
                   {"yy", "99", "1999-01-01"},
                   {"dd.MM.yy", "31.12.24", "2024-12-31"},
                   {"yy", "7", "2007-01-01"}});
    checkNothing("yy", {"2024", "100", ""});
    checkReadings({{"y", "24", "0024-01-01"}});
}

TEST_CASE("days that the calendar does not have give nothing") {
    checkNothing("yyyy-MM-dd", {"2023-02-29", "2024-02-30", "1900-02-29", "2024-04-31", "2024-00-01",
                                "2024-13-01", "2024-01-00", "2024-01-32", "0000-01-01"});
    checkReadings({{"yyyy-MM-dd", "2000-02-29", "2000-02-29"}, {"yyyy-MM-dd", "2024-02-29", "2024-02-29"}});
    checkNothing("yyyyDDD", {"2023366", "2024367", "2024000", "1900366"});
}

TEST_CASE("times that no clock shows give nothing") {
    checkNothing("H:m:s", {"24:0:0", "0:60:0", "0:0:60", "0:0:61"});
    checkNothing("h", {"0", "13"});
    checkNothing("K", {"12"});
    checkNothing("k", {"0", "25"});
}

TEST_CASE("of fields that tell the same twice one decides, and all must be valid") {
    checkReadings({{"yyyy DDD MM dd", "2024 060 01 31", "2024-02-29"},
                   {"H h a", "15 1 AM", "2000-01-01 15:00:00"},
                   {"dd dd", "30 31", "2000-01-31"},
                   {"MMM M", "Jan 2", "2000-02-01"},
                   {"d.M.yyyy EEEE", "1.1.2024 Friday", "2024-01-01"},
                   {"H Z z", "12 +0100 EST", "2000-01-01 11:00:00"},
                   {"H z Z", "12 XYZ +0100", "2000-01-01 11:00:00"}});
    checkNothing("yyyy DDD MM dd", {"2024 060 13 31", "2024 060 01 32"});
    checkNothing("yyyy DDD LL", {"2024 060 00", "2024 060 13"});
    checkNothing("H h", {"15 13"});
    checkNothing("dd dd", {"32 31"});
}

TEST_CASE("a weekday must be one, but need not be the date's") {
    checkReadings({{"EEE, d MMM yyyy", "Mon, 1 Jan 2024", "2024-01-01"},
                   {"EEE, d MMM yyyy", "Sun, 1 Jan 2024", "2024-01-01"},
                   {"EEEE d.M.y", "thursday 1.1.2024", "2024-01-01"},
                   {"EEEEE d.M.y", "S 1.1.2024", "2024-01-01"}});
    checkNothing("EEE d", {"Xyz 1", " 1", "Mo 1", "Monday 1"});
    checkNothing("EEEE d", {"Mon 1"});
}

TEST_CASE("names are read without regard to the case of their letters") {
    checkReadings({{"d MMMM y", "1 JANUARY 2024", "2024-01-01"},
                   {"d MMM y", "1 dEc 2024", "2024-12-01"},
                   {"h a", "5 pm", "2000-01-01 17:00:00"},
                   {"h a", "5 Am", "2000-01-01 05:00:00"}});
    checkNothing("MMM", {"", "Ja", "Jän", "January", "Jan."});
    checkNothing("a", {"", "A", "XM", "A.M."});
}

TEST_CASE("a first letter that several months share is no month") {
    checkNothing("MMMMM", {"J", "M", "A", "X", ""});
    checkReadings({{"MMMMM", "s", "2000-09-01"}, {"LLLLL", "N", "2000-11-01"}});
}

TEST_CASE("text between the letters must stand there to the letter") {
    checkReadings({{"h 'o''clock'", "9 o'clock", "2000-01-01 09:00:00"},
                   {"''yy", "'24", "2024-01-01"},
                   {"yyyy-MM-dd'T'HH:mm:ss'Z'", "2024-01-31T17:05:00Z", "2024-01-31 17:05:00"},
                   {"y\xE5\xB9\xB4M\xE6\x9C\x88",
                    "2024\xE5\xB9\xB4"
                    "3\xE6\x9C\x88",
                    "2024-03-01"}});
    checkNothing("h 'o''clock'", {"9 O'CLOCK", "9 oclock", "9  o'clock"});
}

TEST_CASE("a pattern with a letter without meaning reads nothing") {
    checkNothing("yyyy G", {"2024 G", "2024 AD", "2024 "});
    checkNothing("MMMMMM", {"MMMMMM", "March"});
    checkNothing("q", {"q", "1", ""});
}

TEST_CASE("every digit is an ASCII digit") { checkNothing("d", {"\xD9\xA1", "\xEF\xBC\x91", "\xC2\xB2"}); }

TEST_CASE("a zone in the text overrides the formatter's own") {
    const TimeZone zone = TimeZone::fixed(hours(9));
    checkReadings({{"H", "12", "2000-01-01 03:00:00"},
                   {"H Z", "12 +0100", "2000-01-01 11:00:00"},
                   {"H X", "12 Z", "2000-01-01 12:00:00"},
                   {"H z", "12 UTC", "2000-01-01 12:00:00"},
                   {"H z", "12 PST", "2000-01-01 20:00:00"},
                   {"H z", "12 Z", "2000-01-01 12:00:00"}},
                  zone);
    checkNothing("H z", {"12 XYZ", "12 ", "12 IST", "12 +", "12 +24"});
    checkNothing("H X", {"12 CET", "12 EST"});
}

TEST_CASE("an abbreviation means what it means in the formatter's own zone") {
    const std::string pattern = "yyyy-MM-dd HH:mm z";
    checkReadings({{pattern, "2024-01-01 12:00 CET", "2024-01-01 11:00:00"},
                   {pattern, "2024-07-01 12:00 cest", "2024-07-01 10:00:00"},
                   {pattern, "2024-07-01 12:00 CET", "2024-07-01 11:00:00"},
                   {pattern, "2024-01-01 12:00 CEST", "2024-01-01 10:00:00"},
                   {pattern, "2024-10-27 02:30 CEST", "2024-10-27 00:30:00"},
                   {pattern, "2024-10-27 02:30 CET", "2024-10-27 01:30:00"},
                   {pattern, "2024-07-01 12:00 EDT", "2024-07-01 16:00:00"}},
                  zoneNamed("Europe/Berlin"));
    checkReadings({{pattern, "2024-07-01 12:00 IST", "2024-07-01 06:30:00"}}, zoneNamed("Asia/Kolkata"));
    checkReadings({{pattern, "2024-07-01 12:00 IST", "2024-07-01 11:00:00"}}, zoneNamed("Europe/Dublin"));
    checkReadings({{pattern, "2024-07-01 12:00 GMT-2", "2024-07-01 14:00:00"}}, zoneNamed("America/Nuuk"));
}

TEST_CASE("a text without zone is in the formatter's own") {
    const std::string pattern = "yyyy-MM-dd HH:mm";
    checkReadings({{pattern, "2024-07-01 12:00", "2024-07-01 10:00:00"},
                   {pattern, "2024-03-31 02:30", "2024-03-31 01:30:00"},
                   {pattern, "2024-10-27 02:30", "2024-10-27 00:30:00"},
                   {pattern, "2100-07-01 12:00", "2100-07-01 10:00:00"}},
                  zoneNamed("Europe/Berlin"));
}

TEST_CASE("years are 1 to 9999, in the text and in UTC") {
    const std::string pattern = "yyyy-MM-dd HH:mm:ss.SSS X";
    checkReadings({{pattern, "0001-01-01 00:00:00.000 Z", "0001-01-01"},
                   {pattern, "9999-12-31 23:59:59.999 Z", "9999-12-31 23:59:59+999"},
                   {pattern, "0001-01-01 01:00:00.000 +01", "0001-01-01"},
                   {pattern, "9999-12-31 22:59:59.999 -01", "9999-12-31 23:59:59+999"}});
    checkNothing(pattern, {"0001-01-01 00:59:59.999 +01", "9999-12-31 23:00:00.000 -01",
                           "0000-12-31 23:00:00.000 -01", "10000-01-01 00:00:00.000 +01"});
    const TimeZone east = TimeZone::fixed(hours(1));
    CHECK(readWith("yyyyMMdd", "00010101", east) == "nothing");
    CHECK(readWith("yyyyMMdd", "00010102", east) == "0001-01-01 23:00:00");
    CHECK(readWith("yyyyMMdd", "99991231", TimeZone::fixed(hours(-1))) == "9999-12-31 01:00:00");
    CHECK(readWith("yyyyMMddHH", "9999123123", TimeZone::fixed(hours(-1))) == "nothing");
}

TEST_CASE("the system's own patterns are read") {
    checkReadings({{"yyyyMMddHHmmss.SSS[ZZZ:zz]", "20240131120000.123[+0000:UTC]", "2024-01-31 12:00:00+123"},
                   {"yyyyMMddHHmmss.SSS[ZZZ:zz]", "20240131120000.123[-5:EST]", "2024-01-31 17:00:00+123"},
                   {"yyyyMMddHHmmss[ZZZ:zz]", "20240131120000[-0330:NST]", "2024-01-31 15:30:00"},
                   {"yyyyMMddHHmmss[ZZZ:zz]", "20240131120000[+0100:GMT+1]", "2024-01-31 11:00:00"},
                   {"yyyyMMddHHmmss.SSS", "20240131120000.123", "2024-01-31 12:00:00+123"},
                   {"yyyyMMddHHmmss", "20240131120000", "2024-01-31 12:00:00"},
                   {"yyyyMMdd", "20240131", "2024-01-31"},
                   {"yyyyMMddhhmmss", "20240131120000", "2024-01-31"}});
    checkNothing("yyyyMMddHHmmss", {"20240131", "2024013112", "20240131120000.123", "20240131240000"});
    checkNothing("yyyyMMddHHmmss.SSS", {"20240131120000", "20240131120000.", "20240131120000.123["});
    checkNothing("yyyyMMddHHmmss[ZZZ:zz]", {"20240131120000", "20240131120000[-5]", "20240131120000[-5:]"});
}
