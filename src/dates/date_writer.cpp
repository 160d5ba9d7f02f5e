// SPDX-License-Identifier: Apache-2.0
#include "dates/date_writer.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

#include "dates/civil_time.h"
#include "dates/zone_text.h"

namespace brackwell {

namespace {

void appendFraction(std::string& text, unsigned millisecond, std::size_t width) {
    constexpr std::size_t digitsOfMillisecond = 3;
    std::string digits;
    appendPadded(digits, millisecond, digitsOfMillisecond);
    digits.resize(width, '0');  // more letters than digits add zeros, fewer cut off
    text += digits;
}

unsigned halfHour(const CivilTime& civil) noexcept { return civil.hour % 12; }

/// The number of a letter other than y and S.
unsigned numberOf(char letter, const CivilTime& civil) noexcept {
    switch (letter) {
        case 'M':
        case 'L':
            return civil.month;
        case 'd':
            return civil.day;
        case 'D':
            return civil.dayOfYear;
        case 'h':
            return halfHour(civil) == 0 ? 12 : halfHour(civil);
        case 'H':
            return civil.hour;
        case 'K':
            return halfHour(civil);
        case 'k':
            return civil.hour == 0 ? 24 : civil.hour;
        case 'm':
            return civil.minute;
        default:
            return civil.second;
    }
}

void appendNumber(std::string& text, const PatternPart& part, const CivilTime& civil) {
    if (part.letter == 'S')
        appendFraction(text, civil.millisecond, part.width);
    else if (part.letter != 'y')
        appendPadded(text, numberOf(part.letter, civil), part.width);
    else if (part.width == 2)
        appendPadded(text, static_cast<unsigned>(std::abs(civil.year % 100)), part.width);
    else
        appendYear(text, civil.year, part.width);
}

std::size_t nameIndex(char letter, const CivilTime& civil) noexcept {
    if (letter == 'E') return civil.weekday;
    if (letter == 'a') return civil.hour / 12;
    return civil.month - 1;
}

}  // namespace

std::string writeDate(const DateStyle& style, Date date) {
    const TimeZone::Offset offset = style.zone.offsetAt(date);
    const CivilTime civil = civilTime(date, offset.fromUTC);
    std::string text;
    for (const PatternPart& part : style.pattern.parts) {
        switch (part.kind) {
            case PatternPart::Kind::text:
                text += part.text;
                break;
            case PatternPart::Kind::number:
                appendNumber(text, part, civil);
                break;
            case PatternPart::Kind::name:
                text += style.names[part.names][nameIndex(part.letter, civil)];
                break;
            case PatternPart::Kind::zone:
                appendZone(text, part.letter, part.width, offset);
                break;
            case PatternPart::Kind::unknown:  // a letter without a meaning is written as it is
                text.append(part.width, part.letter);
                break;
        }
    }
    return text;
}

}  // namespace brackwell
