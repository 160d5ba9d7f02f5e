// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>

#include <algorithm>
#include <array>

#include "lines.h"
#include "target.h"

/// \file
/// Lines: pattern, time zone, a date in milliseconds; then a text to read.

namespace brackwell::fuzz {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// Years 1 to 9999, two days short, so that no zone leads out of them.
constexpr std::int64_t kFirst = -62135596800000 + 172800000;
constexpr std::int64_t kLast = 253402300799999 - 172800000;

TimeZone zoneOf(std::string_view text) {
    if (text.starts_with('+') || text.starts_with('-')) return TimeZone::fixed(seconds(leadingInteger(text)));
    return TimeZone::named(text).value_or(TimeZone::utc());
}

/// What these write holds all of a date.
constexpr std::array kWholePatterns = {
    "yyyyMMddHHmmssSSSXXXXX", "yyyy-MM-dd'T'HH:mm:ss.SSSxxxxx", "d. MMMM y, h:mm:ss,SSS a XXXXX",
    "EEEE D.y K 'o''clock' m s SSS a xxxxx", "XXXXX y/MMM/d k:m:s.SSSSSS EEEEEE"};

void requireRead(Date date, const TimeZone& zone) {
    for (const char* pattern : kWholePatterns) {
        const PatternDateFormatter formatter(pattern, zone, "C");
        require(formatter.dateFromString(formatter.stringFromDate(date)) == date,
                "a date that is written as a whole reads back equal");
    }
}

std::size_t countOf(std::string_view pattern, std::string_view letters) {
    std::size_t runs = 0;
    char before = 0;
    for (const char letter : pattern) {
        if (letter != before && letters.find(letter) != std::string_view::npos) ++runs;
        before = letter;
    }
    return runs;
}

/// True when no two fields of a pattern say the same in two ways, none is passed over in reading, and no
/// digit of the pattern's own can be taken for one of a field's: "yyy0M" reads "197001" as the year 197.
bool isUnambiguous(std::string_view pattern) {
    if (pattern.find_first_of("0123456789") != std::string_view::npos) return false;
    const bool namesDay = countOf(pattern, "D") != 0;
    return countOf(pattern, "E") == 0 && countOf(pattern, "y") <= 1 && countOf(pattern, "ML") <= 1 &&
           countOf(pattern, "d") <= 1 && countOf(pattern, "D") <= 1 && countOf(pattern, "hHkK") <= 1 &&
           countOf(pattern, "a") <= 1 && countOf(pattern, "m") <= 1 && countOf(pattern, "s") <= 1 &&
           countOf(pattern, "S") <= 1 && countOf(pattern, "zZxX") == 0 &&
           !(namesDay && countOf(pattern, "MLd") != 0) && !(countOf(pattern, "a") && countOf(pattern, "Hk"));
}

void requireSamePattern(const PatternDateFormatter& formatter, Date date) {
    const std::string text = formatter.stringFromDate(date);
    const std::optional<Date> read = formatter.dateFromString(text);
    if (!read || !isUnambiguous(formatter.pattern())) return;
    require(formatter.stringFromDate(*read) == text, "a date that was read is written as it stood");
}

/// The documented road of an OFX date, over the formatters instead of fixed places. In UTF-8 it makes no
/// difference that bytes are counted here, since only ASCII can be read.
std::optional<Date> dateByFormatters(const TvOFXHelper& helper, std::string_view text) {
    const std::string_view whole = text.substr(0, 18);
    if (const auto date = helper.ofxDateFormatter3().dateFromString(whole)) return date;
    if (const auto date = helper.ofxDateFormatter4().dateFromString(whole)) return date;
    return helper.ofxDateFormatter5().dateFromString(text.substr(0, 8));
}

void requireOFX(std::string_view text, Date date) {
    static const TvOFXHelper helper;
    require(helper.dateFromOFXDateString(text) == dateByFormatters(helper, text) || !isValidUTF8(text),
            "fixed places read OFX dates as the formatters do");
    const std::string whole = helper.ofxDateFormatter3().stringFromDate(date);
    require(helper.dateFromOFXDateString(whole) == date, "a date in OFX form reads back equal");
    TvOFXHelper::ofxDateTimeStringFromDate(date);
}

}  // namespace

void tryBytes(std::string_view bytes) {
    Lines lines(bytes);
    const std::string pattern(lines.next());
    const TimeZone zone = zoneOf(lines.next());
    const std::int64_t number = leadingInteger(lines.next());
    const Date date{milliseconds(std::clamp(number, kFirst, kLast))};
    const PatternDateFormatter formatter(pattern, zone, "C");

    formatter.stringFromDate(Date{milliseconds(number)});
    dateDescription(Date{milliseconds(number)});
    requireRead(date, zone);
    requireSamePattern(formatter, date);
    if (const auto read = formatter.dateFromString(lines.rest())) requireSamePattern(formatter, *read);
    requireOFX(lines.rest(), date);
}

}  // namespace brackwell::fuzz
