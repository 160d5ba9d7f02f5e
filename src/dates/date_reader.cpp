// SPDX-License-Identifier: Apache-2.0
#include "dates/date_reader.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>

#include "dates/zone_text.h"
#include "text/ascii_case.h"
#include "text/ascii_digit.h"

namespace brackwell {

namespace {

using namespace std::chrono;
using Local = local_time<milliseconds>;

/// The fields of a date in a text; absent where the text does not have them.
struct Fields {
    std::optional<unsigned> year;
    std::optional<unsigned> month;
    std::optional<unsigned> day;
    std::optional<unsigned> dayOfYear;
    std::optional<unsigned> hour;      ///< 0 to 24; 24 is 0
    std::optional<unsigned> halfHour;  ///< 0 to 12; 12 is 0
    std::optional<unsigned> half;      ///< 0 before noon, 1 from noon on
    std::optional<unsigned> minute;
    std::optional<unsigned> second;
    unsigned millisecond = 0;
    std::optional<seconds> offset;
    std::string_view zone;
};

/// Where the number of a letter goes, and within which limits.
struct NumberField {
    char letter;
    unsigned lowest;
    unsigned highest;
    std::optional<unsigned> Fields::*place;
};

constexpr auto kNumberFields = std::to_array<NumberField>({
    {'y', 1, 9999, &Fields::year},
    {'M', 1, 12, &Fields::month},
    {'L', 1, 12, &Fields::month},
    {'d', 1, 31, &Fields::day},
    {'D', 1, 366, &Fields::dayOfYear},
    {'h', 1, 12, &Fields::halfHour},
    {'H', 0, 23, &Fields::hour},
    {'K', 0, 11, &Fields::halfHour},
    {'k', 1, 24, &Fields::hour},
    {'m', 0, 59, &Fields::minute},
    {'s', 0, 59, &Fields::second},
});

/// The value of digits. A value beyond all limits stops growing, so that it cannot overflow.
unsigned numberOf(std::string_view digits) noexcept {
    constexpr unsigned tooLarge = 100'000;
    unsigned value = 0;
    for (const char digit : digits) value = std::min(value * 10 + digitValue(digit), tooLarge);
    return value;
}

/// The milliseconds of a fraction of a second; further digits are cut off.
unsigned millisecondsOf(std::string_view fraction) noexcept {
    unsigned value = 0;
    for (std::size_t i = 0; i < 3; ++i)
        value = value * 10 + (i < fraction.size() ? digitValue(fraction[i]) : 0);
    return value;
}

/// Reads a text along a pattern, part by part, in one pass without turning back.
class PatternReader {
public:
    PatternReader(const CalendarNames& names, std::string_view text) noexcept : names_(names), rest_(text) {}

    bool take(const PatternPart& part) noexcept {
        switch (part.kind) {
            case PatternPart::Kind::text:
                return takeText(part.text);
            case PatternPart::Kind::number:
                return takeNumber(part);
            case PatternPart::Kind::name:
                return takeName(part);
            case PatternPart::Kind::zone:
                return takeZoneOf(part);
            case PatternPart::Kind::unknown:
                break;
        }
        return false;
    }

    bool isAtEnd() const noexcept { return rest_.empty(); }
    const Fields& fields() const noexcept { return fields_; }

private:
    bool takeText(std::string_view text) noexcept {
        if (!rest_.starts_with(text)) return false;
        rest_.remove_prefix(text.size());
        return true;
    }

    std::string_view takeDigits(const PatternPart& part) noexcept {
        std::size_t count = 0;
        while (beginsWithDigits(rest_.substr(count), 1) && !(part.isExact && count == part.width)) ++count;
        if (part.isExact && count < part.width) count = 0;
        const std::string_view digits = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return digits;
    }

    bool takeNumber(const PatternPart& part) noexcept {
        const std::string_view digits = takeDigits(part);
        if (digits.empty()) return false;
        if (part.letter == 'S') {
            fields_.millisecond = millisecondsOf(digits);
            return true;
        }
        unsigned number = numberOf(digits);
        if (part.letter == 'y' && part.width == 2) {
            if (number > 99) return false;
            number += number < 50 ? 2000 : 1900;  // 1950 to 2049
        }
        const auto field = std::ranges::find(kNumberFields, part.letter, &NumberField::letter);
        if (field == kNumberFields.end() || number < field->lowest || number > field->highest) return false;
        fields_.*(field->place) = number;
        return true;
    }

    bool takeName(const PatternPart& part) noexcept {
        const NameMatch match = findName(rest_, names_[part.names]);
        if (match.size == 0) return false;
        rest_.remove_prefix(match.size);
        if (part.letter == 'E') return true;  // a weekday is read over: the date decides
        if (match.isAmbiguous) return false;
        const auto index = static_cast<unsigned>(match.index);
        if (part.letter == 'a')
            fields_.half = index;
        else
            fields_.month = index + 1;
        return true;
    }

    bool takeZoneOf(const PatternPart& part) noexcept {
        const std::optional<ZoneText> zone = takeZone(rest_, part.letter, part.isExact);
        if (!zone) return false;
        if (zone->offset)
            fields_.offset = zone->offset;
        else
            fields_.zone = zone->abbreviation;
        return true;
    }

    const CalendarNames& names_;
    std::string_view rest_;
    Fields fields_;
};

std::optional<local_days> dayOf(const Fields& fields) noexcept {
    const year inYear(static_cast<int>(fields.year.value_or(2000)));
    if (fields.dayOfYear) {
        const local_days day = local_days(inYear / January / 1) + days(*fields.dayOfYear - 1);
        if (year_month_day(day).year() != inYear) return std::nullopt;
        return day;
    }
    const year_month_day date(inYear, month(fields.month.value_or(1)), day(fields.day.value_or(1)));
    if (!date.ok()) return std::nullopt;
    return local_days(date);
}

Local timeOf(const Fields& fields, local_days day) noexcept {
    const unsigned hour =
        fields.hour ? *fields.hour % 24 : fields.halfHour.value_or(0) % 12 + 12 * fields.half.value_or(0);
    return day + hours(hour) + minutes(fields.minute.value_or(0)) + seconds(fields.second.value_or(0)) +
           milliseconds(fields.millisecond);
}

/// The offset that an abbreviation has in a zone: at a moment, just before or after a change of the clocks
/// near it, in the other half of the year, or else in general.
std::optional<seconds> offsetNamed(std::string_view name, const TimeZone& zone, Date moment) {
    for (const days distance : {days(0), days(1), days(-1), days(182), days(-182)}) {
        const TimeZone::Offset offset = zone.offsetAt(moment + distance);
        if (equalsIgnoringCase(offset.abbreviation, name)) return offset.fromUTC;
    }
    return offsetOfAbbreviation(name);
}

std::optional<Date> momentOf(const Fields& fields, Local local, const TimeZone& zone) {
    std::optional<seconds> offset = fields.offset;
    if (!offset) {
        const Date moment = zone.fromLocal(local);
        if (fields.zone.empty()) return moment;
        offset = offsetNamed(fields.zone, zone, moment);
    }
    if (!offset) return std::nullopt;
    return Date(local.time_since_epoch() - *offset);
}

// The years that a pattern can write with four digits.
constexpr Date kFirstMoment = sys_days(year(1) / January / 1);
constexpr Date kLastMoment = sys_days(year(9999) / December / 31) + days(1) - milliseconds(1);

}  // namespace

std::optional<Date> readDate(const DateStyle& style, std::string_view text) {
    PatternReader reader(style.names, text);
    for (const PatternPart& part : style.pattern.parts)
        if (!reader.take(part)) return std::nullopt;
    if (!reader.isAtEnd()) return std::nullopt;
    const std::optional<local_days> day = dayOf(reader.fields());
    if (!day) return std::nullopt;
    const std::optional<Date> date = momentOf(reader.fields(), timeOf(reader.fields(), *day), style.zone);
    if (!date || *date < kFirstMoment || *date > kLastMoment) return std::nullopt;
    return date;
}

}  // namespace brackwell
