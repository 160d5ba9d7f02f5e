// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

/// A digest as sixteen digits of base 16.
std::string digestText(std::uint64_t digest);

/// A number of 64 bits for a list of texts, the same in every run and on every machine: journals keep it. It
/// tells contents apart that differ by chance; it is no protection against somebody who looks for two
/// contents with one digest.
class Digest {
public:
    /// Adds a text. "ab" and "c" are not the same as "a" and "bc".
    Digest& add(std::string_view text) noexcept {
        addNumber(text.size());
        for (const char c : text) addByte(static_cast<unsigned char>(c));
        return *this;
    }

    std::uint64_t value() const noexcept { return hash_; }
    std::string text() const { return digestText(hash_); }

private:
    // FNV-1a.
    static constexpr std::uint64_t kOffset = 0xCBF29CE484222325;
    static constexpr std::uint64_t kPrime = 0x100000001B3;

    void addByte(unsigned char byte) noexcept {
        hash_ = (hash_ ^ byte) * kPrime;  // which is meant to wrap
    }
    /// Of 64 bits, also where sizes have fewer.
    void addNumber(std::uint64_t number) noexcept {
        for (std::size_t i = 0; i < sizeof number; ++i)
            addByte(static_cast<unsigned char>(number >> (8 * i) & 0xFF));
    }

    std::uint64_t hash_ = kOffset;
};

}  // namespace tool
