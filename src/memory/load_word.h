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

/// Four bytes, the same way.
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
