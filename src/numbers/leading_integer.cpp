// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include <limits>

#include "text/ascii_digit.h"

namespace brackwell {

std::int64_t leadingInteger(std::string_view text) noexcept {
    text = trimWhiteSpace(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);

    // Counted downwards, because the range reaches one further below zero than above.
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
    std::int64_t value = 0;
    for (; beginsWithDigits(text, 1); text.remove_prefix(1)) {
        const std::int64_t digit = digitValue(text.front());
        if (value < (lowest + digit) / 10) return negative ? lowest : highest;
        value = value * 10 - digit;
    }
    if (negative) return value;
    return value == lowest ? highest : -value;
}

}  // namespace brackwell
