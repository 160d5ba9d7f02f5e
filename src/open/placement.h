// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "open/finding_list.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Elements of a tree that stand where nobody reads them, by the standard.
struct Misplaced {
    std::size_t count = 0;          ///< elements that have no place in the aggregate around them
    std::uint32_t first = 0;        ///< the first of them
    std::uint32_t firstParent = 0;  ///< and what it stands in
    std::size_t repeated = 0;       ///< elements that stand once more where there may be one
    std::uint32_t firstRepeated = 0;

    void add(std::uint32_t node, std::uint32_t parent) noexcept {
        if (count++ != 0) return;
        first = node;
        firstParent = parent;
    }
    void addRepeated(std::uint32_t node) noexcept {
        if (repeated++ == 0) firstRepeated = node;
    }
};

/// Adds findings for them.
void addMisplaced(FindingList& findings, const reading::Document& document, const Misplaced& misplaced,
                  const TreePlaces& places);

}  // namespace brackwell::opening
