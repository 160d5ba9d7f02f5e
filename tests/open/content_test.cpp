// SPDX-License-Identifier: Apache-2.0
#include "open/content.h"

#include <doctest/doctest.h>

#include "elements/structure.h"

using namespace brackwell;
using namespace brackwell::opening;
using reading::element;

namespace {

/// A response in a message set without its wrapper, which the reader takes.
bool isBareResponse(std::string_view child, std::string_view parent) {
    return parent.find("MSGSRSV") != parent.npos && child.ends_with("RS") && !child.ends_with("TRNRS");
}

reading::Node leafOf(reading::NameID name) { return {name, 0, 0, 0}; }

}  // namespace

TEST_CASE("the table of names says what the list of elements says of what may stand where") {
    const NameFactsTable& table = NameFactsTable::known();
    std::size_t parents = 0;
    for (reading::NameID parent = 0; parent < reading::kKnownElementCount; ++parent) {
        const NameFacts::Parents bit = table.of(parent).asParent;
        if (bit == NameFacts::kOtherParent) continue;
        ++parents;
        const std::string_view around = reading::kElementNames[parent];
        for (reading::NameID name = 0; name < reading::kKnownElementCount; ++name) {
            const std::string_view child = reading::kElementNames[name];
            CAPTURE(around);
            CAPTURE(child);
            const bool isBare = isBareResponse(child, around);
            const elements::Element a = elements::findElement(child);
            const elements::Element b = elements::findElement(around);
            REQUIRE(((table.of(name).standing & bit) != 0) == (isBare || elements::mayStandIn(a, b)));
            const bool mayRepeat = isBare || elements::mayRepeatIn(a, b);
            REQUIRE(((table.of(name).repeating & bit) != 0) == mayRepeat);
        }
    }
    CHECK(parents == 31);
}

TEST_CASE("anything may stand in an aggregate that nobody looks at, and a name that no tree knows anywhere") {
    const NameFactsTable& table = NameFactsTable::known();
    for (reading::NameID name = 0; name <= reading::kKnownElementCount; ++name) {
        CHECK((table.of(name).standing & NameFacts::kOtherParent) != 0);
        CHECK((table.of(name).repeating & NameFacts::kOtherParent) != 0);
    }
    const NameFacts& unknown = table.of(reading::kKnownElementCount + 5);
    CHECK(unknown.standing == ~NameFacts::Parents{0});
    CHECK(unknown.repeating == ~NameFacts::Parents{0});
    CHECK(unknown.content == Content::none);
}

TEST_CASE(
    "a leaf is quiet when nothing has to be found out of it, and otherwise has a value or is looked at") {
    const NameFactsTable& table = NameFactsTable::known();
    const NameFacts::Parents transaction = table.of(element("STMTTRN")).asParent;
    const NameFacts::Parents list = table.of(element("BANKTRANLIST")).asParent;
    struct Row {
        const char* why;
        reading::Node node;
        NameFacts::Parents parent;
        bool isQuiet;
        Content value;
    };
    const reading::Node memo = leafOf(element("MEMO"));
    const Row rows[] = {
        {"a text", memo, transaction, true, Content::none},
        {"a text where anything may stand", memo, NameFacts::kOtherParent, true, Content::none},
        {"a text in a list", memo, list, false, Content::none},
        {"a second text",
         {memo.nameAndKind | reading::Node::kRepeated, 0, 0, 0},
         transaction,
         false,
         Content::none},
        {"an aggregate",
         {memo.nameAndKind | reading::Node::kAggregate, 0, 0, 0},
         transaction,
         false,
         Content::none},
        {"a name of the document's own", leafOf(reading::kKnownElementCount), transaction, false,
         Content::none},
        {"the source text", leafOf(element("TVOFX_ORIGINAL_STRING")), transaction, true, Content::none},
        {"an amount", leafOf(element("TRNAMT")), transaction, false, Content::amount},
        {"a date", leafOf(element("DTPOSTED")), transaction, false, Content::date},
        {"a date in a list", leafOf(element("DTSTART")), list, false, Content::date},
        {"a date where it may not stand", leafOf(element("DTPOSTED")), list, false, Content::none},
        {"an identifier", leafOf(element("FITID")), transaction, false, Content::identifier},
        {"an identifier of an investment", leafOf(element("FITID")), NameFacts::kOtherParent, false,
         Content::identifier},
    };
    for (const Row& row : rows) {
        CAPTURE(row.why);
        CHECK(table.isQuiet(row.node, row.parent) == row.isQuiet);
        const Content value = table.valueOf(row.node, row.parent);
        CHECK((isLeafContent(value) ? value : Content::none) == row.value);
    }
}
