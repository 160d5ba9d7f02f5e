// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>

#include <algorithm>

#include "tree/node_ref.h"

namespace brackwell {

using reading::NodeRef;

namespace {

using NodePair = std::pair<NodeRef, NodeRef>;

bool byName(const NodeRef& a, const NodeRef& b) noexcept { return a.name() < b.name(); }

std::vector<NodeRef> entriesOf(const NodeRef& dictionary) {
    std::vector<NodeRef> entries;
    for (const NodeRef& child : dictionary.children()) entries.push_back(child);
    return entries;
}

bool sameNames(const std::vector<NodeRef>& a, const std::vector<NodeRef>& b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const NodeRef& x, const NodeRef& y) { return x.name() == y.name(); });
}

/// Pairs the entries of two dictionaries; false when their names differ.
bool pairEntries(const NodePair& dictionaries, std::vector<NodePair>& pairs) {
    std::vector<NodeRef> a = entriesOf(dictionaries.first);
    std::vector<NodeRef> b = entriesOf(dictionaries.second);
    if (a.size() != b.size()) return false;
    // Most dictionaries that are equal have one order, too, and need no sorting.
    if (!sameNames(a, b)) {
        std::sort(a.begin(), a.end(), byName);
        std::sort(b.begin(), b.end(), byName);
        if (!sameNames(a, b)) return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) pairs.emplace_back(a[i], b[i]);
    return true;
}

bool pairElements(const NodePair& arrays, std::vector<NodePair>& pairs) {
    auto a = arrays.first.elements();
    auto b = arrays.second.elements();
    for (; a != nullptr && b != nullptr; ++a, ++b) pairs.emplace_back(*a, *b);
    return a == nullptr && b == nullptr;
}

/// Compares two values with a list of pairs that are still to be compared, however deep they are.
bool equal(const NodeRef& a, const NodeRef& b) {
    std::vector<NodePair> pairs{{a, b}};
    while (!pairs.empty()) {
        const NodePair pair = pairs.back();
        pairs.pop_back();
        const auto& [x, y] = pair;
        if (x.isArray() != y.isArray() || x.isText() != y.isText() || bool(x) != bool(y)) return false;
        if (x.isArray()  ? !pairElements(pair, pairs)
            : x.isText() ? x.text() != y.text()
                         : !pairEntries(pair, pairs))
            return false;
    }
    return true;
}

}  // namespace

bool operator==(const ParseValue& a, const ParseValue& b) { return equal(NodeRef::of(a), NodeRef::of(b)); }

bool operator==(const ParseDictionary& a, const ParseDictionary& b) {
    if (a.isEmpty() || b.isEmpty()) return a.isEmpty() && b.isEmpty();
    return equal(NodeRef::of(a), NodeRef::of(b));
}

}  // namespace brackwell
