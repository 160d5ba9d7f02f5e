// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace brackwell::reading {

/// Names of up to so many bytes are equal when their keys are.
inline constexpr std::size_t kKeyedBytes = 16;

/// What two names are compared by first: their length, and their bytes read as two overlapping words.
struct NameKey {
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    std::size_t size = 0;
    bool operator==(const NameKey&) const = default;
};

template <class Word>
constexpr std::uint64_t loadWord(const char* bytes) noexcept {
    Word word = 0;
    if (std::is_constant_evaluated() || std::endian::native != std::endian::little) {
        for (std::size_t i = 0; i < sizeof(Word); ++i)
            word |= static_cast<Word>(static_cast<Word>(static_cast<unsigned char>(bytes[i])) << (8 * i));
    } else {
        std::memcpy(&word, bytes, sizeof(Word));
    }
    return word;
}

constexpr NameKey nameKey(std::string_view name) noexcept {
    const char* p = name.data();
    const std::size_t size = name.size();
    if (size >= 8) return {loadWord<std::uint64_t>(p), loadWord<std::uint64_t>(p + size - 8), size};
    if (size >= 4) return {loadWord<std::uint32_t>(p), loadWord<std::uint32_t>(p + size - 4), size};
    if (size == 0) return {};
    const auto byte = [p](std::size_t i) { return std::uint64_t{static_cast<unsigned char>(p[i])}; };
    return {byte(0) | byte(size / 2) << 8 | byte(size - 1) << 16, 0, size};
}

/// Compares two names by their keys first.
inline bool sameName(const NameKey& aKey, std::string_view a, const NameKey& bKey,
                     std::string_view b) noexcept {
    return aKey == bKey && (aKey.size <= kKeyedBytes || a == b);
}

}  // namespace brackwell::reading
