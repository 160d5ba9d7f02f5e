// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "text/utf8.h"

using brackwell::isLineBreak;
using brackwell::isWhiteSpace;
using brackwell::splitLines;
using brackwell::trimWhiteSpace;

namespace {

constexpr std::array<char32_t, 25> kWhiteSpace = {
    0x09,   0x0A,   0x0B,   0x0C,   0x0D,   0x20,   0x85,   0xA0,   0x1680, 0x2000, 0x2001, 0x2002, 0x2003,
    0x2004, 0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x2028, 0x2029, 0x202F, 0x205F, 0x3000};
constexpr std::array<char32_t, 7> kLineBreaks = {0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029};

std::string utf8(char32_t character) {
    std::string text;
    brackwell::appendCharacter(text, character);
    return text;
}

}  // namespace

TEST_CASE("exactly the listed characters are white space and line breaks") {
    int wrong = 0;
    for (char32_t character = 0; character <= 0x110000; ++character) {
        const bool space = std::ranges::find(kWhiteSpace, character) != kWhiteSpace.end();
        const bool lineBreak = std::ranges::find(kLineBreaks, character) != kLineBreaks.end();
        if (isWhiteSpace(character) != space || isLineBreak(character) != lineBreak) ++wrong;
    }
    CHECK(wrong == 0);
    CHECK_FALSE(isWhiteSpace(0xFFFFFFFF));
    CHECK_FALSE(isLineBreak(0xFFFFFFFF));
}

TEST_CASE("every white space is trimmed from both ends and kept inside") {
    for (const char32_t character : kWhiteSpace) {
        CAPTURE(static_cast<unsigned>(character));
        const std::string space = utf8(character);
        CHECK(trimWhiteSpace(space + "a" + space + "b" + space) == "a" + space + "b");
        CHECK(trimWhiteSpace(space + space + "\xC3\xA4" + space + space) == "\xC3\xA4");
        CHECK(trimWhiteSpace(space).empty());
    }
}

TEST_CASE("characters beside the white space are not trimmed") {
    for (const char32_t character :
         {0x00U, 0x08U, 0x0EU, 0x1FU, 0x21U, 0x7FU, 0x84U, 0x86U, 0xA1U, 0x180EU, 0x1FFFU, 0x200BU, 0x2027U,
          0x202AU, 0x2060U, 0x3001U, 0xFEFFU, 0x1F600U}) {
        CAPTURE(static_cast<unsigned>(character));
        const std::string text = utf8(character);
        CHECK(trimWhiteSpace(" " + text + " ") == text);
    }
}

TEST_CASE("a text without white space at its ends is the same view") {
    for (const std::string_view text : {"", "a", "a b", "\xE2\x82\xAC"}) {
        CHECK(trimWhiteSpace(text) == text);
        CHECK(static_cast<const void*>(trimWhiteSpace(text).data()) == text.data());
    }
}

TEST_CASE("bytes that are not UTF-8 are not white space") {
    struct Row {
        std::string_view text;
        std::string_view trimmed;
    };
    constexpr std::array rows = {
        Row{" \xC2 ", "\xC2"},                // the white space of U+00A0, cut
        Row{" \xE2\x80 ", "\xE2\x80"},        // of U+2003, cut
        Row{"\xA0", "\xA0"},                  // a continuation alone
        Row{"\x85\x85", "\x85\x85"},          //
        Row{"\xC2\xA0\xA0", "\xA0"},          // one too many
        Row{"\xA0\xC2\xA0", "\xA0"},          //
        Row{"\xE0\x82\xA0", "\xE0\x82\xA0"},  // U+00A0, overlong
        Row{"\xC0\xA0", "\xC0\xA0"},          // U+0020, overlong
        Row{"\x80\x80\x80\x80\x80", "\x80\x80\x80\x80\x80"},
        Row{"\xF0\x80\x80\xA0", "\xF0\x80\x80\xA0"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.trimmed);
        CHECK(trimWhiteSpace(row.text) == row.trimmed);
    }
}

TEST_CASE("trimming reads nothing beside the text") {
    // The bytes around complete a white space with those inside, which alone are none.
    const std::string_view whole = "\xE2\x80\x83\xC2\xA0";
    CHECK(trimWhiteSpace(whole).empty());
    CHECK(trimWhiteSpace(whole.substr(0, 2)) == "\xE2\x80");
    CHECK(trimWhiteSpace(whole.substr(1, 2)) == "\x80\x83");
    CHECK(trimWhiteSpace(whole.substr(0, 4)) == "\xC2");
    CHECK(trimWhiteSpace(whole.substr(2, 3)) == "\x83");
}

TEST_CASE("text is split at every line break") {
    using Lines = std::vector<std::string_view>;
    struct Row {
        std::string_view text;
        Lines lines;
    };
    const std::vector<Row> rows = {
        {"", {""}},
        {"a", {"a"}},
        {"a\nb", {"a", "b"}},
        {"a\n", {"a", ""}},
        {"\na", {"", "a"}},
        {"\n", {"", ""}},
        {"a\r\nb", {"a", "", "b"}},
        {"a\rb\nc\vd\fe", {"a", "b", "c", "d", "e"}},
        {"a\xC2\x85"
         "b\xE2\x80\xA8"
         "c\xE2\x80\xA9"
         "d",
         {"a", "b", "c", "d"}},
        {"a\tb c\xC2\xA0"
         "d\xE2\x80\xAF"
         "e",
         {"a\tb c\xC2\xA0"
          "d\xE2\x80\xAF"
          "e"}},
        {"\xC2\n\xE2\x80\n\xFF\n", {"\xC2", "\xE2\x80", "\xFF", ""}},
        {"\xE2\xC2\x85x", {"\xE2", "x"}},
        {"\xC2", {"\xC2"}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.text);
        CHECK(splitLines(row.text) == row.lines);
    }
}

TEST_CASE("lines are slices of the text") {
    const std::string_view text = "ab\ncd";
    const auto lines = splitLines(text);
    REQUIRE(lines.size() == 2);
    CHECK(static_cast<const void*>(lines[1].data()) == text.data() + 3);
}
