// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <ranges>
#include <string_view>

#include "elements/element_list.h"

namespace brackwell::elements {

/// The fields of a header of OFX 1, in the order in which it has them.
inline constexpr auto kHeaderFields = [] {
    constexpr auto isField = [](const ElementRow& row) { return row.type == ValueType::headerField; };
    std::array<std::string_view, std::ranges::count_if(kElementRows, isField)> fields;
    std::ranges::copy(kElementRows | std::views::filter(isField) | std::views::transform(&ElementRow::name),
                      fields.begin());
    return fields;
}();

}  // namespace brackwell::elements
