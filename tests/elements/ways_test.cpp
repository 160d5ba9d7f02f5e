// SPDX-License-Identifier: Apache-2.0
#include "elements/ways.h"

#include <doctest/doctest.h>

#include <string>

using namespace brackwell::elements;

namespace {

std::string way(Ways& ways, std::string_view parent, std::string_view child) {
    std::string names;
    for (const Element element : ways.between(findElement(parent), findElement(child)))
        names += (names.empty() ? "" : " ") + std::string(nameOf(element));
    return names;
}

}  // namespace

TEST_CASE(
    "the way between an aggregate and an element has the aggregates that are missing, the outer one first") {
    struct Row {
        const char* parent;
        const char* child;
        const char* way;
    };
    Ways ways;
    for (const Row& row : {Row{"STMTRS", "STMTTRN", "BANKTRANLIST"},
                           {"STMTTRNRS", "STMTTRN", "STMTRS BANKTRANLIST"},
                           {"BANKMSGSRSV1", "STMTTRN", "STMTTRNRS STMTRS BANKTRANLIST"},
                           {"OFX", "STMTTRN", "BANKMSGSRSV1 STMTTRNRS STMTRS BANKTRANLIST"},
                           {"OFX", "SONRS", "SIGNONMSGSRSV1"},
                           {"BANKTRANLIST", "STMTTRN", ""},
                           {"STMTTRN", "STMTRS", ""},
                           {"MEMO", "STMTTRN", ""},
                           {"STMTRS", "X.NOTE", ""},
                           {"X.LIST", "STMTTRN", ""}}) {
        CAPTURE(row.parent);
        CAPTURE(row.child);
        CHECK(way(ways, row.parent, row.child) == row.way);
        CHECK(way(ways, row.parent, row.child) == row.way);  // the one that was kept
    }
}

TEST_CASE("every way leads from one element to the other, and is no longer than the limit") {
    Ways ways;
    std::size_t found = 0;
    const Element root = kRoot;
    for (Element child = 0; child < kElementCount; ++child) {
        const auto& between = ways.between(root, child);
        if (between.empty()) continue;
        ++found;
        CAPTURE(nameOf(child));
        CHECK(between.size() <= Ways::kLongest);
        Element parent = root;
        for (const Element step : between) {
            CHECK(findChild(step, parent) != nullptr);
            parent = step;
        }
        CHECK(findChild(child, parent) != nullptr);
    }
    CHECK(found > 400);
}
