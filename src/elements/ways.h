// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "elements/structure.h"

namespace brackwell::elements {

/// Finds the aggregates that are missing between an element and one around it. Each answer is kept, so that
/// it is worked out once.
class Ways {
public:
    /// The aggregates that must stand between `parent` and `child`, the outer one first: the shortest way,
    /// and of several the first by the order of the rows. Empty when there is none of at most kLongest, and
    /// when the child may stand in the parent directly.
    const std::vector<Element>& between(Element parent, Element child);

    static constexpr unsigned kLongest = 4;  ///< as many as are between OFX and a transaction

private:
    std::unordered_map<std::uint32_t, std::vector<Element>> known_;
};

}  // namespace brackwell::elements
