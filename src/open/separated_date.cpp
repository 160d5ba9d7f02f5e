// SPDX-License-Identifier: Apache-2.0
#include "open/separated_date.h"

#include <algorithm>

#include "platform/ascii_digit.h"

namespace brackwell::opening {
namespace {

using namespace std::chrono;

/// Digits that were taken off a text.
struct Digits {
    unsigned value = 0;
    std::size_t count = 0;
};

/// Takes the digits off the beginning of the text, four at most.
Digits takeDigits(std::string_view& text) noexcept {
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
    const Digits digits = takeDigits(text);
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

/// True for "Z", an offset ("+2", "-05:00", "+0530"), a zone in brackets, and for none.
bool isZone(std::string_view text) noexcept {
    if (text.empty() || text == "Z" || text == "z") return true;
    if (takeCharacter(text, '[')) return text.ends_with(']') && text.find(']') == text.size() - 1;
    if (!takeCharacter(text, '+') && !takeCharacter(text, '-')) return false;
    const Digits hour = takeDigits(text);
    if (text.empty()) return hour.count > 0 && hour.count != 3;
    return hour.count == 2 && takeCharacter(text, ':') && takePair(text, 60) && text.empty();
}

/// The time that stands after a date, with what is between them; midnight when there is none.
std::optional<milliseconds> timeAfterDate(std::string_view text) noexcept {
    if (text.empty()) return milliseconds(0);
    const std::string_view apart = trimWhiteSpace(text);
    const bool hasBlank = apart.size() != text.size();
    text = apart;
    if (!hasBlank && !takeCharacter(text, 'T')) return std::nullopt;

    const Digits hour = takeDigits(text);
    if (hour.count == 0 || hour.count > 2 || hour.value > 23 || !takeCharacter(text, ':'))
        return std::nullopt;
    const std::optional<unsigned> minute = takePair(text, 60);
    if (!minute) return std::nullopt;
    milliseconds time = hours(hour.value) + minutes(*minute);
    if (takeCharacter(text, ':')) {
        const std::optional<unsigned> second = takePair(text, 60);
        if (!second) return std::nullopt;
        time += seconds(*second);
        if (takeCharacter(text, '.')) {
            if (!beginsWithDigits(text, 1)) return std::nullopt;
            time += takeFraction(text);
        }
    }
    if (!isZone(trimWhiteSpace(text))) return std::nullopt;
    return time;
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
    numbers[0] = takeDigits(text);
    if (text.empty()) return std::nullopt;
    date.mark = text.front();
    if (date.mark != '/' && date.mark != '-' && date.mark != '.') return std::nullopt;
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        if (!takeCharacter(text, date.mark)) return std::nullopt;
        numbers[i] = takeDigits(text);
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
