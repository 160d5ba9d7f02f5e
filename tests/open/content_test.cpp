// SPDX-License-Identifier: Apache-2.0
#include "open/content.h"

#include <doctest/doctest.h>

#include "elements/structure.h"
#include "open/judged_places.h"
#include "open/known_elements.h"

using namespace brackwell;
using namespace brackwell::opening;
using reading::element;

namespace {

reading::Node leafOf(reading::NameID name) { return {name, 0, 0, 0}; }

}  // namespace

TEST_CASE("the table of names says of all names in all aggregates what is read there, and how often") {
    const NameFactsTable& table = NameFactsTable::known();
    std::size_t judged = 0;
    for (reading::NameID parent = 0; parent < reading::kKnownElementCount; ++parent) {
        const ChildFacts& facts = table.childrenOf(parent);
        const elements::Element around = kElementOfName[parent];
        CAPTURE(elements::nameOf(around));
        CHECK((&facts != &table.anythingGoes()) == isStrict(around));
        if (!isStrict(around)) continue;
        ++judged;
        for (reading::NameID name = 0; name < reading::kKnownElementCount; ++name) {
            const elements::Element child = kElementOfName[name];
            CAPTURE(elements::nameOf(child));
            REQUIRE(facts.standing.has(name) == standsWhereItIsRead({child, around, false}));
            REQUIRE((facts.standing.has(name) && facts.repeating.has(name)) ==
                    (standsWhereItIsRead({child, around, true}) && countsThere({child, around, true})));
        }
        CHECK(facts.standing.has(reading::kKnownElementCount));
        CHECK(facts.repeating.has(reading::kKnownElementCount));
    }
    CHECK(judged > 60);
}

TEST_CASE("anything may stand in an aggregate that nobody judges, and a name that no tree knows anywhere") {
    const NameFactsTable& table = NameFactsTable::known();
    const ChildFacts& facts = table.anythingGoes();
    for (reading::NameID name = 0; name <= reading::kKnownElementCount; ++name) {
        CHECK(facts.standing.has(name));
        CHECK(facts.repeating.has(name));
    }
    CHECK(&table.childrenOf(reading::kKnownElementCount + 5) == &facts);
    CHECK(table.contentOf(reading::kKnownElementCount + 5) == Content::none);
}

TEST_CASE(
    "a leaf is quiet when nothing has to be found out of it, and otherwise has a value or is looked at") {
    const NameFactsTable& table = NameFactsTable::known();
    const ChildFacts* const transaction = &table.childrenOf(element("STMTTRN"));
    const ChildFacts* const list = &table.childrenOf(element("BANKTRANLIST"));
    const ChildFacts* const anything = &table.anythingGoes();
    struct Row {
        const char* why;
        reading::Node node;
        const ChildFacts* parent;
        bool isQuiet;
        Content value;
    };
    const reading::Node memo = leafOf(element("MEMO"));
    const Row rows[] = {
        {"a text", memo, transaction, true, Content::none},
        {"a text where anything may stand", memo, anything, true, Content::none},
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
        {"an identifier of an investment", leafOf(element("FITID")), anything, false, Content::identifier},
    };
    for (const Row& row : rows) {
        CAPTURE(row.why);
        CHECK(NameFactsTable::isQuiet(row.node, *row.parent) == row.isQuiet);
        const Content value = table.valueOf(row.node, *row.parent);
        CHECK((isLeafContent(value) ? value : Content::none) == row.value);
    }
}
