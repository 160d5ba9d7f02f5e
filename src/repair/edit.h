// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/repair.h>

#include <algorithm>
#include <iterator>

namespace brackwell::repair {

/// A change whose place is an offset only, in a body.
struct Edit {
    std::size_t offset;
    std::size_t size;  ///< of what stood there
    RepairKind kind;
    std::string now;
};

/// Two lists as one; each is in the order of its places. At the same place those of the first come first.
inline std::vector<Edit> merged(std::vector<Edit> first, std::vector<Edit> second) {
    std::vector<Edit> edits;
    edits.reserve(first.size() + second.size());
    std::merge(std::make_move_iterator(first.begin()), std::make_move_iterator(first.end()),
               std::make_move_iterator(second.begin()), std::make_move_iterator(second.end()),
               std::back_inserter(edits), [](const Edit& a, const Edit& b) { return a.offset < b.offset; });
    return edits;
}

}  // namespace brackwell::repair
