// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

#include "text/ascii_case.h"

namespace brackwell {

/// The value of an ASCII digit; 10 or more for every other byte.
constexpr unsigned digitValue(char character) noexcept { return static_cast<unsigned char>(character - '0'); }

constexpr bool isASCIIDigit(char character) noexcept { return digitValue(character) < 10; }

/// The value of a hexadecimal digit in either case; -1 for every other byte.
constexpr int hexDigitValue(char character) noexcept {
    if (digitValue(character) <= 9) return character - '0';
    const char capital = capitalLetter(character);
    return capital >= 'A' && capital <= 'F' ? capital - 'A' + 10 : -1;
}

/// True when the text begins with at least `count` ASCII digits.
constexpr bool beginsWithDigits(std::string_view text, std::size_t count) noexcept {
    if (text.size() < count) return false;
    for (const char character : text.substr(0, count)) {
        if (digitValue(character) > 9) return false;
    }
    return true;
}

}  // namespace brackwell
