// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "platform/load_word.h"

namespace brackwell::reading {

/// Names of up to so many bytes are equal when their keys are.
inline constexpr std::size_t kKeyedBytes = 16;

/// What two names are compared by first: their length and their first 16 bytes, padded with zeros.
struct NameKey {
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    std::size_t size = 0;
    bool operator==(const NameKey&) const = default;
};

struct KeyMask {
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
};

/// By the length of a name: which of 16 bytes belong to it.
inline constexpr std::array<KeyMask, kKeyedBytes + 1> kKeyMasks = [] {
    std::array<KeyMask, kKeyedBytes + 1> masks{};
    for (std::size_t size = 1; size <= kKeyedBytes; ++size) {
        masks[size] = masks[size - 1];
        std::uint64_t& word = size <= 8 ? masks[size].head : masks[size].tail;
        word = word << 8 | 0xFF;
    }
    return masks;
}();

/// The key of a name behind whose begin 16 bytes can be read, whatever its length: no branch depends on
/// the length, which no processor could predict.
constexpr NameKey nameKeyOfReadable(const char* name, std::size_t size) noexcept {
    const KeyMask& mask = kKeyMasks[std::min(size, kKeyedBytes)];
    return {loadWord(name) & mask.head, loadWord(name + 8) & mask.tail, size};
}

/// The key of any name.
constexpr NameKey nameKey(std::string_view name) noexcept {
    std::array<char, kKeyedBytes> padded{};
    std::copy_n(name.data(), std::min(name.size(), kKeyedBytes), padded.data());
    return nameKeyOfReadable(padded.data(), name.size());
}

/// Compares two names by their keys first.
inline bool sameName(const NameKey& aKey, std::string_view a, const NameKey& bKey,
                     std::string_view b) noexcept {
    return aKey == bKey && (aKey.size <= kKeyedBytes || a == b);
}

}  // namespace brackwell::reading
