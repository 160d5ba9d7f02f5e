// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "elements/structure_tables.h"
#include "tree/document.h"

namespace brackwell::opening {

/// When an element of a name may be something that no class reads.
enum class Oddness : std::uint8_t { never, asLeaf, always };

/// By name, the last one for all that the library's readers do not know. Aggregates must not be leaves. The
/// names that are odd by themselves are not read everywhere, or hold what only an accounting looks at.
inline constexpr auto kOddness = [] {
    using reading::element;
    std::array<Oddness, reading::kKnownElementCount + 1> odd{};
    for (std::size_t name = 0; name + 1 != odd.size(); ++name) {
        const elements::ElementRow& row =
            elements::kElementRows[elements::tables::find(reading::kElementNames[name])];
        if (row.isAggregate && row.type == elements::ValueType::none) odd[name] = Oddness::asLeaf;
    }
    for (const reading::NameID name : {element("EXTDNAME"), element("PHONE")}) odd[name] = Oddness::always;
    odd.back() = Oddness::always;
    return odd;
}();

inline bool isOdd(const reading::Node& node) noexcept {
    const Oddness odd = kOddness[std::min<reading::NameID>(node.name(), reading::kKnownElementCount)];
    return odd == Oddness::always || (odd == Oddness::asLeaf && !node.isAggregate());
}

}  // namespace brackwell::opening
