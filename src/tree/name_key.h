// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "memory/load_word.h"

namespace brackwell::reading {

/// Names of at most this many bytes are equal when their keys are.
inline constexpr std::size_t kKeyedBytes = 16;

/// What two names are compared by first: their length, their first eight bytes, and their next eight, or,
/// of a name of more than 16 bytes, its last eight. Long names of the OFX standard differ at their end:
/// CREDITCARDMSGSRSV1 and CREDITCARDMSGSRSV2. Bytes that a name lacks are zero.
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
inline constexpr auto kKeyMasks = [] {
    std::array<KeyMask, kKeyedBytes + 1> masks{};
    for (std::size_t size = 1; size != masks.size(); ++size) {
        masks[size] = masks[size - 1];
        std::uint64_t& word = size <= 8 ? masks[size].head : masks[size].tail;
        word = word << 8 | 0xFF;
    }
    return masks;
}();

/// The key of a name of at most 16 bytes. 16 bytes must be readable from its start, whatever its length: then
/// no branch depends on the length, which no processor could predict.
constexpr NameKey nameKeyOfShort(const char* name, std::size_t size) noexcept {
    const KeyMask& mask = kKeyMasks[size];
    return {loadWord(name) & mask.head, loadWord(name + 8) & mask.tail, size};
}

/// The key of any name from whose start 16 bytes can be read.
constexpr NameKey nameKeyOfReadable(const char* name, std::size_t size) noexcept {
    if (size <= kKeyedBytes) [[likely]]
        return nameKeyOfShort(name, size);
    return {loadWord(name), loadWord(name + size - 8), size};
}

/// The key of any name.
constexpr NameKey nameKey(std::string_view name) noexcept {
    if (name.size() >= kKeyedBytes) return nameKeyOfReadable(name.data(), name.size());
    std::array<char, kKeyedBytes> padded{};
    std::copy_n(name.data(), name.size(), padded.data());
    return nameKeyOfReadable(padded.data(), name.size());
}

/// Compares two names by their keys first.
inline bool sameName(const NameKey& aKey, std::string_view a, const NameKey& bKey,
                     std::string_view b) noexcept {
    return aKey == bKey && (aKey.size <= kKeyedBytes || a == b);
}

}  // namespace brackwell::reading
