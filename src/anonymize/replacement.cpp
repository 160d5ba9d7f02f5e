// SPDX-License-Identifier: Apache-2.0
#include "anonymize/replacement.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "text/ascii_case.h"
#include "text/ascii_digit.h"
#include "text/utf8.h"

namespace brackwell::anonymizing {
namespace {

// What makes words and amounts independent of each other: "4711" in a memo is not an amount of 47.11.
constexpr std::uint64_t kWord = 1;
constexpr std::uint64_t kAmount = 2;

/// True for a character that is not ASCII and may be a part of a word. Most of what is punctuation or a
/// symbol stands in a few blocks.
bool isLetterBeyondASCII(char32_t c) noexcept {
    if (c < 0xC0) return c == 0xAA || c == 0xB5 || c == 0xBA;
    if (c == 0xD7 || c == 0xF7) return false;
    const bool isPunctuation = (c >= 0x2000 && c <= 0x2BFF) || (c >= 0x3000 && c <= 0x303F);
    const bool isSpecial = (c >= 0xFE00 && c <= 0xFE0F) || c == 0xFEFF || (c >= 0xFFF0 && c <= 0xFFFF);
    return !isPunctuation && !isSpecial;
}

/// The bytes of the character that a text begins with if it is part of a word; 0 if not.
std::size_t wordCharacterSize(std::string_view text) noexcept {
    const char first = text.front();
    if (isASCIILetter(first) || isASCIIDigit(first)) return 1;
    if (static_cast<unsigned char>(first) < 0x80) return 0;
    const UTF8Character character = firstCharacter(text);
    return isLetterBeyondASCII(character.value) ? character.size : 0;
}

/// The bytes that a text begins with whose characters are part of a word, and no digits if `lettersOnly`.
std::size_t wordSize(std::string_view text, bool lettersOnly) noexcept {
    std::size_t size = 0;
    while (size < text.size() && !(lettersOnly && isASCIIDigit(text[size]))) {
        const std::size_t next = wordCharacterSize(text.substr(size));
        if (next == 0) break;
        size += next;
    }
    return size;
}
std::size_t wordAt(std::string_view text) noexcept { return wordSize(text, false); }
std::size_t lettersAt(std::string_view text) noexcept { return wordSize(text, true); }

/// The entity or character reference that a text begins with; "" when it begins with none.
std::string_view referenceAt(std::string_view text) noexcept {
    constexpr std::size_t longest = 10;
    if (!text.starts_with('&')) return {};
    const std::size_t end = text.substr(0, longest).find(';');
    if (end == text.npos || end < 2) return {};
    const std::string_view inside = text.substr(1, end - 1);
    const auto isPart = [](char c) { return isASCIILetter(c) || isASCIIDigit(c) || c == '#'; };
    return std::ranges::all_of(inside, isPart) ? text.substr(0, end + 1) : std::string_view();
}

/// Characters whose references have as many digits, all of them letters.
struct ReferenceRange {
    int base;
    std::size_t digits;
    std::uint32_t first;
    std::uint32_t last;
};
constexpr ReferenceRange kReferenceRanges[] = {
    {10, 2, 'A', 'Z'},       {10, 3, 'd', 'z'},         {10, 4, 0x430, 0x44F},
    {10, 5, 0x4E00, 0x9FA5}, {10, 6, 0x1F600, 0x1F64F}, {16, 2, 'A', 'Z'},
    {16, 3, 0x430, 0x44F},   {16, 4, 0x4E00, 0x9FA5},   {16, 5, 0x1F600, 0x1F64F},
};

Symbol symbolOf(char letterOrDigit) noexcept {
    if (isASCIIDigit(letterOrDigit)) return {static_cast<std::uint8_t>(letterOrDigit - '0'), 10};
    return {static_cast<std::uint8_t>(smallLetter(letterOrDigit) - 'a'), 26};
}

/// The character of a symbol, where another one of its kind stood.
char characterOf(Symbol symbol, char before) noexcept {
    if (isASCIIDigit(before)) return static_cast<char>('0' + symbol.value);
    const char small = static_cast<char>('a' + symbol.value);
    return before == smallLetter(before) ? small : capitalLetter(small);
}

}  // namespace

std::size_t Letters::kindOf(char32_t letter) noexcept {
    if (letter >= 0xFF61 && letter <= 0xFF9F) return 3;
    if (letter < 0x800) return 0;
    return letter < 0x10000 ? 1 : 2;
}

Letters::Letters(std::string_view text) {
    for (std::size_t at = asciiPrefix(text); at < text.size(); at += asciiPrefix(text.substr(at))) {
        const UTF8Character character = firstCharacter(text.substr(at));
        at += std::max<std::size_t>(character.size, 1);
        if (isLetterBeyondASCII(character.value))
            letters_[kindOf(character.value)].push_back(character.value);
    }
    for (std::vector<char32_t>& letters : letters_) {
        std::ranges::sort(letters);
        letters.erase(std::unique(letters.begin(), letters.end()), letters.end());
    }
}

char32_t Letters::another(char32_t letter, std::uint64_t number) const noexcept {
    const std::vector<char32_t>& letters = letters_[kindOf(letter)];
    if (letters.size() < 2) return letter;
    const auto at = static_cast<std::size_t>(std::ranges::lower_bound(letters, letter) - letters.begin());
    return letters[(at + 1 + number % (letters.size() - 1)) % letters.size()];
}

void Replacement::appendWords(std::string& to, std::string_view text) const {
    while (!text.empty()) {
        std::size_t size = wordAt(text);
        if (size != 0) {
            appendWord(to, text.substr(0, size));
        } else if (const std::string_view reference = referenceAt(text); !reference.empty()) {
            size = reference.size();
            appendReference(to, reference);
        } else {
            size = 1;
            to += text.front();
        }
        text.remove_prefix(size);
    }
}

void Replacement::appendWord(std::string& to, std::string_view word) const {
    std::vector<Symbol> symbols;
    for (const char c : word)
        if (static_cast<unsigned char>(c) < 0x80) symbols.push_back(symbolOf(c));
    cipher_.replace(symbols, kWord);
    std::uint64_t number = symbols.size() == word.size() ? 0 : cipher_.numberFor(word);
    auto symbol = symbols.begin();
    while (!word.empty()) {
        if (static_cast<unsigned char>(word.front()) < 0x80) {
            to += characterOf(*symbol++, word.front());
            word.remove_prefix(1);
            continue;
        }
        const UTF8Character character = firstCharacter(word);
        appendCharacter(to, letters_.another(character.value, number));
        word.remove_prefix(character.size);
        number = cipher_.numberFor({reinterpret_cast<const char*>(&number), sizeof number});
    }
}

/// An entity stays, since it stands for a mark. A number stands for any character, and several of them may be
/// a name.
void Replacement::appendReference(std::string& to, std::string_view reference) const {
    const bool isHexadecimal = reference.starts_with("&#x") || reference.starts_with("&#X");
    const std::size_t begin = isHexadecimal ? 3 : 2;
    const std::size_t digits = reference.size() - begin - 1;
    const int base = isHexadecimal ? 16 : 10;
    const bool isControl = digits < 2;
    if (!reference.starts_with("&#") || isControl) {
        to += reference;
        return;
    }
    to += reference.substr(0, begin);
    const auto* const range = std::ranges::find_if(kReferenceRanges, [&](const ReferenceRange& row) {
        return row.base == base && row.digits == digits;
    });
    if (range == std::end(kReferenceRanges)) {
        to.append(digits, '0');  // no character has so many digits
    } else {
        std::uint32_t before = 0;
        std::from_chars(reference.data() + begin, reference.data() + begin + digits, before, base);
        const std::uint32_t size = range->last - range->first + 1;
        auto number = static_cast<std::uint32_t>(cipher_.numberFor(reference) % size);
        if (range->first + number == before) number = (number + 1) % size;
        std::array<char, 8> written{};
        const auto result =
            std::to_chars(written.data(), written.data() + written.size(), range->first + number, base);
        to.append(written.data(), result.ptr);
    }
    to += ';';
}

void Replacement::appendAmount(std::string& to, std::string_view text) const {
    if (std::ranges::none_of(text, isASCIIDigit)) return appendWords(to, text);
    const std::vector<Symbol> symbols = digitsFor(text);
    auto symbol = symbols.begin();
    while (!text.empty()) {
        const char c = text.front();
        std::size_t size = 1;
        if (isASCIIDigit(c)) {
            const bool isFirst = symbol == symbols.begin();
            const bool stays = isFirst && (c == '0' || symbols.empty());
            to += stays ? c : static_cast<char>((isFirst ? '1' : '0') + (symbol++)->value);
        } else {
            // A currency, or a sign such as "CR", is no name.
            constexpr std::size_t longestMark = 3;
            size = std::max<std::size_t>(lettersAt(text), 1);
            if (size > longestMark)
                appendWord(to, text.substr(0, size));
            else
                to += text.substr(0, size);
        }
        text.remove_prefix(size);
    }
}

std::vector<Symbol> Replacement::digitsFor(std::string_view amount) const {
    std::vector<Symbol> symbols;
    for (const char c : amount) {
        if (!isASCIIDigit(c) || (symbols.empty() && c == '0')) continue;
        // The first digit stays above zero, so that the amount keeps its places.
        symbols.push_back(symbols.empty() ? Symbol{static_cast<std::uint8_t>(c - '1'), 9} : symbolOf(c));
    }
    cipher_.replace(symbols, kAmount);
    return symbols;
}

}  // namespace brackwell::anonymizing
