// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include <limits>

/// \file
/// The rules that all classes of the profile read with, as checks of one element. `read` takes the value
/// of the element and gives what the object made of it.

namespace brackwell::tests {

/// Values that are neither a text nor the list of a repeated leaf.
inline std::vector<ParseValue> aggregates() { return {ParseDictionary{}, ParseDictionary{{"A", "Y"}}}; }
inline ParseValue repeated() { return ParseValue::array({"Y", "1"}); }

template <class Read>
void checkFlag(const Read& read) {
    CHECK(read("Y"));
    for (const char* text : {"N", "y", "YES", " Y", "Y ", "1", "true", ""}) {
        CAPTURE(text);
        CHECK_FALSE(read(text));
    }
    for (const ParseValue& value : aggregates()) CHECK_FALSE(read(value));
    CHECK_FALSE(read(repeated()));
    CHECK_FALSE(read(ParseValue()));
}

template <class Read>
void checkInteger(const Read& read) {
    struct Row {
        const char* text;
        std::int64_t value;
    };
    for (const Row& row : {Row{"4", 4}, Row{" 32", 32}, Row{"+7", 7}, Row{"-3", -3}, Row{"2a", 2},
                           Row{"1.9", 1}, Row{"abc", 0}, Row{"", 0}, Row{"-", 0},
                           Row{"9223372036854775808", std::numeric_limits<std::int64_t>::max()},
                           Row{"-9223372036854775809", std::numeric_limits<std::int64_t>::min()}}) {
        CAPTURE(row.text);
        CHECK(read(row.text) == row.value);
    }
    for (const ParseValue& value : aggregates()) CHECK(read(value) == 0);
    CHECK(read(repeated()) == 0);
    CHECK(read(ParseValue()) == 0);
}

template <class Read>
void checkText(const Read& read) {
    for (const char* text : {"kept", " kept ", ""}) {
        CAPTURE(text);
        CHECK(read(text) == text);
    }
    for (const ParseValue& value : aggregates()) CHECK_FALSE(read(value));
    CHECK_FALSE(read(repeated()));
    CHECK_FALSE(read(ParseValue()));
}

template <class Read>
void checkList(const Read& read) {
    using List = std::vector<ParseValue>;
    const ParseDictionary empty;
    CHECK(read("ENG") == List{"ENG"});
    CHECK(read("") == List{""});
    CHECK(read(ParseValue::array({"ENG", "FRA", "ENG"})) == List{"ENG", "FRA", "ENG"});
    // Elements are not checked.
    CHECK(read(ParseValue::array({"ENG", empty})) == List{"ENG", empty});
    for (const ParseValue& value : aggregates()) CHECK_FALSE(read(value));
    CHECK_FALSE(read(ParseValue()));
}

}  // namespace brackwell::tests
