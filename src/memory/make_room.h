// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace brackwell {

/// Sees to it that as many values can be appended without asking for memory. The list grows as it does by
/// itself, so that many small appendices stay linear.
template <class Value>
void makeRoom(std::vector<Value>& list, std::size_t count) {
    if (count > list.capacity() - list.size())
        list.reserve(std::max(list.size() + count, 2 * list.capacity()));
}

}  // namespace brackwell
