// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <string>
#include <vector>

#include "repair/tree.h"

namespace brackwell::repair {

/// What keeps an element from being read: it is of no use to a reader where it stands.
struct Fault {
    NodeID node;
    NodeID first;  ///< of a repeated aggregate the first one, otherwise kNoNode
    std::string reason;
};

/// The faults of a tree, in the order of its nodes, by what the standard says may stand where:
/// - a known element in a known aggregate, or outside of the root, that has no place there;
/// - an aggregate that stands a second time where one may, but for those directly in a message set, which
///   are read one by one;
/// - a name in small letters that is known in capitals.
std::vector<Fault> faultsOf(const Tree& tree);

/// What of a tree is of no use to a reader.
struct Loss {
    std::size_t leaves = 0;  ///< at faults, or in aggregates at faults; of repeated aggregates those of all
    std::size_t faults = 0;
    auto operator<=>(const Loss&) const = default;
};
Loss lossOf(const Tree& tree);

/// True when an element may stand a second time in a parent, as far as it is read.
bool mayRepeat(const Tree& tree, NodeID node);

/// True when the standard gives an element no place in its parent.
bool isMisplaced(const Tree& tree, NodeID node);

}  // namespace brackwell::repair
