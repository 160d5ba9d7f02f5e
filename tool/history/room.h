// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tool {

/// Makes room for so many values more. A list that gets all of a large statement value by value has up to
/// three times the room while it grows; many small statements still let it grow as it does by itself.
template <class Value>
void makeRoom(std::vector<Value>& list, std::size_t count) {
    if (count > list.capacity() - list.size())
        list.reserve(std::max(list.size() + count, list.capacity() + list.capacity() / 2));
}

}  // namespace tool
