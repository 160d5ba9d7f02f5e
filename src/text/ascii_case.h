// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string_view>

namespace brackwell {

constexpr bool isASCIICapital(char character) noexcept { return character >= 'A' && character <= 'Z'; }
constexpr bool isSmallASCIILetter(char character) noexcept { return character >= 'a' && character <= 'z'; }
constexpr bool isASCIILetter(char character) noexcept {
    return isASCIICapital(character) || isSmallASCIILetter(character);
}

/// The small form of an ASCII capital; every other byte as it is.
constexpr char smallLetter(char character) noexcept {
    return isASCIICapital(character) ? static_cast<char>(character - 'A' + 'a') : character;
}

/// The capital form of a small ASCII letter; every other byte as it is.
constexpr char capitalLetter(char character) noexcept {
    return isSmallASCIILetter(character) ? static_cast<char>(character - 'a' + 'A') : character;
}

/// True when both texts are the same but for the case of ASCII letters.
constexpr bool equalsIgnoringCase(std::string_view a, std::string_view b) noexcept {
    return std::ranges::equal(a, b, {}, smallLetter, smallLetter);
}

}  // namespace brackwell
