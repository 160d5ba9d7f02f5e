// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include "open/finding_list.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Elements of a tree that stand where the standard has no place for them, or once more than it has.
struct Misplaced {
    std::size_t count = 0;          ///< elements that have no place in the aggregate around them
    std::uint32_t first = 0;        ///< the first of them
    std::uint32_t firstParent = 0;  ///< and what it stands in
    std::size_t repeated = 0;       ///< elements that stand once more where there may be one
    std::uint32_t firstRepeated = 0;
    std::size_t further = 0;  ///< lists that stand once more where there may be one, and are read, too
    std::uint32_t firstFurther = 0;

    bool areAny() const noexcept { return count + repeated + further != 0; }

    void add(std::uint32_t node, std::uint32_t parent) noexcept {
        if (count++ != 0) return;
        first = node;
        firstParent = parent;
    }
    void addRepeated(std::uint32_t node) noexcept {
        if (repeated++ == 0) firstRepeated = node;
    }
    void addFurther(std::uint32_t node) noexcept {
        if (further++ == 0) firstFurther = node;
    }
};

/// Adds findings for them.
void addMisplaced(FindingList& findings, const reading::Document& document, const Misplaced& misplaced,
                  const TreePlaces& places);

}  // namespace brackwell::opening
