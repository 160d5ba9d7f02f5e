// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "repair/tree.h"

namespace brackwell::repair {

/// What is wrong with an element where it stands.
enum class FaultKind : std::uint8_t {
    misplaced,     ///< it is known, and has no place in the known aggregate around it, or outside of the root
    repeated,      ///< it stands a second time where one may
    further,       ///< the same directly in a message set, whose elements are read one by one
    hasText,       ///< it is an aggregate, and has a text
    smallLetters,  ///< its name is known in capitals only
};

struct Fault {
    FaultKind kind;
    NodeID node;
    NodeID first;  ///< of a repeated element the first one, otherwise kNoNode
};

/// The faults of a tree, parent by parent, by what the standard says may stand where. An element that is not
/// known has none.
std::vector<Fault> faultsOf(const Tree& tree);

/// A fault as a sentence without its full stop.
std::string reasonOf(const Tree& tree, const Fault& fault);

/// What of a tree is of no use to a reader, and how much of it is wrong. What is repeated directly in a
/// message set is wrong, and read.
struct Loss {
    std::size_t leaves = 0;  ///< at faults, or in aggregates at faults; of repeated elements those of all
    std::size_t faults = 0;
    auto operator<=>(const Loss&) const = default;
};
Loss lossOf(const Tree& tree);

/// True when an element may stand a second time in its parent.
bool mayRepeat(const Tree& tree, NodeID node);

/// True when the standard gives an element no place in its parent.
bool isMisplaced(const Tree& tree, NodeID node);

}  // namespace brackwell::repair
