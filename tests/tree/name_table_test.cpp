// SPDX-License-Identifier: Apache-2.0
#include "tree/name_table.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

using namespace brackwell::reading;

TEST_CASE("known names keep their numbers, any other gets the next one when it first appears") {
    NameTable table;
    CHECK(table.end() == kKnownElementCount);
    CHECK(table.number("OFX") == element("OFX"));
    CHECK(table.number("one") == kKnownElementCount);
    CHECK(table.number("two") == kKnownElementCount + 1);
    CHECK(table.number("one") == kKnownElementCount);
    CHECK(table.number("") == kKnownElementCount + 2);
    CHECK(table.end() == kKnownElementCount + 3);
    CHECK(table.name(element("OFX")) == "OFX");
    CHECK(table.name(kKnownElementCount + 1) == "two");
    CHECK(table.name(kKnownElementCount + 2).empty());
}

TEST_CASE("numbers and names stay when the table grows") {
    std::vector<std::string> names;
    for (int i = 0; i < 5000; ++i) names.push_back("name " + std::to_string(i));
    NameTable table;
    for (std::size_t i = 0; i < names.size(); ++i) REQUIRE(table.number(names[i]) == kKnownElementCount + i);
    for (std::size_t i = 0; i < names.size(); ++i) {
        REQUIRE(table.number(names[i]) == kKnownElementCount + i);
        REQUIRE(table.name(static_cast<NameID>(kKnownElementCount + i)) == names[i]);
    }
}

TEST_CASE("a copied name outlives the text that it came from") {
    NameTable table;
    for (int i = 0; i < 100; ++i) table.numberOfCopy("name " + std::to_string(i));
    for (NameID i = 0; i < 100; ++i) {
        CHECK(table.name(kKnownElementCount + i) == "name " + std::to_string(i));
        CHECK(table.numberOfCopy("name " + std::to_string(i)) == kKnownElementCount + i);
    }
    CHECK(table.numberOfCopy(std::string("CODE")) == element("CODE"));
}
