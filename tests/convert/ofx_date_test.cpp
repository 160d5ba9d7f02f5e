// SPDX-License-Identifier: Apache-2.0
#include "convert/ofx_date.h"

#include <brackwell/convert.h>
#include <doctest/doctest.h>

#include <algorithm>

#include "support/random_text.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::size_t charactersOf(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & '\xC0') != '\x80'; }));
}

std::string firstCharacters(std::string text, std::size_t count) {
    while (charactersOf(text) > count) text.pop_back();
    return text;
}

/// The date by the formatters of the helper, step by step.
std::optional<Date> dateByFormatters(const TvOFXHelper& helper, std::string text) {
    if (charactersOf(text) >= 19) text = firstCharacters(text, 18);
    if (const auto date = helper.ofxDateFormatter3().dateFromString(text)) return date;
    if (const auto date = helper.ofxDateFormatter4().dateFromString(text)) return date;
    if (charactersOf(text) >= 9) text = firstCharacters(text, 8);
    return helper.ofxDateFormatter5().dateFromString(text);
}

void compare(const std::string& text, std::size_t& read) {
    const TvOFXHelper& helper = *TvOFXHelper::defaultHelper();
    const std::optional<Date> date = dateFromOFXText(text);
    if (date) ++read;
    CAPTURE(text);
    REQUIRE(shown(date) == shown(dateByFormatters(helper, text)));
}

std::string digits(std::size_t value, std::size_t count) {
    std::string text = std::to_string(value);
    return std::string(count > text.size() ? count - text.size() : 0, '0') + text;
}

const std::vector<std::string> kTails{
    "",  ".",  ".1",     ".12",    ".123",      ".1234",       "[-5:EST]", ".123[-5:EST]",
    "Z", " ",  "\u00A0", "x",      ".abc",      ",123",        ".12x",     "+01:00",
    "0", "00", ".000",   "\u0660", ".12\u0660", "\u20AC\u20AC"};

/// Mostly a date, its fields now and then a little out of range.
std::string makeDate(RandomText& random) {
    std::string text = digits(random.once(8) ? random.below(3) : 1 + random.below(9999), 4);
    text += digits(random.once(8) ? random.below(20) : 1 + random.below(12), 2);
    text += digits(random.once(8) ? random.below(40) : 1 + random.below(31), 2);
    if (!random.once(3)) {
        text += digits(random.below(26), 2) + digits(random.below(62), 2) + digits(random.below(62), 2);
    }
    return text + random.oneOf(kTails);
}

}  // namespace

TEST_CASE("dates are read as the formatters read them, whatever their fields and what follows") {
    RandomText random(8);
    std::size_t read = 0;
    constexpr std::size_t rounds = 20000;
    for (std::size_t i = 0; i < rounds; ++i) compare(makeDate(random), read);
    CHECK(read > rounds / 4);
    CHECK(read < rounds);
}

TEST_CASE("dates are read as the formatters read them when one or two bytes are changed") {
    const std::vector<std::string> samples{"20240131", "20240131120000", "20240131120000.123",
                                           "20240131120000.123[-5:EST]", "20240131120000[-5:EST]"};
    constexpr std::string_view bytes = "0123456789*+,-./:;<=>?@ !\tpPZx[]";
    RandomText random(9);
    std::size_t read = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string text = random.oneOf(samples);
        for (std::size_t changes = 1 + random.below(2); changes > 0; --changes) {
            const std::size_t place = random.below(text.size());
            if (random.once(8))
                text.erase(place, 1);
            else if (random.once(8))
                text.insert(place, 1, random.oneOf(bytes));
            else
                text[place] = random.oneOf(bytes);
            if (text.empty()) text = "0";
        }
        compare(text, read);
    }
    CHECK(read > 1000);
}

TEST_CASE("only ten bytes are digits, at each place of a date") {
    for (const std::string sample : {"20220202", "20220202020202", "20220202020202.222"})
        for (std::size_t place = 0; place < sample.size(); ++place)
            for (int byte = 0; byte < 0x80; ++byte) {
                std::string text = sample;
                text[place] = static_cast<char>(byte);
                std::size_t read = 0;
                compare(text, read);
            }
}

TEST_CASE("bytes that are no UTF-8 are no digits") {
    for (const std::string sample : {"20220202", "20220202020202", "20220202020202.222"})
        for (std::size_t place = 0; place < sample.size(); ++place)
            for (int byte = 0x80; byte < 0x100; ++byte) {
                std::string text = sample;
                text[place] = static_cast<char>(byte);
                CAPTURE(place);
                CAPTURE(byte);
                const std::optional<Date> date = dateFromOFXText(text);
                if (place < 8) REQUIRE_FALSE(date);
                if (date) REQUIRE(*date == utc(2022, 2, 2));
            }
}

TEST_CASE("every day of the calendar is read, and no other") {
    for (const int year : {0, 1, 4, 99, 100, 400, 1582, 1899, 1900, 1970, 2000, 2023, 2024, 2100, 9999})
        for (unsigned month = 0; month <= 13; ++month)
            for (unsigned day = 0; day <= 32; ++day) {
                const std::chrono::year_month_day wanted{std::chrono::year(year), std::chrono::month(month),
                                                         std::chrono::day(day)};
                const std::string text =
                    digits(static_cast<std::size_t>(year), 4) + digits(month, 2) + digits(day, 2);
                CAPTURE(text);
                const std::optional<Date> date = dateFromOFXText(text);
                REQUIRE(date.has_value() == (year > 0 && wanted.ok()));
                if (date) REQUIRE(*date == std::chrono::sys_days(wanted));
            }
}

TEST_CASE("every time of the day is read") {
    for (unsigned second = 0; second < 86400; second += 7) {
        const std::string time =
            digits(second / 3600, 2) + digits(second / 60 % 60, 2) + digits(second % 60, 2);
        const std::string milliseconds = digits(second % 1000, 3);
        CAPTURE(time);
        const Date wanted = utc(2024, 2, 29) + std::chrono::seconds(second);
        REQUIRE(dateFromOFXText("20240229" + time) == wanted);
        REQUIRE(dateFromOFXText("20240229" + time + "." + milliseconds) ==
                wanted + std::chrono::milliseconds(second % 1000));
    }
}
