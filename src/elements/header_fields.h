// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "elements/element_list.h"

namespace brackwell::elements {

/// The fields of a header of OFX 1, in the order in which it has them.
inline constexpr auto kHeaderFields = [] {
    std::array<std::string_view, std::ranges::count(kElementRows, ValueType::headerField, &ElementRow::type)>
        fields;
    std::size_t count = 0;
    for (const ElementRow& row : kElementRows)
        if (row.type == ValueType::headerField) fields[count++] = row.name;
    return fields;
}();

/// Those that a header of OFX 2 has as well.
inline constexpr auto kHeaderFieldsOfXML =
    std::to_array<std::string_view>({"OFXHEADER", "VERSION", "SECURITY", "OLDFILEUID", "NEWFILEUID"});

}  // namespace brackwell::elements
