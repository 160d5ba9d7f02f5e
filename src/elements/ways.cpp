// SPDX-License-Identifier: Apache-2.0
#include "elements/ways.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace brackwell::elements {
namespace {

constexpr std::uint8_t kFar = std::numeric_limits<std::uint8_t>::max();

/// By element: through how many aggregates the way from it to a child goes; kFar: too many.
std::array<std::uint8_t, kElementCount> distancesTo(Element child) {
    std::array<std::uint8_t, kElementCount> distances{};
    distances.fill(kFar);
    distances[child] = 0;
    // Breadth first, from the child outwards: the distances are then shortest ones.
    std::vector<Element> found{child};
    for (std::size_t i = 0; i < found.size(); ++i) {
        const auto next = static_cast<std::uint8_t>(distances[found[i]] + 1);
        if (next > Ways::kLongest + 1) break;
        for (const Element parent : parentsOf(found[i])) {
            if (distances[parent] != kFar) continue;
            distances[parent] = next;
            found.push_back(parent);
        }
    }
    return distances;
}

std::vector<Element> findWay(Element parent, Element child) {
    const auto distances = distancesTo(child);
    std::vector<Element> way;
    if (distances[parent] == kFar) return way;
    for (Element at = parent; distances[at] > 1;) {
        const auto children = childrenOf(at);
        // The first in the order of the rows, so that equally short ways always give the same one.
        const auto step = std::ranges::find_if(children, [&](const Child& candidate) {
            return distances[candidate.element] == distances[at] - 1;
        });
        at = step->element;
        way.push_back(at);
    }
    return way;
}

}  // namespace

const std::vector<Element>& Ways::between(Element parent, Element child) {
    static const std::vector<Element> kNone;
    if (parent >= kElementCount || child >= kElementCount) return kNone;
    const auto [entry, isNew] = known_.try_emplace(std::uint32_t{parent} << 16 | child);
    if (isNew) entry->second = findWay(parent, child);
    return entry->second;
}

}  // namespace brackwell::elements
