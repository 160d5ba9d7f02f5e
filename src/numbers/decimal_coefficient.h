// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "numbers/wide.h"

namespace brackwell {

/// 10^0 to 10^38. Wide holds every coefficient of a Decimal, and the sum of two of them and 10^38.
inline constexpr auto kPowersOfTen = [] {
    std::array<Wide, Decimal::maximumDigits + 1> powers{1};
    for (std::size_t i = 1; i != powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

constexpr Wide powerOfTen(int exponent) noexcept { return kPowersOfTen[static_cast<std::size_t>(exponent)]; }

inline Wide coefficientOf(const Decimal& number) noexcept {
    return Wide{number.coefficientHigh()} << 64 | number.coefficientLow();
}

/// (-1)^negative x coefficient x 10^exponent; nothing when that does not fit exactly.
inline std::optional<Decimal> decimalFrom(bool negative, Wide coefficient, std::int64_t exponent) noexcept {
    return Decimal::fromParts(negative, static_cast<std::uint64_t>(coefficient >> 64),
                              static_cast<std::uint64_t>(coefficient), exponent);
}

}  // namespace brackwell
