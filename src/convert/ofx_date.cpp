// SPDX-License-Identifier: Apache-2.0
#include "convert/ofx_date.h"

namespace brackwell {
namespace {

using namespace std::chrono;

/// Reads digits at fixed places; any other character there spoils the whole.
class FixedDigits {
public:
    explicit FixedDigits(std::string_view text) noexcept : text_(text) {}

    unsigned number(std::size_t begin, std::size_t count) noexcept {
        unsigned value = 0;
        for (const char c : text_.substr(begin, count)) {
            const unsigned digit = static_cast<unsigned char>(c) - unsigned{'0'};
            good_ &= digit <= 9;
            value = value * 10 + digit;
        }
        return value;
    }
    bool good() const noexcept { return good_; }

private:
    std::string_view text_;
    bool good_ = true;
};

/// Reads "yyyyMMdd", "yyyyMMddHHmmss" or "yyyyMMddHHmmss.SSS"; the text's length says which.
std::optional<Date> dateOfFixedFormat(std::string_view text, bool withTime, bool withMilliseconds) noexcept {
    FixedDigits digits(text);
    const year_month_day day(year(static_cast<int>(digits.number(0, 4))), month(digits.number(4, 2)),
                             std::chrono::day(digits.number(6, 2)));
    const unsigned hour = withTime ? digits.number(8, 2) : 0;
    const unsigned minute = withTime ? digits.number(10, 2) : 0;
    const unsigned second = withTime ? digits.number(12, 2) : 0;
    const unsigned millisecond = withMilliseconds ? digits.number(15, 3) : 0;
    if (!digits.good() || !day.ok() || day.year() < year(1)) return std::nullopt;
    if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return sys_days(day) + hours(hour) + minutes(minute) + seconds(second) + milliseconds(millisecond);
}

/// The first characters of a text, for a text that has more; otherwise all of it.
std::string_view firstCharacters(std::string_view text, std::size_t count) noexcept {
    if (text.size() <= count) return text;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool beginsCharacter = (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80;
        if (beginsCharacter && count-- == 0) return text.substr(0, i);
    }
    return text;
}

}  // namespace

std::optional<Date> dateFromOFXText(std::string_view text) noexcept {
    constexpr std::size_t dayLength = 8;
    constexpr std::size_t secondLength = 14;
    constexpr std::size_t millisecondLength = 18;
    text = firstCharacters(text, millisecondLength);
    if (text.size() == millisecondLength && text[secondLength] == '.')
        if (const auto date = dateOfFixedFormat(text, true, true)) return date;
    if (text.size() == secondLength)
        if (const auto date = dateOfFixedFormat(text, true, false)) return date;
    // A zone in brackets is never applied, and a time before it is dropped: intended.
    text = firstCharacters(text, dayLength);
    if (text.size() != dayLength) return std::nullopt;
    return dateOfFixedFormat(text, false, false);
}

}  // namespace brackwell
