// SPDX-License-Identifier: Apache-2.0
#include "dates/zone_text.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "dates/civil_time.h"
#include "text/ascii_case.h"
#include "text/ascii_digit.h"

namespace brackwell {

namespace {

// ---------------------------------------------------------------------------------------------
// Reading

constexpr std::array<std::string_view, 4> kUniversalNames = {"UTC", "GMT", "UT", "Z"};

bool isUniversal(std::string_view name) noexcept {
    return std::ranges::any_of(kUniversalNames,
                               [name](std::string_view other) { return equalsIgnoringCase(name, other); });
}

/// Takes one of UTC's names off the beginning, or none.
std::string_view takeUniversalName(std::string_view& text) noexcept {
    for (const std::string_view name : kUniversalNames)
        if (equalsIgnoringCase(text.substr(0, name.size()), name)) {
            text.remove_prefix(name.size());
            return name;
        }
    return {};
}

std::string_view takeLetters(std::string_view& text) noexcept {
    const auto end = std::ranges::find_if_not(text, isASCIILetter);
    const std::string_view letters = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(letters.size());
    return letters;
}

std::string_view takeDigits(std::string_view& text, std::size_t most) noexcept {
    std::size_t count = 0;
    while (count < most && count < text.size() && digitValue(text[count]) <= 9) ++count;
    const std::string_view digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

/// The one to two digits as a number below `limit`.
std::optional<unsigned> smallNumber(std::string_view digits, unsigned limit) noexcept {
    unsigned value = 0;
    for (const char digit : digits) value = value * 10 + digitValue(digit);
    if (digits.empty() || value >= limit) return std::nullopt;
    return value;
}

/// Takes ":30" off the beginning; its digits, or none when it does not begin so.
std::string_view takeColonAndPair(std::string_view& text) noexcept {
    if (!text.starts_with(':') || !beginsWithDigits(text.substr(1), 2)) return {};
    text.remove_prefix(1);
    return takeDigits(text, 2);
}

/// Takes "+1", "-0530", "+05:30" or "+005328" off the beginning.
std::optional<std::chrono::seconds> takeOffset(std::string_view& text, bool digitsFollow) noexcept {
    if (!text.starts_with('+') && !text.starts_with('-')) return std::nullopt;
    const bool negative = text.front() == '-';
    text.remove_prefix(1);

    const std::string_view digits = takeDigits(text, digitsFollow ? 4 : 7);
    const std::size_t hourDigits = std::min<std::size_t>(digits.size(), 2);
    std::string_view minute = digits.substr(hourDigits);
    std::string_view second;
    if (minute.empty()) {
        minute = takeColonAndPair(text);
        if (!minute.empty()) second = takeColonAndPair(text);
    } else if (minute.size() == 4) {
        second = minute.substr(2);
        minute = minute.substr(0, 2);
    }
    if (minute.size() == 1 || minute.size() > 2) return std::nullopt;
    const auto hours = smallNumber(digits.substr(0, hourDigits), 24);
    const auto minutes = minute.empty() ? 0U : smallNumber(minute, 60);
    const auto rest = second.empty() ? 0U : smallNumber(second, 60);
    if (!hours || !minutes || !rest) return std::nullopt;
    const std::chrono::seconds offset(*hours * 3600 + *minutes * 60 + *rest);
    return negative ? -offset : offset;
}

// ---------------------------------------------------------------------------------------------
// Writing

enum class Minutes : bool { unlessZero, always };
enum class Seconds : bool { never, unlessZero };

struct OffsetForm {
    std::string_view separator;
    Minutes minutes = Minutes::always;
    Seconds seconds = Seconds::unlessZero;
    std::size_t hourDigits = 2;
};

void appendOffset(std::string& text, std::chrono::seconds offset, const OffsetForm& form) {
    text += offset < std::chrono::seconds(0) ? '-' : '+';
    const auto size = static_cast<unsigned>(std::chrono::abs(offset).count());
    const unsigned minute = size / 60 % 60;
    const unsigned second = form.seconds == Seconds::never ? 0 : size % 60;
    appendPadded(text, size / 3600, form.hourDigits);
    if (minute == 0 && second == 0 && form.minutes == Minutes::unlessZero) return;
    text += form.separator;
    appendPadded(text, minute, 2);
    if (second == 0) return;
    text += form.separator;
    appendPadded(text, second, 2);
}

void appendNamedOffset(std::string& text, std::chrono::seconds offset, const OffsetForm& form) {
    text += "GMT";
    if (offset != std::chrono::seconds(0)) appendOffset(text, offset, form);
}

constexpr OffsetForm kLongForm{":"};
constexpr OffsetForm kShortForm{":", Minutes::unlessZero, Seconds::unlessZero, 1};

/// The forms of X and x, by the number of letters less one.
constexpr std::array<OffsetForm, 5> kIsoForms{{{"", Minutes::unlessZero, Seconds::never},
                                               {"", Minutes::always, Seconds::never},
                                               {":", Minutes::always, Seconds::never},
                                               {"", Minutes::always, Seconds::unlessZero},
                                               {":", Minutes::always, Seconds::unlessZero}}};

void appendISO(std::string& text, std::chrono::seconds offset, const OffsetForm& form, bool zeroIsZ) {
    // What is not written must not leave a sign behind: "-00:00" is not allowed.
    if (form.seconds == Seconds::never) offset = std::chrono::duration_cast<std::chrono::minutes>(offset);
    if (zeroIsZ && offset == std::chrono::seconds(0))
        text += 'Z';
    else
        appendOffset(text, offset, form);
}

// ---------------------------------------------------------------------------------------------

struct KnownAbbreviation {
    std::string_view name;
    std::chrono::hours offset;
};

constexpr auto kKnownAbbreviations = [] {
    using std::chrono::hours;
    return std::to_array<KnownAbbreviation>({
        {"UTC", hours(0)},
        {"GMT", hours(0)},
        {"UT", hours(0)},
        {"Z", hours(0)},
        {"EST", hours(-5)},
        {"EDT", hours(-4)},
        {"CST", hours(-6)},
        {"CDT", hours(-5)},
        {"MST", hours(-7)},
        {"MDT", hours(-6)},
        {"PST", hours(-8)},
        {"PDT", hours(-7)},
        {"WET", hours(0)},
        {"WEST", hours(1)},
        {"CET", hours(1)},
        {"CEST", hours(2)},
        {"EET", hours(2)},
        {"EEST", hours(3)},
    });
}();

}  // namespace

std::optional<ZoneText> takeZone(std::string_view& text, char letter, bool digitsFollow) noexcept {
    const std::string_view name = letter == 'z' ? takeLetters(text) : takeUniversalName(text);
    const bool signFollows = text.starts_with('+') || text.starts_with('-');
    ZoneText zone;
    if (name.empty() || (signFollows && name.size() > 1 && isUniversal(name))) {
        zone.offset = takeOffset(text, digitsFollow);
        if (!zone.offset) return std::nullopt;
    } else if (letter == 'z') {
        zone.abbreviation = name;
    } else {
        zone.offset = std::chrono::seconds(0);
    }
    return zone;
}

void appendZone(std::string& text, char letter, std::size_t width, const TimeZone::Offset& offset) {
    const std::chrono::seconds fromUTC = offset.fromUTC;
    if (letter == 'z' && width < 4) {
        const bool isName =
            !offset.abbreviation.empty() && std::ranges::all_of(offset.abbreviation, isASCIILetter);
        text += isName ? offset.abbreviation : shortOffsetName(fromUTC);
    } else if (letter == 'z' || (letter == 'Z' && width == 4)) {
        appendNamedOffset(text, fromUTC, kLongForm);
    } else if (letter == 'Z') {
        const bool extended = width == 5;
        appendISO(text, fromUTC, kIsoForms[extended ? 4 : 3], extended);
    } else {
        appendISO(text, fromUTC, kIsoForms[width - 1], letter == 'X');
    }
}

std::string shortOffsetName(std::chrono::seconds offset) {
    std::string name;
    appendNamedOffset(name, offset, kShortForm);
    return name;
}

std::optional<std::chrono::seconds> offsetOfAbbreviation(std::string_view abbreviation) noexcept {
    const auto known =
        std::ranges::find_if(kKnownAbbreviations, [abbreviation](const KnownAbbreviation& each) {
            return equalsIgnoringCase(each.name, abbreviation);
        });
    if (known == kKnownAbbreviations.end()) return std::nullopt;
    return known->offset;
}

}  // namespace brackwell
