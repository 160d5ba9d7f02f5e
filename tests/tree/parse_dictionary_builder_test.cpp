// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

TEST_CASE("a builder makes a dictionary step by step") {
    ParseDictionaryBuilder builder;
    builder.open("OFX");
    builder.leaf("A", "1");
    builder.open("B");
    builder.leaf("A", "2");
    builder.leaf("A", "3");
    builder.close();
    builder.leaf("A", "4");
    builder.close();
    builder.leaf("C", "");
    CHECK(treeText(builder.finish()) == R"({"OFX": {"A": ["1", "4"], "B": {"A": ["2", "3"]}}, "C": ""})");
}

TEST_CASE("finishing closes what is open and leaves the builder empty") {
    ParseDictionaryBuilder builder;
    builder.open("A");
    builder.open("B");
    builder.leaf("C", "1");
    CHECK(treeText(builder.finish()) == R"({"A": {"B": {"C": "1"}}})");
    CHECK(builder.finish().isEmpty());
    builder.leaf("D", "2");
    CHECK(treeText(builder.finish()) == R"({"D": "2"})");
}

TEST_CASE("closing without an open aggregate does nothing") {
    ParseDictionaryBuilder builder;
    builder.close();
    builder.leaf("A", "1");
    builder.close();
    builder.open("B");
    builder.close();
    builder.close();
    builder.leaf("C", "2");
    CHECK(treeText(builder.finish()) == R"({"A": "1", "B": {}, "C": "2"})");
}

TEST_CASE("a builder adds copies of values of every kind") {
    const ParseDictionary tree = parsed("<A>1<A><B>x<C></C><B>y</A><D>2");
    ParseDictionaryBuilder builder;
    builder.value("all", tree);
    builder.value("A", tree["A"]);
    builder.value("A", tree["D"]);
    builder.value("nothing", ParseValue());
    builder.value("empty", ParseDictionary());
    builder.value("one", tree["A"].elements()[1]);
    CHECK(treeText(builder.finish()) ==
          R"({"all": {"A": ["1", {"B": ["x", "y"], "C": {}}], "D": "2"}, )"
          R"("A": ["1", {"B": ["x", "y"], "C": {}}, "2"], "empty": {}, "one": {"B": ["x", "y"], "C": {}}})");
}

TEST_CASE("a value that is added does not close or join what is open") {
    ParseDictionaryBuilder builder;
    builder.open("X");
    builder.leaf("A", "1");
    builder.value("Y", ParseDictionary{{"A", "2"}});
    builder.leaf("A", "3");
    CHECK(treeText(builder.finish()) == R"({"X": {"A": ["1", "3"], "Y": {"A": "2"}}})");
}

TEST_CASE("a builder can be moved") {
    ParseDictionaryBuilder first;
    first.open("A");
    ParseDictionaryBuilder second = std::move(first);
    second.leaf("B", "1");
    first = std::move(second);
    first.leaf("C", "2");
    CHECK(treeText(first.finish()) == R"({"A": {"B": "1", "C": "2"}})");
}

TEST_CASE("a dictionary that was finished is not changed by what the builder makes next") {
    ParseDictionaryBuilder builder;
    builder.leaf("A", "1");
    const ParseDictionary first = builder.finish();
    builder.leaf("A", "2");
    builder.leaf("OWN NAME", "3");
    const ParseDictionary second = builder.finish();
    CHECK(treeText(first) == R"({"A": "1"})");
    CHECK(treeText(second) == R"({"A": "2", "OWN NAME": "3"})");
}

TEST_CASE("names are remembered per aggregate while aggregates of the same names nest and follow") {
    // Each level holds the names of the level above again.
    ParseDictionaryBuilder builder;
    for (int level = 0; level < 50; ++level) {
        builder.leaf("A", "before");
        builder.leaf("own name", "before");
        builder.open("N");
    }
    for (int level = 0; level < 50; ++level) {
        builder.close();
        builder.leaf("A", "behind");
        builder.leaf("own name", "behind");
    }
    std::optional<ParseDictionary> at = builder.finish();
    for (int level = 0; level < 50; ++level) {
        REQUIRE(at);
        CHECK(at->size() == 3);
        CHECK((*at)["A"] == ParseValue::array({"before", "behind"}));
        CHECK((*at)["own name"] == ParseValue::array({"before", "behind"}));
        at = (*at)["N"].dictionary();
    }
    REQUIRE(at);
    CHECK(at->isEmpty());
}
