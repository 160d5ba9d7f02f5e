// SPDX-License-Identifier: Apache-2.0
#include "dates/date_pattern.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

#include "dates/zone_text.h"
#include "text/ascii_case.h"
#include "text/ascii_digit.h"

namespace brackwell {

namespace {

using PartKind = PatternPart::Kind;

constexpr std::string_view kNumberLetters = "yMLdDhHKkmsS";
constexpr std::string_view kZoneLetters = "zZXx";
constexpr std::string_view kMonthLetters = "ML";

/// The list of names that a letter means in a pattern, by how often it is repeated.
struct NameWidths {
    char letter;
    std::size_t narrowest;
    std::size_t widest;
    NameList list;
};

constexpr auto kNameWidths = std::to_array<NameWidths>({
    {'M', 3, 3, NameList::shortMonths},
    {'M', 4, 4, NameList::months},
    {'M', 5, 5, NameList::narrowMonths},
    {'L', 3, 3, NameList::shortAloneMonths},
    {'L', 4, 4, NameList::aloneMonths},
    {'L', 5, 5, NameList::narrowAloneMonths},
    {'E', 1, 3, NameList::shortWeekdays},
    {'E', 4, 4, NameList::weekdays},
    {'E', 5, 5, NameList::narrowWeekdays},
    {'E', 6, 6, NameList::twoLetterWeekdays},
    // The C library has one form of these, which stands in for the shorter and longer ones.
    {'a', 1, 5, NameList::dayHalves},
});

bool contains(std::string_view letters, char letter) noexcept {
    return letters.find(letter) != std::string_view::npos;
}

PatternPart field(char letter, std::size_t width) {
    PatternPart part;
    part.letter = letter;
    part.width = width;
    const auto named = std::ranges::find_if(kNameWidths, [letter, width](const NameWidths& each) {
        return each.letter == letter && width >= each.narrowest && width <= each.widest;
    });
    if (named != kNameWidths.end()) {
        part.kind = PartKind::name;
        part.names = named->list;
    } else if (contains(kNumberLetters, letter) && !(contains(kMonthLetters, letter) && width > 2)) {
        part.kind = PartKind::number;
    } else if (contains(kZoneLetters, letter) && width <= longestZoneField(letter)) {
        part.kind = PartKind::zone;
    } else {
        part.kind = PartKind::unknown;
    }
    return part;
}

/// Takes quoted text off the pattern and appends it. Two apostrophes are one, inside quotes and outside.
void takeQuoted(std::string_view& pattern, std::string& text) {
    pattern.remove_prefix(1);
    if (pattern.starts_with('\'')) {
        pattern.remove_prefix(1);
        text += '\'';
        return;
    }
    while (!pattern.empty()) {
        const std::size_t quote = std::min(pattern.find('\''), pattern.size());
        text += pattern.substr(0, quote);
        pattern.remove_prefix(std::min(quote + 1, pattern.size()));
        if (!pattern.starts_with('\'')) return;
        pattern.remove_prefix(1);
        text += '\'';
    }
}

/// Takes everything up to the next letter outside quotes.
PatternPart takeText(std::string_view& pattern) {
    PatternPart part;
    while (!pattern.empty() && !isASCIILetter(pattern.front())) {
        if (pattern.front() == '\'') {
            takeQuoted(pattern, part.text);
        } else {
            part.text += pattern.front();
            pattern.remove_prefix(1);
        }
    }
    return part;
}

/// Takes a letter with all its repetitions.
PatternPart takeField(std::string_view& pattern) {
    const char letter = pattern.front();
    const std::size_t width = std::min(pattern.find_first_not_of(letter), pattern.size());
    pattern.remove_prefix(width);
    return field(letter, width);
}

bool beginsWithDigit(const PatternPart& part) noexcept {
    return part.kind == PartKind::number || (part.kind == PartKind::text && beginsWithDigits(part.text, 1));
}

/// Finds the parts that have exactly as many digits as letters: numbers next to each other could not be
/// separated otherwise, and the width of a fraction of a second says how fine it is.
void findExactParts(std::vector<PatternPart>& parts) noexcept {
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool isNumber = parts[i].kind == PartKind::number;
        const bool digitsFollow = i + 1 < parts.size() && beginsWithDigit(parts[i + 1]);
        const bool followsNumber = i > 0 && parts[i - 1].kind == PartKind::number;
        if (isNumber || parts[i].kind == PartKind::zone)
            parts[i].isExact = digitsFollow || (isNumber && (followsNumber || parts[i].letter == 'S'));
    }
}

}  // namespace

DatePattern parseDatePattern(std::string_view pattern) {
    DatePattern result;
    while (!pattern.empty()) {
        PatternPart part = isASCIILetter(pattern.front()) ? takeField(pattern) : takeText(pattern);
        if (part.kind == PartKind::name) result.names.set(static_cast<std::size_t>(part.names));
        result.parts.push_back(std::move(part));
    }
    findExactParts(result.parts);
    return result;
}

}  // namespace brackwell
