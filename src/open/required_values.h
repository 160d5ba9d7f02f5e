// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "tree/document.h"

namespace brackwell::opening {

/// Minus the number of values that a record needs, 1 for such a value, 0 for all else: the amount and date of
/// a transaction, and the amount of a balance. So the sum over a complete document is 0.
inline std::ptrdiff_t requiredBy(const reading::Node& node) noexcept {
    static constexpr auto kValues = [] {
        using reading::element;
        std::array<std::int8_t, reading::kKnownElementCount + 1> found{};
        found[element("STMTTRN")] = -2;
        found[element("STMTTRNP")] = -1;
        found[element("LEDGERBAL")] = found[element("AVAILBAL")] = -1;
        found[element("TRNAMT")] = found[element("DTPOSTED")] = found[element("BALAMT")] = 1;
        return found;
    }();
    const std::int8_t value = kValues[std::min<reading::NameID>(node.name(), reading::kKnownElementCount)];
    // An empty element is an aggregate without names: no record that needs values, and no value.
    const bool counts = value < 0 ? node.isAggregate() && node.size != 0 : !node.isAggregate();
    return counts ? value : 0;
}

}  // namespace brackwell::opening
