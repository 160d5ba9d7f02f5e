// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

TEST_CASE("dictionaries are equal whatever the order of their names") {
    const ParseDictionary a{{"A", "1"}, {"B", "2"}, {"X", ParseDictionary{{"C", "3"}, {"D", "4"}}}};
    const ParseDictionary b{{"X", ParseDictionary{{"D", "4"}, {"C", "3"}}}, {"B", "2"}, {"A", "1"}};
    CHECK(a == b);
    CHECK(b == a);
    CHECK(ParseValue(a) == ParseValue(b));
}

TEST_CASE("the values of a repeated name are equal only in the same order") {
    CHECK(parsed("<A>1<B>x<A>2") == parsed("<B>x<A>1<A>2"));
    CHECK_FALSE(parsed("<A>1<A>2") == parsed("<A>2<A>1"));
    CHECK_FALSE(parsed("<A>1<A>2") == parsed("<A>1<A>2<A>2"));
    CHECK_FALSE(parsed("<A>1<A>2<A>2") == parsed("<A>1<A>2"));
}

TEST_CASE("any difference makes dictionaries unequal") {
    const ParseDictionary tree = parsed("<A>1<B><C>2</B><D>3<D>4<E></E>");
    CHECK(tree == parsed("<A>1<B><C>2</B><D>3<D>4<E></E>"));
    for (const std::string_view other :
         {"<A>2<B><C>2</B><D>3<D>4<E></E>", "<A>1<B><C>3</B><D>3<D>4<E></E>",
          "<A>1<B><X>2</B><D>3<D>4<E></E>", "<A>1<B><C>2</B><D>3<D>5<E></E>", "<A>1<B><C>2</B><D>3<E></E>",
          "<A>1<B><C>2</B><D>3<D>4", "<A>1<B><C>2</B><D>3<D>4<E>x", "<A>1<B>2</B><D>3<D>4<E></E>",
          "<a>1<B><C>2</B><D>3<D>4<E></E>", "<A>1<B><C>2</B><D>3<D>4<F></F>",
          "<A></A><B><C>2</B><D>3<D>4<E></E>", "<A>1<B><C>2</B><D>3<D>4<E></E><F>x", ""}) {
        CAPTURE(std::string(other));
        CHECK_FALSE(tree == parsed(other));
        CHECK_FALSE(parsed(other) == tree);
    }
}

TEST_CASE("values of different kinds are not equal") {
    const std::vector<ParseValue> kinds{ParseValue(),
                                        "",
                                        "text",
                                        ParseDictionary(),
                                        ParseDictionary{{"", ""}},
                                        ParseValue::array({"", ""}),
                                        ParseValue::array({"text", "text"})};
    for (std::size_t i = 0; i < kinds.size(); ++i)
        for (std::size_t j = 0; j < kinds.size(); ++j) {
            CAPTURE(kinds[i]);
            CAPTURE(kinds[j]);
            CHECK((kinds[i] == kinds[j]) == (i == j));
        }
}

TEST_CASE("all empty dictionaries are equal, however they came about") {
    const std::vector<ParseDictionary> all{ParseDictionary(),
                                           ParseDictionary{},
                                           parsed(""),
                                           parsed("text"),
                                           *parsed("<A></A>")["A"].dictionary(),
                                           ParseDictionaryBuilder().finish()};
    for (const ParseDictionary& a : all)
        for (const ParseDictionary& b : all) {
            CHECK(a == b);
            CHECK(ParseValue(a) == ParseValue(b));
        }
}

TEST_CASE("an element of an array equals the same value that stands alone") {
    CHECK(parsed("<A><B>1</A><A><B>2</A>")["A"].elements()[1] == parsed("<A><B>2</A>")["A"]);
}

TEST_CASE("dictionaries of many names are compared in any order") {
    ParseDictionaryBuilder up;
    ParseDictionaryBuilder down;
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i) up.leaf("name " + std::to_string(i), std::to_string(i));
    for (int i = count; i-- > 0;) down.leaf("name " + std::to_string(i), std::to_string(i));
    const ParseDictionary a = up.finish();
    CHECK((a == down.finish()));
    CHECK(a.size() == count);
}
