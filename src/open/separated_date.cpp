// SPDX-License-Identifier: Apache-2.0
#include "open/separated_date.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "dates/zone_text.h"
#include "text/ascii_case.h"
#include "text/ascii_digit.h"

namespace brackwell::opening {
namespace {

using namespace std::chrono;

/// Digits that were taken off a text.
struct Digits {
    unsigned value = 0;
    std::size_t count = 0;
};

/// Takes the digits off the beginning of the text, four at most.
Digits takeDatePart(std::string_view& text) noexcept {
    Digits digits;
    for (; digits.count < 4 && beginsWithDigits(text, 1); text.remove_prefix(1), ++digits.count)
        digits.value = digits.value * 10 + digitValue(text.front());
    return digits;
}

bool takeCharacter(std::string_view& text, char character) noexcept {
    if (!text.starts_with(character)) return false;
    text.remove_prefix(1);
    return true;
}

/// Takes two digits that stand for less than `limit` off the beginning of the text.
std::optional<unsigned> takePair(std::string_view& text, unsigned limit) noexcept {
    const Digits digits = takeDatePart(text);
    if (digits.count != 2 || digits.value >= limit) return std::nullopt;
    return digits.value;
}

/// Takes the digits of a fraction off the beginning of the text, as milliseconds.
milliseconds takeFraction(std::string_view& text) noexcept {
    milliseconds fraction{0};
    milliseconds place{100};
    for (; beginsWithDigits(text, 1); text.remove_prefix(1), place /= 10)
        fraction += place * digitValue(text.front());
    return fraction;
}

constexpr seconds kLargestOffset = hours(14);

/// What may stand after the whole hours in brackets: a part of an hour, or minutes. No zone has others.
struct PartOfHour {
    std::string_view text;
    minutes value;
};
constexpr PartOfHour kPartsOfHours[] = {
    {"", minutes(0)},     {".0", minutes(0)},   {".00", minutes(0)},
    {".5", minutes(30)},  {".50", minutes(30)}, {".30", minutes(30)},
    {".25", minutes(15)}, {".75", minutes(45)}, {".45", minutes(45)},
};

/// The offset from UTC that the OFX standard writes in brackets: "-5:EST", "+5.30:IST", "0". That of a name
/// alone is none where the name is not known.
std::optional<seconds> offsetInBrackets(std::string_view text) noexcept {
    if (text.find_first_of("[]") != text.npos) return std::nullopt;
    if (!text.empty() && isASCIILetter(text.front())) return offsetOfAbbreviation(text).value_or(seconds(0));
    std::string_view rest = text.substr(0, text.find(':'));
    const bool isBehind = takeCharacter(rest, '-');
    if (!isBehind) takeCharacter(rest, '+');
    const Digits hour = takeDatePart(rest);
    const auto* const part = std::ranges::find(kPartsOfHours, rest, &PartOfHour::text);
    if (hour.count == 0 || hour.count > 2 || part == std::end(kPartsOfHours)) return std::nullopt;
    const seconds offset = hours(hour.value) + part->value;
    return isBehind ? -offset : offset;
}

/// The offset from UTC of what may follow a time: nothing, "Z", "+2", "-05:00", "EST", "[-5:EST]".
std::optional<seconds> offsetOf(std::string_view zone) noexcept {
    if (zone.empty()) return seconds(0);
    std::optional<seconds> offset;
    if (takeCharacter(zone, '[')) {
        if (zone.ends_with(']')) offset = offsetInBrackets(zone.substr(0, zone.size() - 1));
    } else if (const auto known = takeZone(zone, 'z', false); known && zone.empty()) {
        offset = known->offset ? known->offset : offsetOfAbbreviation(known->abbreviation);
    }
    if (!offset || *offset > kLargestOffset || *offset < -kLargestOffset) return std::nullopt;
    return offset;
}

/// True for what may be a zone directly after a day: "Z", "+02:00", "[-5:EST]".
bool mayBeZoneOfDay(std::string_view text) noexcept {
    const bool isOffset = (text.starts_with('+') || text.starts_with('-')) && text.find(':') != text.npos;
    return isOffset || text == "Z" || text == "z" || text.starts_with('[');
}

/// The time of day at the beginning of the text; nothing when there is none.
std::optional<milliseconds> takeTime(std::string_view& text) noexcept {
    const Digits hour = takeDatePart(text);
    if (hour.count == 0 || hour.count > 2 || hour.value > 23 || !takeCharacter(text, ':'))
        return std::nullopt;
    const std::optional<unsigned> minute = takePair(text, 60);
    if (!minute) return std::nullopt;
    const milliseconds time = hours(hour.value) + minutes(*minute);
    if (!takeCharacter(text, ':')) return time;
    const std::optional<unsigned> second = takePair(text, 60);
    if (!second) return std::nullopt;
    if (!takeCharacter(text, '.') && !takeCharacter(text, ',')) return time + seconds(*second);
    if (!beginsWithDigits(text, 1)) return std::nullopt;
    return time + seconds(*second) + takeFraction(text);
}

/// The time after a date and the separator between them, in UTC; midnight when there is none.
std::optional<milliseconds> timeAfterDate(std::string_view text) noexcept {
    if (text.empty()) return milliseconds(0);
    std::optional<milliseconds> time(0);
    const std::string_view apart = trimWhiteSpace(text);
    const bool hasBlank = apart.size() != text.size();
    text = apart;
    if (!mayBeZoneOfDay(text)) {
        if (!hasBlank && !takeCharacter(text, 'T')) return std::nullopt;
        time = takeTime(text);
    }
    const std::optional<seconds> offset = offsetOf(trimWhiteSpace(text));
    if (!time || !offset) return std::nullopt;
    // Midnight stands for the day, which an offset would make another one.
    return *time == milliseconds(0) ? time : *time - *offset;
}

std::optional<Date> dateOf(unsigned yearNumber, unsigned monthNumber, unsigned dayNumber,
                           milliseconds time) noexcept {
    const year_month_day date(year(static_cast<int>(yearNumber)), month(monthNumber), day(dayNumber));
    if (yearNumber == 0 || !date.ok()) return std::nullopt;
    return sys_days(date) + time;
}

}  // namespace

std::optional<SeparatedDate> SeparatedDate::of(std::string_view text) noexcept {
    SeparatedDate date;
    std::array<Digits, 3> numbers;
    numbers[0] = takeDatePart(text);
    if (text.empty()) return std::nullopt;
    date.mark = text.front();
    if (date.mark != '/' && date.mark != '-' && date.mark != '.') return std::nullopt;
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        if (!takeCharacter(text, date.mark)) return std::nullopt;
        numbers[i] = takeDatePart(text);
    }
    date.yearFirst = numbers[0].count == 4;
    if (!date.yearFirst) std::rotate(numbers.begin(), numbers.end() - 1, numbers.end());
    const auto isShort = [](const Digits& digits) { return digits.count == 1 || digits.count == 2; };
    if (numbers[0].count != 4 || !isShort(numbers[1]) || !isShort(numbers[2])) return std::nullopt;
    date.year = numbers[0].value;
    date.others = {numbers[1].value, numbers[2].value};
    const std::optional<milliseconds> time = timeAfterDate(text);
    if (!time) return std::nullopt;
    date.time = *time;
    return date;
}

std::optional<Date> SeparatedDate::yearMonthDay() const noexcept {
    return yearFirst ? dateOf(year, others[0], others[1], time) : std::nullopt;
}

std::optional<Date> SeparatedDate::dayMonthYear() const noexcept {
    return yearFirst ? std::nullopt : dateOf(year, others[1], others[0], time);
}

std::optional<Date> SeparatedDate::monthDayYear() const noexcept {
    return yearFirst ? std::nullopt : dateOf(year, others[0], others[1], time);
}

}  // namespace brackwell::opening
