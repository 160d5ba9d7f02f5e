// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>

namespace brackwell::opening {

/// What is left of an amount without its sign, its currency and the white space around them.
struct FramedNumber {
    std::string_view number;  ///< a part of the amount's text; it need not be a number
    bool negative = false;
};

/// Takes off both ends of an amount, each at most once and in any order:
///
/// - a sign before or after the number, parentheses (negative), "CR" or "DR" (negative) after it: one of
/// these,
///   since two could mean that the one undoes the other;
/// - a currency sign or abbreviation ("$", "R$", "€", "kr", "zł");
/// - a currency code: three capitals.
///
/// Nothing when a parenthesis has no partner. What cannot be taken off stays in the number.
std::optional<FramedNumber> withoutFrame(std::string_view amount) noexcept;

}  // namespace brackwell::opening
