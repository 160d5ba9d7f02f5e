// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <array>
#include <set>
#include <string>

using brackwell::newUUID;

TEST_CASE("a UUID has 36 characters: upper-case hexadecimal digits in groups of 8, 4, 4, 4 and 12") {
    for (int round = 0; round < 1000; ++round) {
        const std::string uuid = newUUID();
        CAPTURE(uuid);
        REQUIRE(uuid.size() == 36);
        for (std::size_t i = 0; i < uuid.size(); ++i) {
            const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
            const char* allowed = hyphen ? "-" : "0123456789ABCDEF";
            REQUIRE(std::string_view(allowed).find(uuid[i]) != std::string_view::npos);
        }
    }
}

TEST_CASE("a UUID says that it is random") {
    std::set<char> variants;
    for (int round = 0; round < 1000; ++round) {
        const std::string uuid = newUUID();
        CAPTURE(uuid);
        REQUIRE(uuid[14] == '4');
        variants.insert(uuid[19]);
    }
    CHECK(variants == std::set{'8', '9', 'A', 'B'});
}

TEST_CASE("no two UUIDs are the same, and every other digit takes every value") {
    std::set<std::string> uuids;
    std::array<std::set<char>, 36> digits;
    for (int round = 0; round < 10000; ++round) {
        const std::string uuid = newUUID();
        uuids.insert(uuid);
        for (std::size_t i = 0; i < digits.size(); ++i) digits[i].insert(uuid[i]);
    }
    CHECK(uuids.size() == 10000);
    for (std::size_t i = 0; i < digits.size(); ++i) {
        CAPTURE(i);
        const bool fixed = i == 8 || i == 13 || i == 14 || i == 18 || i == 23;
        CHECK(digits[i].size() == (fixed ? 1U : i == 19 ? 4U : 16U));
    }
}
