// SPDX-License-Identifier: Apache-2.0
#include <brackwell/internal/text_fields.h>
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

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

TEST_CASE("a leaf is shared however far it is from the others, and may come before them") {
    std::string body = "<OFX>";
    constexpr std::uint32_t count = 1000;
    for (std::uint32_t i = 0; i < count; ++i)
        body.append("<A").append(std::to_string(i)).append(">").append(std::to_string(i));
    const ParseDictionary tree = parsed(body + "</OFX>");
    const NodeRef root = NodeRef::of(tree)[element("OFX")];
    std::vector<NodeRef> leaves;
    for (const NodeRef& leaf : root.children()) leaves.push_back(leaf);
    REQUIRE(leaves.size() == count);
    for (const std::uint32_t begin : {0U, 1U, 63U, 64U, 65U, 500U, 999U})
        for (const std::uint32_t next :
             {0U, 1U, 62U, 63U, 64U, 190U, 191U, 192U, 254U, 255U, 256U, 690U, 691U, 999U}) {
            CAPTURE(begin);
            CAPTURE(next);
            internal::TextFields<fieldCount> fields;
            fields.setLeaf(first, *leaves[begin].owner, leaves[begin].index());
            fields.setLeaf(second, *leaves[next].owner, leaves[next].index());
            const internal::TextFields<fieldCount> copy = fields;
            for (const auto& both : {fields, copy}) {
                CHECK(both.get(first)->data() == leaves[begin].text().data());
                CHECK(both.get(first) == std::to_string(begin));
                CHECK(both.get(second)->data() == leaves[next].text().data());
                CHECK(both.get(second) == std::to_string(next));
            }
            const internal::TextFields<fieldCount> moved = std::move(fields);
            CHECK(moved.get(second) == std::to_string(next));
            CHECK(shown(fields.get(second)) == "nothing");  // NOLINT(bugprone-use-after-move): it is empty
        }
}

TEST_CASE("a field that held a far leaf is set to something else") {
    std::string body = "<OFX><NAME>near";
    for (int i = 0; i < 300; ++i) body += "<A>x";
    const ParseDictionary tree = parsed(body + "<MEMO>far</OFX>");
    const NodeRef root = NodeRef::of(tree)[element("OFX")];
    const NodeRef near = root[element("NAME")];
    const NodeRef far = root[element("MEMO")];
    internal::TextFields<fieldCount> fields;
    const auto setBoth = [&] {
        fields.setLeaf(first, *near.owner, near.index());
        fields.setLeaf(second, *far.owner, far.index());
        CHECK(fields.get(second) == "far");
    };
    setBoth();
    fields.setLeaf(second, *near.owner, near.index());
    CHECK(fields.get(second) == "near");
    setBoth();
    fields.set(second, "own");
    CHECK(fields.get(second) == "own");
    setBoth();
    fields.set(second, std::nullopt);
    CHECK(shown(fields.get(second)) == "nothing");
    fields.set(first, std::nullopt);
    CHECK(shown(fields.get(first)) == "nothing");
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
