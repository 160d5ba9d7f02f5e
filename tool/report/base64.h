// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tool {

/// A hash of 256 bits, given as 64 hexadecimal digits, in the letters in which browsers compare it.
consteval std::array<char, 44> base64OfHash(const char (&digits)[65]) {
    constexpr std::string_view hexadecimal = "0123456789abcdef";
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<char, 44> text{};
    std::size_t size = 0;
    // Three digits are two letters; the last digit has one and a half, filled up with zeros.
    for (std::size_t i = 0; i < 66; i += 3) {
        std::size_t bits = 0;
        for (std::size_t k = i; k < i + 3; ++k) bits = bits << 4 | (k < 64 ? hexadecimal.find(digits[k]) : 0);
        text[size++] = letters[bits >> 6];
        if (size < 43) text[size++] = letters[bits & 63];
    }
    text[43] = '=';
    return text;
}

}  // namespace tool
