// SPDX-License-Identifier: Apache-2.0
#include <brackwell/internal/text_fields.h>
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"
#include "tree/node_ref.h"

using namespace brackwell;
using namespace brackwell::tests;
using reading::element;
using reading::NodeRef;

namespace {

enum Field : std::size_t { first, second, fieldCount };

void setName(internal::TextFields<fieldCount>& fields, Field field, const ParseDictionary& tree) {
    const NodeRef name = NodeRef::of(tree)[element("NAME")];
    fields.setLeaf(field, *name.owner, name.index());
}

}  // namespace

TEST_CASE("a text field is absent until it is set, and again when it is set to nothing") {
    internal::TextFields<fieldCount> fields;
    CHECK(shown(fields.get(first)) == "nothing");
    fields.set(first, std::nullopt);
    CHECK(shown(fields.get(first)) == "nothing");
    fields.set(first, "text");
    CHECK(shown(fields.get(first)) == "text");
    CHECK(shown(fields.get(second)) == "nothing");
    fields.set(first, "");
    CHECK(fields.get(first) == "");
    fields.set(first, std::nullopt);
    CHECK(shown(fields.get(first)) == "nothing");
}

TEST_CASE("a text field copies a text and shares a leaf") {
    internal::TextFields<fieldCount> fields;
    {
        const std::string text(100, 'x');
        fields.set(first, text);
        const ParseDictionary tree = parsed("<NAME>A &amp; B");
        setName(fields, second, tree);
        CHECK(fields.get(second)->data() == tree["NAME"].text()->data());
    }
    CHECK(fields.get(first) == std::string(100, 'x'));
    CHECK(fields.get(second) == "A & B");
}

TEST_CASE("the last that a text field was set to holds") {
    const ParseDictionary tree = parsed("<NAME>leaf");
    internal::TextFields<fieldCount> fields;
    fields.set(first, "own");
    setName(fields, first, tree);
    CHECK(fields.get(first) == "leaf");
    fields.set(first, "own again");
    CHECK(fields.get(first) == "own again");
    setName(fields, first, tree);
    fields.set(first, std::nullopt);
    CHECK(shown(fields.get(first)) == "nothing");
}

TEST_CASE("a leaf of a second tree is copied") {
    internal::TextFields<fieldCount> fields;
    setName(fields, first, parsed("<NAME>of the first"));
    {
        const ParseDictionary other = parsed("<NAME>of the other");
        setName(fields, second, other);
        CHECK(fields.get(second)->data() != other["NAME"].text()->data());
    }
    CHECK(fields.get(first) == "of the first");
    CHECK(fields.get(second) == "of the other");
    setName(fields, first, parsed("<NAME>of a third"));
    CHECK(fields.get(first) == "of a third");
}

TEST_CASE("a text may be set to what the field holds already") {
    internal::TextFields<fieldCount> fields;
    fields.set(first, std::string(100, 'x'));
    fields.set(first, fields.get(first));
    CHECK(fields.get(first) == std::string(100, 'x'));
    fields.set(first, fields.get(first)->substr(1, 50));
    CHECK(fields.get(first) == std::string(50, 'x'));
    setName(fields, second, parsed("<NAME>leaf"));
    fields.set(second, fields.get(second)->substr(1));
    CHECK(fields.get(second) == "eaf");
}
