// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;
using Kind = ParseValue::Kind;

TEST_CASE("a value knows what it is and answers nothing for what it is not") {
    struct Row {
        ParseValue value;
        Kind kind;
        bool isText;
        bool isDictionary;
        std::size_t elements;
    };
    for (const Row& row : std::initializer_list<Row>{
             {ParseValue(), Kind::nothing, false, false, 0},
             {"text", Kind::text, true, false, 0},
             {"", Kind::text, true, false, 0},
             {ParseDictionary{{"A", "1"}}, Kind::dictionary, false, true, 0},
             {ParseDictionary(), Kind::dictionary, false, true, 0},
             {ParseValue::array({"a", "b"}), Kind::array, false, false, 2},
         }) {
        CAPTURE(row.value);
        CHECK(row.value.kind() == row.kind);
        CHECK(row.value.isNothing() == (row.kind == Kind::nothing));
        CHECK(row.value.text().has_value() == row.isText);
        CHECK(row.value.dictionary().has_value() == row.isDictionary);
        CHECK(row.value.elements().size() == row.elements);
    }
}

TEST_CASE("a text may come from a literal, a string or a view") {
    const std::string string = "text";
    CHECK(ParseValue("text").text() == "text");
    CHECK(ParseValue(string).text() == "text");
    CHECK(ParseValue(std::string_view("text more").substr(0, 4)).text() == "text");
    CHECK(ParseValue(std::string(1000, 'x')).text() == std::string(1000, 'x'));
    CHECK(ParseValue(std::string_view("a\0b", 3)).text() == std::string_view("a\0b", 3));
    CHECK(ParseValue(std::string_view()).text() == "");
}

TEST_CASE("an array of one value is that value, and of none it is nothing") {
    CHECK(ParseValue::array({"a"}) == ParseValue("a"));
    CHECK(ParseValue::array({ParseDictionary{{"A", "1"}}}) == ParseValue(ParseDictionary{{"A", "1"}}));
    CHECK(ParseValue::array({ParseDictionary()}) == ParseValue(ParseDictionary()));
    CHECK(ParseValue::array(std::vector<ParseValue>{}).isNothing());
    CHECK(ParseValue::array({ParseValue()}).isNothing());
    CHECK(ParseValue::array({ParseValue(), "a", ParseValue()}) == ParseValue("a"));
}

TEST_CASE("an array keeps texts and dictionaries in order") {
    const ParseValue array = ParseValue::array({"a", ParseDictionary{{"A", "1"}}, "", ParseDictionary()});
    CHECK(treeText(array) == R"(["a", {"A": "1"}, "", {}])");
    const std::vector<ParseValue> elements = array.elements();
    REQUIRE(elements.size() == 4);
    CHECK(elements[0] == ParseValue("a"));
    CHECK(elements[1]["A"] == ParseValue("1"));
    CHECK(elements[2].text() == "");
    CHECK(elements[3].dictionary()->isEmpty());
    CHECK(ParseValue::array(elements) == array);
}

TEST_CASE("an array inside an array is part of it") {
    CHECK(treeText(ParseValue::array({"a", ParseValue::array({"b", "c"}), "d"})) ==
          R"(["a", "b", "c", "d"])");
}

TEST_CASE("an element of an array is that element alone") {
    const ParseDictionary tree = parsed("<A>1</A><A><B>2</B></A><A>3</A>");
    const std::vector<ParseValue> elements = tree["A"].elements();
    REQUIRE(elements.size() == 3);
    CHECK(elements[0].kind() == Kind::text);
    CHECK(elements[0].text() == "1");
    CHECK(elements[0].elements().empty());
    CHECK(elements[1].kind() == Kind::dictionary);
    CHECK(elements[1]["B"].text() == "2");
    CHECK(elements[2].text() == "3");
    CHECK(elements[0] == ParseValue("1"));
    CHECK_FALSE(elements[0] == tree["A"]);
}

TEST_CASE("a path can be followed without testing each step") {
    const ParseDictionary tree = parsed("<OFX><A><B>1</B></A><C>2</C><D>3</D><D>4</D></OFX>");
    CHECK(tree["OFX"]["A"]["B"].text() == "1");
    CHECK(tree["OFX"]["A"]["X"].isNothing());
    CHECK(tree["OFX"]["X"]["B"]["C"].isNothing());
    CHECK(tree["OFX"]["C"]["B"].isNothing());
    CHECK(tree["OFX"]["D"]["B"].isNothing());
    CHECK(ParseValue()["A"]["B"].isNothing());
}

TEST_CASE("a value keeps its tree alive") {
    ParseValue value;
    OptionalText text;
    {
        const ParseDictionary tree = parsed("<OFX><NAME>A &amp; B</NAME><A><B>plain</B></A></OFX>");
        value = tree["OFX"]["A"]["B"];
        text = tree["OFX"]["NAME"].text();
    }
    CHECK(value.text() == "plain");
    CHECK(text == "A & B");
}

TEST_CASE("values are copied, moved and assigned") {
    ParseValue value = ParseValue::array({"a", "b"});
    const ParseValue copy = value;
    CHECK(copy == value);
    const ParseValue moved = std::move(value);
    CHECK(moved == copy);
    value = "c";
    CHECK(value.text() == "c");
    CHECK(copy.elements().size() == 2);
    value = value["x"];
    CHECK(value.isNothing());
}
