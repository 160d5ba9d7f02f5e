// SPDX-License-Identifier: Apache-2.0
#include "text/utf8.h"

#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <array>
#include <memory>
#include <random>
#include <string>
#include <vector>

using brackwell::firstCharacter;
using brackwell::lastCharacter;
using brackwell::UTF8Character;

namespace {

/// The ways to check texts that this build has.
struct Way {
    const char* name;
    bool (*isValid)(std::string_view) noexcept;
    std::size_t (*asciiPrefix)(std::string_view) noexcept;
};

const std::vector<Way> kWays = {
    {"chosen", brackwell::isValidUTF8, brackwell::asciiPrefix},
    {"portable", brackwell::isValidUTF8Portable, brackwell::asciiPrefixPortable},
#if defined(__SSE2__)
    {"SSE2", brackwell::isValidUTF8SSE2, brackwell::asciiPrefixSSE2},
#endif
};

/// The bytes in memory of exactly their size, so that a sanitizer sees a read beside them.
template <typename Function>
auto onExactMemory(std::string_view bytes, Function function) {
    const auto memory = std::make_unique<char[]>(bytes.size());
    bytes.copy(memory.get(), bytes.size());
    return function(std::string_view(memory.get(), bytes.size()));
}

bool everyWaySays(bool expected, std::string_view bytes) {
    for (const Way& way : kWays) {
        if (onExactMemory(bytes, way.isValid) != expected) {
            MESSAGE(way.name);
            return false;
        }
    }
    return true;
}

bool isScalarValue(char32_t character) {
    return character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
}

/// Well-formed UTF-8 by the table of the Unicode standard, written out; the other side of comparisons.
bool isWellFormed(std::string_view text) {
    struct Row {
        unsigned first[2], second[2];
        std::size_t size;
    };
    constexpr std::array rows = {
        Row{{0x00, 0x7F}, {}, 1},           Row{{0xC2, 0xDF}, {0x80, 0xBF}, 2},
        Row{{0xE0, 0xE0}, {0xA0, 0xBF}, 3}, Row{{0xE1, 0xEC}, {0x80, 0xBF}, 3},
        Row{{0xED, 0xED}, {0x80, 0x9F}, 3}, Row{{0xEE, 0xEF}, {0x80, 0xBF}, 3},
        Row{{0xF0, 0xF0}, {0x90, 0xBF}, 4}, Row{{0xF1, 0xF3}, {0x80, 0xBF}, 4},
        Row{{0xF4, 0xF4}, {0x80, 0x8F}, 4},
    };
    const auto isIn = [](char byte, const unsigned(&range)[2]) {
        const unsigned value = static_cast<unsigned char>(byte);
        return value >= range[0] && value <= range[1];
    };
    while (!text.empty()) {
        const Row* found = nullptr;
        for (const Row& row : rows) {
            if (isIn(text[0], row.first)) found = &row;
        }
        if (found == nullptr || text.size() < found->size) return false;
        if (found->size > 1 && !isIn(text[1], found->second)) return false;
        for (std::size_t i = 2; i < found->size; ++i) {
            if (!isIn(text[i], {0x80, 0xBF})) return false;
        }
        text.remove_prefix(found->size);
    }
    return true;
}

const std::vector<std::string_view> kIllFormed = {
    "\x80",              // a continuation alone
    "\xBF",              //
    "\xC0\x80",          // overlong NUL
    "\xC1\xBF",          // overlong U+007F
    "\xE0\x80\x80",      // overlong
    "\xE0\x9F\xBF",      // overlong U+07FF
    "\xF0\x80\x80\x80",  // overlong
    "\xF0\x8F\xBF\xBF",  // overlong U+FFFF
    "\xED\xA0\x80",      // U+D800
    "\xED\xBF\xBF",      // U+DFFF
    "\xED\xA0\xBD\xED\xB8\x80",
    "\xF4\x90\x80\x80",  // U+110000
    "\xF5\x80\x80\x80",
    "\xF8\x88\x80\x80\x80",
    "\xFC\x84\x80\x80\x80\x80",
    "\xFE",
    "\xFF",
    "\xC3(",
    "\xE2(\xA1",
    "\xE2\x82(",
    "\xF0(\x8C\xBC",
    "\xF0\x90(\xBC",
    "\xF0\x9F\x98(",
    "\xC3\xC3",
    "\xC3\xA4\xA4",
};

}  // namespace

TEST_CASE("every character is written, read from both ends and valid") {
    int wrong = 0;
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        if (!isScalarValue(character)) continue;
        std::string text;
        brackwell::appendCharacter(text, character);
        const std::size_t size = character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
        const UTF8Character expected{character, size};
        if (text.size() != size || !isWellFormed(text)) ++wrong;
        if (firstCharacter(text) != expected || lastCharacter(text) != expected) ++wrong;
        if (firstCharacter(text + "\x80") != expected || lastCharacter("\xC3" + text) != expected) ++wrong;
        for (const Way& way : kWays) wrong += way.isValid(text) ? 0 : 1;
    }
    CHECK(wrong == 0);
}

TEST_CASE("characters are appended in their known form") {
    std::string text;
    for (const char32_t character : {U'A', U'\u00E4', U'\u20AC', U'\U0001F600'}) {
        brackwell::appendCharacter(text, character);
    }
    CHECK(text == "A\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST_CASE("surrogates written as characters are invalid") {
    for (unsigned low = 0; low < 0x800; ++low) {
        const std::string text = {'\xED', static_cast<char>(0xA0 | low >> 6),
                                  static_cast<char>(0x80 | (low & 0x3F))};
        CHECK(everyWaySays(false, text));
    }
}

TEST_CASE("ill-formed bytes are invalid and no character") {
    for (const std::string_view bytes : kIllFormed) {
        CAPTURE(bytes);
        CHECK_FALSE(isWellFormed(bytes));
        CHECK(everyWaySays(false, bytes));
        if (bytes != "\xC3\xA4\xA4") CHECK(firstCharacter(bytes).size == 0);
        if (static_cast<unsigned char>(bytes.back()) >= 0x80) CHECK(lastCharacter(bytes).size == 0);
    }
    CHECK(firstCharacter("").size == 0);
    CHECK(lastCharacter("").size == 0);
}

TEST_CASE("a character cut short is invalid") {
    for (const std::string_view whole : {"\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
        for (std::size_t size = 1; size < whole.size(); ++size) {
            CAPTURE(size);
            const std::string_view cut = whole.substr(0, size);
            CHECK(everyWaySays(false, cut));
            CHECK(everyWaySays(false, std::string(cut) + "a"));
            CHECK(onExactMemory(cut, firstCharacter).size == 0);
            CHECK(onExactMemory(cut, lastCharacter).size == 0);
            CHECK(onExactMemory(whole.substr(size), lastCharacter).size == 0);
        }
    }
}

TEST_CASE("every sequence of up to three bytes is judged rightly") {
    int wrong = 0;
    const auto check = [&](std::string_view bytes) {
        const bool expected = isWellFormed(bytes);
        for (const Way& way : kWays) wrong += way.isValid(bytes) == expected ? 0 : 1;
    };
    for (unsigned a = 0; a < 0x100; ++a) {
        check(std::string{static_cast<char>(a)});
        for (unsigned b = 0; b < 0x100; ++b) {
            check(std::string{static_cast<char>(a), static_cast<char>(b)});
            // Third bytes are told apart by ranges only; a few of each will do.
            for (const unsigned c :
                 {0x00U, 0x7FU, 0x80U, 0x8FU, 0x90U, 0x9FU, 0xA0U, 0xBFU, 0xC0U, 0xC2U, 0xFFU})
                check(std::string{static_cast<char>(a), static_cast<char>(b), static_cast<char>(c)});
        }
    }
    CHECK(wrong == 0);
}

TEST_CASE("four-byte sequences are judged rightly at the bounds of each byte") {
    constexpr std::array bounds = {0x00U, 0x7FU, 0x80U, 0x8FU, 0x90U, 0x9FU, 0xA0U, 0xBFU, 0xC0U, 0xFFU};
    int wrong = 0;
    for (unsigned a = 0xE8; a < 0x100; ++a) {
        for (const unsigned b : bounds) {
            for (const unsigned c : bounds) {
                for (const unsigned d : bounds) {
                    const std::string bytes = {static_cast<char>(a), static_cast<char>(b),
                                               static_cast<char>(c), static_cast<char>(d)};
                    for (const Way& way : kWays) wrong += way.isValid(bytes) == isWellFormed(bytes) ? 0 : 1;
                }
            }
        }
    }
    CHECK(wrong == 0);
}

TEST_CASE("the place of a character or an error among ASCII does not matter") {
    int wrong = 0;
    const auto check = [&](bool expected, std::string_view piece) {
        for (std::size_t before = 0; before <= 130; ++before) {
            for (const std::size_t behind : {0U, 1U, 15U, 16U, 64U}) {
                const std::string text =
                    std::string(before, 'a') + std::string(piece) + std::string(behind, 'b');
                if (!everyWaySays(expected, text)) ++wrong;
                for (const Way& way : kWays) wrong += onExactMemory(text, way.asciiPrefix) == before ? 0 : 1;
            }
        }
    };
    for (const std::string_view piece : {"\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) check(true, piece);
    for (const std::string_view piece : kIllFormed) check(false, piece);
    CHECK(wrong == 0);
}

TEST_CASE("the ASCII at the beginning is measured exactly") {
    for (std::size_t size = 0; size <= 200; ++size) {
        CAPTURE(size);
        const std::string text(size, '\x7F');
        for (const Way& way : kWays) {
            CHECK(onExactMemory(text, way.asciiPrefix) == size);
            CHECK(onExactMemory(text, way.isValid));
        }
    }
}

TEST_CASE("NUL is a character like others") { CHECK(everyWaySays(true, std::string(100, '\0'))); }

TEST_CASE("all ways agree on random bytes") {
    std::mt19937 random(20240131);
    constexpr std::array<std::string_view, 8> pieces = {
        "a",    "plain text of more bytes", "\xC3\xA4", "\xE2\x82\xAC",
        "\x80", "\xF0\x9F\x98\x80",         "\xED\xA0", "\xF4\x8F\xBF\xBF"};
    int wrong = 0;
    int valid = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        // Half of the rounds have no ill-formed piece.
        const auto piece = [&] { return pieces[random() % pieces.size()]; };
        for (auto count = random() % 20; count > 0; --count) {
            const std::string_view next = piece();
            if (round % 2 == 0 && !isWellFormed(next)) continue;
            text += next;
        }
        const bool expected = isWellFormed(text);
        valid += expected ? 1 : 0;
        if (!everyWaySays(expected, text)) ++wrong;
    }
    CHECK(wrong == 0);
    CHECK(valid >= 10000);
    CHECK(valid < 15000);
}
