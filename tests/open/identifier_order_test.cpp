// SPDX-License-Identifier: Apache-2.0
#include "open/identifier_order.h"

#include <doctest/doctest.h>

#include <set>
#include <string>
#include <vector>

#include "support/random_text.h"

using namespace brackwell::opening;
using brackwell::tests::RandomText;

namespace {

bool areInOrder(const std::vector<std::string>& identifiers) {
    IdentifierOrder order;
    order.beginStatement();
    for (const std::string& identifier : identifiers) order.add(identifier);
    return order.areInOrder();
}

}  // namespace

TEST_CASE("identifiers that rise or fall by size and then by bytes are in order") {
    struct Row {
        std::vector<std::string> identifiers;
        bool areInOrder;
    };
    const std::vector<Row> rows = {
        {{}, true},
        {{""}, true},
        {{"7"}, true},
        {{"1", "2", "3"}, true},
        {{"9", "10", "11"}, true},
        {{"3", "2", "1"}, true},
        {{"b", "aa"}, true},
        {{"20240131-000001", "20240131-000002", "20240201-000001"}, true},
        {{"2024013112000000001", "2024013112000000002"}, true},
        {{"\x7F", "\x80"}, true},
        {{"1", "1"}, false},
        {{"", ""}, false},
        {{"1", "3", "2"}, false},
        {{"3", "1", "2"}, false},
        {{"1", "2", "1"}, false},
        {{"20240131-000001", "20240131-000001"}, false},
        // What differs only in its middle is not seen; then every identifier is looked up.
        {{"20240131-1-2024-0001", "20240131-2-2024-0001"}, false},
    };
    for (const Row& row : rows) {
        CAPTURE(row.identifiers);
        CHECK(areInOrder(row.identifiers) == row.areInOrder);
    }
}

TEST_CASE("each statement has an order of its own, and all must have one") {
    IdentifierOrder order;
    for (const std::vector<std::string>& statement :
         std::vector<std::vector<std::string>>{{"1", "2"}, {"1", "2"}, {"9", "8"}, {}, {"5"}}) {
        order.beginStatement();
        for (const std::string& identifier : statement) order.add(identifier);
        CHECK(order.areInOrder());
    }
    order.beginStatement();
    order.add("1");
    order.add("1");
    CHECK_FALSE(order.areInOrder());
    order.beginStatement();
    order.add("1");
    CHECK_FALSE(order.areInOrder());
}

TEST_CASE("identifiers in order are all different") {
    const std::vector<std::string> pieces = {"1", "2", "20240131"};
    RandomText random(7);
    for (int round = 0; round < 20000; ++round) {
        std::vector<std::string> identifiers;
        for (std::size_t i = 1 + random.below(4); i > 0; --i)
            identifiers.push_back(random.soup(pieces, random.below(5)));
        CAPTURE(identifiers);
        const std::set<std::string> different(identifiers.begin(), identifiers.end());
        if (areInOrder(identifiers)) REQUIRE(different.size() == identifiers.size());
    }
}
