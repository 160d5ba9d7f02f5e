// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>

#include "elements/structure_tables.h"
#include "tree/element_names.h"

namespace brackwell::opening {

/// The element of each known name.
inline constexpr auto kElementOfName = [] {
    std::array<elements::Element, reading::kKnownElementCount> found{};
    for (std::size_t name = 0; name != found.size(); ++name)
        found[name] = elements::tables::find(reading::kElementNames[name]);
    return found;
}();

}  // namespace brackwell::opening
