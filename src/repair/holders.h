// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "repair/tree.h"

namespace brackwell::repair {

/// The aggregates of a text by element, in the order of the text; finds the last one before a place.
class Holders {
public:
    struct Holder {
        NodeID node = kNoNode;
        std::size_t offset = 0;  ///< where it begins
    };

    /// Adds the aggregates of a tree whose tags are in its text.
    void addAll(const Tree& tree);
    /// Adds an aggregate that the repair made, with the offset of the first element that was put into it.
    void add(elements::Element element, std::size_t offset, NodeID node) { made_[{element, offset}] = node; }

    /// The last one of a kind before an offset; kNoNode: none.
    Holder lastBefore(const Tree& tree, elements::Element element, std::size_t offset) const;

private:
    std::vector<std::vector<NodeID>> nodes_;  ///< by element
    std::map<std::pair<elements::Element, std::size_t>, NodeID> made_;
};

}  // namespace brackwell::repair
