// SPDX-License-Identifier: Apache-2.0
#include "dates/date_pattern.h"

#include <doctest/doctest.h>

#include <ostream>

using namespace brackwell;

namespace {

/// A pattern's parts in short: texts in braces, letters with their kind and width, ! for exact ones.
std::string shown(std::string_view pattern) {
    std::string text;
    for (const PatternPart& part : parseDatePattern(pattern).parts) {
        if (part.kind == PatternPart::Kind::text) {
            text += '{' + part.text + '}';
            continue;
        }
        text += part.letter;
        text += std::string(" #@~?").at(static_cast<std::size_t>(part.kind));
        text += std::to_string(part.width);
        if (part.isExact) text += '!';
    }
    return text;
}

struct PatternRow {
    std::string pattern;
    std::string parts;
};

void checkPatterns(const std::vector<PatternRow>& rows) {
    for (const PatternRow& row : rows) {
        CAPTURE(row.pattern);
        CHECK(shown(row.pattern) == row.parts);
    }
}

}  // namespace

TEST_CASE("a pattern is taken apart into letters in a row and text between them") {
    checkPatterns({{"", ""},
                   {"dd.MM.yyyy", "d#2{.}M#2{.}y#4"},
                   {"EEEE, d. MMMM", "E@4{, }d#1{. }M@4"},
                   {"h:mm a z", "h#1{:}m#2{ }a@1{ }z~1"},
                   {"yyyy\xE5\xB9\xB4M", "y#4{\xE5\xB9\xB4}M#1"}});
}

TEST_CASE("quoted text and doubled quotes stand for themselves") {
    checkPatterns({{"h 'o''clock'", "h#1{ o'clock}"},
                   {"''", "{'}"},
                   {"''''", "{''}"},
                   {"'''a'", "{'a}"},
                   {"'a'''", "{a'}"},
                   {"'T'HH", "{T}H#2"},
                   {"d'd'd", "d#1{d}d#1"},
                   {"d''d", "d#1{'}d#1"},
                   {"y'.'.'.'M", "y#1{...}M#1"}});
}

TEST_CASE("a quote that is not closed reaches to the end") {
    checkPatterns({{"d 'of MMMM", "d#1{ of MMMM}"}, {"d'", "d#1{}"}, {"'it''s", "{it's}"}});
}

TEST_CASE("fractions and numbers beside each other or before a digit are exact, others are not") {
    checkPatterns({{"yyyyMMdd", "y#4!M#2!d#2!"},
                   {"yyyyMMddHHmmss.SSS", "y#4!M#2!d#2!H#2!m#2!s#2!{.}S#3!"},
                   {"d.M.yyyy", "d#1{.}M#1{.}y#4"},
                   {"HH'0'mm", "H#2!{0}m#2"},
                   {"HH'h'mm", "H#2{h}m#2"},
                   {"dMMMyyyy", "d#1M@3y#4"},
                   {"ZZZHH", "Z~3!H#2"},
                   {"HHZZZ", "H#2Z~3"}});
}

TEST_CASE("letters without meaning, and too many of one, are unknown") {
    checkPatterns({{"G", "G?1"},
                   {"yyyyY", "y#4Y?1"},
                   {"MMMMM", "M@5"},
                   {"MMMMMM", "M?6"},
                   {"LLLLLL", "L?6"},
                   {"EEEEEE", "E@6"},
                   {"EEEEEEE", "E?7"},
                   {"aaaaa", "a@5"},
                   {"aaaaaa", "a?6"},
                   {"zzzz", "z~4"},
                   {"zzzzz", "z?5"},
                   {"ZZZZZ", "Z~5"},
                   {"ZZZZZZ", "Z?6"},
                   {"XXXXX", "X~5"},
                   {"XXXXXX", "X?6"},
                   {"xxxxx", "x~5"},
                   {"xxxxxx", "x?6"},
                   {"ssss", "s#4"},
                   {"SSSSSSSSS", "S#9!"}});
}

TEST_CASE("every letter but those of dates is unknown") {
    const std::string known = "yMLdDEahHKkmsSzZXx";
    for (char letter = 'A'; letter <= 'z'; ++letter) {
        if (letter > 'Z' && letter < 'a') continue;
        CAPTURE(letter);
        const bool isKnown = known.find(letter) != std::string::npos;
        const DatePattern pattern = parseDatePattern(std::string(1, letter));
        REQUIRE(pattern.parts.size() == 1);
        CHECK((pattern.parts[0].kind != PatternPart::Kind::unknown) == isKnown);
    }
}

TEST_CASE("a pattern needs the names that it shows") {
    CHECK(parseDatePattern("yyyy-MM-dd'T'HH:mm:ssXXX").names.none());
    CHECK(parseDatePattern("MMM").names == NameLists().set(static_cast<std::size_t>(NameList::shortMonths)));
    CHECK(parseDatePattern("'MMM' EEEE a").names.count() == 2);
}
