// SPDX-License-Identifier: Apache-2.0
#include "elements/structure.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "support/standard_places.h"

using namespace brackwell::elements;

namespace {

Element named(std::string_view name) {
    const Element element = findElement(name);
    CAPTURE(name);
    REQUIRE(element != kUnknown);
    return element;
}

std::vector<std::string_view> namesOf(std::span<const Element> elements) {
    std::vector<std::string_view> names;
    for (const Element element : elements) names.push_back(nameOf(element));
    return names;
}

}  // namespace

TEST_CASE("every element stands in the list once, and is found by its name") {
    std::set<std::string_view> names;
    for (Element element = 0; element < kElementCount; ++element) {
        CAPTURE(nameOf(element));
        CHECK(names.insert(nameOf(element)).second);
        CHECK(findElement(nameOf(element)) == element);
    }
    CHECK(names.size() == kElementCount);
}

TEST_CASE("aggregates, leaves and header fields each stand in alphabetical order") {
    const auto kind = [](const ElementRow& row) {
        return row.isAggregate ? 0 : row.type == ValueType::headerField ? 2 : 1;
    };
    const auto stands = [kind](const ElementRow& a, const ElementRow& b) {
        return kind(a) != kind(b) ? kind(a) < kind(b) : kind(a) != 2 && a.name < b.name;
    };
    CHECK(std::ranges::is_sorted(kElementRows, stands));
}

TEST_CASE("a name that is not in the list is unknown") {
    for (const char* name :
         {"", " ", "A", "stmttrn", "STMTTRN ", "STMTTRNX", "X.NOTE", "INTU.", "\xC3\x84"}) {
        CAPTURE(name);
        CHECK(findElement(name) == kUnknown);
    }
    CHECK(nameOf(kUnknown).empty());
    CHECK(kindOf(kUnknown) == Kind::unknown);
    CHECK(childrenOf(kUnknown).empty());
    CHECK(parentsOf(kUnknown).empty());
    CHECK(valueTypeOf(kUnknown) == ValueType::none);
}

TEST_CASE("an element is an aggregate, a leaf, either, or a field of a header") {
    struct Row {
        const char* name;
        Kind kind;
        ValueType type;
    };
    for (const Row& row : {Row{"OFX", Kind::aggregate, ValueType::none},
                           {"SECLISTRS", Kind::aggregate, ValueType::none},
                           {"LOANMSGSRSV1", Kind::aggregate, ValueType::none},
                           {"WEBENROLL", Kind::aggregate, ValueType::none},
                           {"CLOSING", Kind::aggregate, ValueType::none},
                           {"CURRENCY", Kind::either, ValueType::code},
                           {"ORIGCURRENCY", Kind::either, ValueType::code},
                           {"TRNAMT", Kind::leaf, ValueType::amount},
                           {"DTPOSTED", Kind::leaf, ValueType::date},
                           {"TRNTYPE", Kind::leaf, ValueType::code},
                           {"MEMO", Kind::leaf, ValueType::text},
                           {"XFERSRC", Kind::leaf, ValueType::flag},
                           {"PROCENDTM", Kind::leaf, ValueType::time},
                           {"REASON", Kind::leaf, ValueType::untyped},
                           {"CHARSET", Kind::headerField, ValueType::headerField}}) {
        CAPTURE(row.name);
        CHECK(kindOf(named(row.name)) == row.kind);
        CHECK(valueTypeOf(named(row.name)) == row.type);
        CHECK(isAggregate(named(row.name)) == (row.kind == Kind::aggregate));
    }
}

TEST_CASE("the children of an aggregate come in their order, with how often they may stand there") {
    const auto children = childrenOf(named("BANKTRANLIST"));
    REQUIRE(children.size() == 3);
    CHECK(nameOf(children[0].element) == "DTSTART");
    CHECK_FALSE(children[0].mayMiss);
    CHECK_FALSE(children[0].mayRepeat);
    CHECK(nameOf(children[2].element) == "STMTTRN");
    CHECK(children[2].mayMiss);
    CHECK(children[2].mayRepeat);
    const Child* const portion = findChild(named("PORTION"), named("MFASSETCLASS"));
    REQUIRE(portion != nullptr);
    CHECK_FALSE(portion->mayMiss);
    CHECK(portion->mayRepeat);
    const Child* const memo = findChild(named("MEMO"), named("STMTTRN"));
    REQUIRE(memo != nullptr);
    CHECK(memo->mayMiss);
    CHECK_FALSE(memo->mayRepeat);
}

TEST_CASE("the aggregates that may hold an element are known") {
    CHECK(namesOf(parentsOf(named("BANKTRANLIST"))) == std::vector<std::string_view>{"CCSTMTRS", "STMTRS"});
    CHECK(namesOf(parentsOf(named("STMTTRN"))) ==
          std::vector<std::string_view>{"BANKTRANLIST", "INVBANKTRAN"});
    CHECK(parentsOf(named("OFX")).empty());
    CHECK(parentsOf(named("CHARSET")).empty());
}

TEST_CASE("the lookup of a pair agrees with the rows for every pair of elements") {
    std::size_t pairs = 0;
    for (Element parent = 0; parent < kElementCount; ++parent) {
        const auto children = childrenOf(parent);
        std::vector<const Child*> entries(kElementCount, nullptr);
        for (const Child& child : children) entries[child.element] = &child;
        for (Element child = 0; child < kElementCount; ++child) {
            if (findChild(child, parent) != entries[child])
                FAIL_CHECK(nameOf(child) << " in " << nameOf(parent));
            if (entries[child] != nullptr) ++pairs;
        }
    }
    std::size_t parents = 0;
    for (Element child = 0; child < kElementCount; ++child) parents += parentsOf(child).size();
    CHECK(pairs == parents);
    CHECK(pairs > 2900);
}

TEST_CASE("an element stands where the list has it, and an unknown one anywhere") {
    struct Row {
        const char* child;
        const char* parent;
        bool mayStand;
        bool mayRepeat;
    };
    for (const Row& row : {Row{"STMTTRN", "BANKTRANLIST", true, true},
                           {"LEDGERBAL", "BANKTRANLIST", false, false},
                           {"LEDGERBAL", "STMTRS", true, false},
                           {"CCSTMTTRNRS", "BANKMSGSRSV1", false, false},
                           {"STMTTRN", "MEMO", false, false},
                           {"OFX", "STMTRS", false, false},
                           {"X.NOTE", "MEMO", true, true},
                           {"STMTTRN", "INTU.BID", true, true},
                           {"X.NOTE", "STMTTRN", true, true},
                           {"STMTTRN", "X.LIST", true, true},
                           {"INTU.BID", "SONRS", true, true},
                           {"STMTTRN", "LOANMSGSRSV1", true, true},
                           {"STMTTRN", "SECLISTRS", false, false}}) {
        CAPTURE(row.child);
        CAPTURE(row.parent);
        CHECK(mayStandIn(findElement(row.child), findElement(row.parent)) == row.mayStand);
        CHECK(mayRepeatIn(findElement(row.child), findElement(row.parent)) == row.mayRepeat);
    }
}

TEST_CASE("the list agrees with a table that was written from the other side") {
    using brackwell::tests::Times;
    std::vector<std::string_view> names = brackwell::tests::placedElements();
    names.emplace_back("OFX");
    CHECK(names.size() > 1200);
    const auto timesOf = [](Element child, Element parent) {
        if (mayRepeatIn(child, parent)) return Times::anyNumber;
        return mayStandIn(child, parent) ? Times::once : Times::never;
    };
    for (const std::string_view childName : names) {
        const Element child = named(childName);
        CHECK(brackwell::tests::isKnownAggregate(childName) == isAggregate(child));
        for (const std::string_view parent : names)
            if (brackwell::tests::timesIn(childName, parent) != timesOf(child, findElement(parent)))
                FAIL_CHECK(childName << " in " << parent);
    }
    for (Element element = 0; element < kElementCount; ++element) {
        if (parentsOf(element).empty()) continue;
        CAPTURE(nameOf(element));
        CHECK(brackwell::tests::isKnownElement(nameOf(element)));
    }
}
