// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace brackwell {

/// Eight bytes as one word, the first byte lowest on every machine.
constexpr std::uint64_t loadWord(const char* bytes) noexcept {
    std::uint64_t word = 0;
    if (std::is_constant_evaluated() || std::endian::native != std::endian::little) {
        for (unsigned i = 0; i < sizeof word; ++i)
            word |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    } else {
        std::memcpy(&word, bytes, sizeof word);
    }
    return word;
}

/// Eight bytes as one word, the first byte highest: such words are in the order of their bytes.
constexpr std::uint64_t loadOrderedWord(const char* bytes) noexcept {
    std::uint64_t word = loadWord(bytes);
    // Compilers know these three lines as one instruction.
    word = (word & 0x00FF00FF00FF00FF) << 8 | (word >> 8 & 0x00FF00FF00FF00FF);
    word = (word & 0x0000FFFF0000FFFF) << 16 | (word >> 16 & 0x0000FFFF0000FFFF);
    return (word & 0x00000000FFFFFFFF) << 32 | word >> 32;
}

/// Four bytes, the first byte lowest.
constexpr std::uint32_t loadHalfWord(const char* bytes) noexcept {
    std::uint32_t word = 0;
    if (std::is_constant_evaluated() || std::endian::native != std::endian::little) {
        for (unsigned i = 0; i < sizeof word; ++i)
            word |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    } else {
        std::memcpy(&word, bytes, sizeof word);
    }
    return word;
}

}  // namespace brackwell
