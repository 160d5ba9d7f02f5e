// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "memory/load_word.h"

namespace brackwell {

/// True when all eight bytes of a word are ASCII digits. They are looked at all at once, as dates are the
/// most frequent value but texts.
constexpr bool areDigits(std::uint64_t word) noexcept {
    constexpr std::uint64_t zeros = 0x3030303030303030;
    constexpr std::uint64_t upperHalves = 0xF0F0F0F0F0F0F0F0;
    constexpr std::uint64_t sixes = 0x0606060606060606;
    // A digit's upper half is that of "0", and stays so when 6 is added. A byte that has more bits, or that
    // carries into the next one, is no digit itself.
    return (word & (word + sixes) & upperHalves) == zeros;
}

/// The numbers that eight ASCII digits make two by two, each in the lower byte of 16 bits, the first lowest.
/// The upper bytes are of no use.
constexpr std::uint64_t pairsOf(std::uint64_t digits) noexcept {
    constexpr std::uint64_t zeros = 0x3030303030303030;
    const std::uint64_t values = digits ^ zeros;
    return values * 10 + (values >> 8);
}

/// The numbers that eight ASCII digits make two by two; nothing when one of them is no digit.
inline std::optional<std::array<unsigned, 4>> fourPairs(const char* digits) noexcept {
    const std::uint64_t word = loadWord(digits);
    if (!areDigits(word)) return std::nullopt;
    const std::uint64_t pairs = pairsOf(word);
    const auto pair = [pairs](unsigned i) { return static_cast<unsigned>(pairs >> (16 * i) & 0xFF); };
    return std::array{pair(0), pair(1), pair(2), pair(3)};
}

/// Four numbers below 128 side by side, as pairsOf has them.
constexpr std::uint64_t sideBySide(unsigned first, unsigned second, unsigned third,
                                   unsigned fourth) noexcept {
    return first | std::uint64_t{second} << 16 | std::uint64_t{third} << 32 | std::uint64_t{fourth} << 48;
}

/// True when each of four numbers of two digits lies between its limits, which may be reached. All are
/// compared at once: what is added sets bit 7 from a limit on, and never carries into the next number.
constexpr bool areWithin(std::uint64_t pairs, std::uint64_t least, std::uint64_t most) noexcept {
    constexpr std::uint64_t bit7 = sideBySide(128, 128, 128, 128);
    constexpr std::uint64_t below = sideBySide(127, 127, 127, 127);
    const std::uint64_t numbers = pairs & sideBySide(255, 255, 255, 255);
    return ((numbers + (bit7 - least)) & ~(numbers + (below - most)) & bit7) == bit7;
}

}  // namespace brackwell
