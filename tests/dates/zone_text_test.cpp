// SPDX-License-Identifier: Apache-2.0
#include "dates/zone_text.h"

#include <doctest/doctest.h>

#include <vector>

using namespace brackwell;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

TEST_CASE("each form of a zone is written for each kind of offset") {
    struct Row {
        std::string letters;
        std::string zero, hour, half, second;
    };
    // For UTC, one hour east, three and a half hours west, and Berlin before 1893.
    const std::vector<TimeZone::Offset> offsets = {
        {seconds(0), "UTC"}, {hours(1), "CET"}, {minutes(-210), "-0330"}, {seconds(3208), "LMT"}};
    const std::vector<Row> rows = {
        {"z", "UTC", "CET", "GMT-3:30", "LMT"},
        {"zz", "UTC", "CET", "GMT-3:30", "LMT"},
        {"zzz", "UTC", "CET", "GMT-3:30", "LMT"},
        {"zzzz", "GMT", "GMT+01:00", "GMT-03:30", "GMT+00:53:28"},
        {"Z", "+0000", "+0100", "-0330", "+005328"},
        {"ZZ", "+0000", "+0100", "-0330", "+005328"},
        {"ZZZ", "+0000", "+0100", "-0330", "+005328"},
        {"ZZZZ", "GMT", "GMT+01:00", "GMT-03:30", "GMT+00:53:28"},
        {"ZZZZZ", "Z", "+01:00", "-03:30", "+00:53:28"},
        {"X", "Z", "+01", "-0330", "+0053"},
        {"XX", "Z", "+0100", "-0330", "+0053"},
        {"XXX", "Z", "+01:00", "-03:30", "+00:53"},
        {"XXXX", "Z", "+0100", "-0330", "+005328"},
        {"XXXXX", "Z", "+01:00", "-03:30", "+00:53:28"},
        {"x", "+00", "+01", "-0330", "+0053"},
        {"xx", "+0000", "+0100", "-0330", "+0053"},
        {"xxx", "+00:00", "+01:00", "-03:30", "+00:53"},
        {"xxxx", "+0000", "+0100", "-0330", "+005328"},
        {"xxxxx", "+00:00", "+01:00", "-03:30", "+00:53:28"},
    };
    for (const Row& row : rows) {
        const std::vector<std::string> texts = {row.zero, row.hour, row.half, row.second};
        for (std::size_t i = 0; i < offsets.size(); ++i) {
            CAPTURE(row.letters);
            std::string text;
            appendZone(text, row.letters.front(), row.letters.size(), offsets[i]);
            CHECK(text == texts[i]);
        }
    }
}

TEST_CASE("an offset of less than a minute is nothing where seconds are not written") {
    for (const seconds offset : {seconds(-59), seconds(59)}) {
        std::string text;
        appendZone(text, 'X', 3, {offset, "LMT"});
        appendZone(text, 'x', 3, {offset, "LMT"});
        CHECK(text == "Z+00:00");
    }
    std::string text;
    appendZone(text, 'x', 5, {seconds(-59), "LMT"});
    CHECK(text == "-00:00:59");
}

TEST_CASE("a zone without abbreviation is shown by its offset") {
    std::string text;
    appendZone(text, 'z', 1, {hours(2), ""});
    CHECK(text == "GMT+2");
    CHECK(shortOffsetName(hours(-11)) == "GMT-11");
    CHECK(shortOffsetName(seconds(3601)) == "GMT+1:00:01");
    CHECK(shortOffsetName(seconds(0)) == "GMT");
}

namespace {

struct Reading {
    std::string text;
    seconds offset;
    std::string rest = {};
};

void checkOffsets(const std::string& letters, const std::vector<Reading>& rows, bool digitsFollow = false) {
    for (const char letter : letters) {
        for (const Reading& row : rows) {
            CAPTURE(letter);
            CAPTURE(row.text);
            std::string_view text = row.text;
            const auto zone = takeZone(text, letter, digitsFollow);
            REQUIRE(zone);
            REQUIRE(zone->offset);
            CHECK(*zone->offset == row.offset);
            CHECK(text == row.rest);
        }
    }
}

}  // namespace

TEST_CASE("every form of an offset is read for every letter of zones") {
    checkOffsets("zZXx", {{"+01", hours(1)},
                          {"-5", hours(-5)},
                          {"+0100", hours(1)},
                          {"-0330", minutes(-210)},
                          {"+01:00", hours(1)},
                          {"+5:30", minutes(330)},
                          {"+005328", seconds(3208)},
                          {"-00:53:28", seconds(-3208)},
                          {"+23:59:59", seconds(86399)},
                          {"GMT+1", hours(1)},
                          {"gmt-03:30", minutes(-210)},
                          {"UTC+0100", hours(1)},
                          {"UT-1", hours(-1)},
                          {"-00:00", seconds(0)}});
}

TEST_CASE("names of UTC are read for every letter of zones") {
    checkOffsets("ZXx", {{"Z", seconds(0)},
                         {"z", seconds(0)},
                         {"UTC", seconds(0)},
                         {"GMT", seconds(0)},
                         {"UT", seconds(0)},
                         {"ZT", seconds(0), "T"},
                         {"Z+01", seconds(0), "+01"},
                         {"Z-05", seconds(0), "-05"},
                         {"UTC12", seconds(0), "12"}});
}

TEST_CASE("abbreviations are taken for the letter z only") {
    for (const std::string name : {"CET", "cest", "UTC", "GMT", "Z", "EST", "ABCDEFGH"}) {
        std::string_view text = name;
        const auto zone = takeZone(text, 'z', false);
        REQUIRE(zone);
        CHECK(zone->abbreviation == name);
        CHECK_FALSE(zone->offset);
        CHECK(text.empty());
    }
    for (const char letter : {'Z', 'X', 'x'}) {
        std::string_view text = "CET";
        CHECK_FALSE(takeZone(text, letter, false));
    }
}

TEST_CASE("what follows an offset is left") {
    checkOffsets("zZXx", {{"-5:EST]", hours(-5), ":EST]"},
                          {"+0000:UTC]", seconds(0), ":UTC]"},
                          {"+0100:30", hours(1), ":30"},
                          {"+01:00:3", hours(1), ":3"},
                          {"+01:0", hours(1), ":0"},
                          {"+01 ", hours(1), " "}});
}

TEST_CASE("before a number an offset has four digits or colons") {
    checkOffsets("zZXx",
                 {{"+01002024", hours(1), "2024"},
                  {"+01:002024", hours(1), "2024"},
                  {"-01:00:302024", seconds(-3630), "2024"}},
                 true);
}

TEST_CASE("what is no zone gives nothing") {
    for (const char letter : {'z', 'Z', 'X', 'x'}) {
        for (const std::string row : {"", "+", "-", "0100", "+010", "+01000", "+0100000", "+24", "+2400",
                                      "+0160", "+01:60", "+010060", "+-1", "GMT+",
                                      "\xE2\x88\x92"
                                      "5",
                                      " +01"}) {
            CAPTURE(letter);
            CAPTURE(row);
            std::string_view text = row;
            CHECK_FALSE(takeZone(text, letter, false));
        }
    }
}

TEST_CASE("common abbreviations have their offsets in any case") {
    CHECK(offsetOfAbbreviation("UTC") == seconds(0));
    CHECK(offsetOfAbbreviation("EST") == hours(-5));
    CHECK(offsetOfAbbreviation("pdt") == hours(-7));
    CHECK(offsetOfAbbreviation("Cest") == hours(2));
    CHECK_FALSE(offsetOfAbbreviation("IST"));  // India, Ireland and Israel
    CHECK_FALSE(offsetOfAbbreviation(""));
}
