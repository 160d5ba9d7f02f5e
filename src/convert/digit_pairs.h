// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "platform/load_word.h"

namespace brackwell {

/// The numbers that eight ASCII digits make two by two; nothing when one of them is no digit. All
/// eight are looked at in one word, as dates are the most frequent value but texts.
inline std::optional<std::array<unsigned, 4>> fourPairs(const char* digits) noexcept {
    constexpr std::uint64_t zeros = 0x3030303030303030;
    constexpr std::uint64_t upperHalves = 0xF0F0F0F0F0F0F0F0;
    constexpr std::uint64_t sixes = 0x0606060606060606;
    const std::uint64_t word = loadWord(digits);
    // A digit's upper half is that of "0", and stays so when 6 is added.
    if ((word & upperHalves) != zeros || ((word + sixes) & upperHalves) != zeros) return std::nullopt;
    const std::uint64_t values = word ^ zeros;
    const std::uint64_t pairs = values * 10 + (values >> 8);  // in the lower byte of each two
    const auto pair = [pairs](unsigned i) { return static_cast<unsigned>(pairs >> (16 * i) & 0xFF); };
    return std::array{pair(0), pair(1), pair(2), pair(3)};
}

}  // namespace brackwell
