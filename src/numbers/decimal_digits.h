// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "numbers/decimal_coefficient.h"
#include "text/ascii_digit.h"

namespace brackwell {

/// The characters that are read as a sign: "+" and "-", or U+2212 (minus sign) as well.
enum class Signs : bool { ascii, withMinusSign };

/// Takes one sign off the beginning of the text, if it has one; true when the sign is negative.
inline bool takeSign(std::string_view& text, Signs signs) noexcept {
    constexpr std::string_view minusSign = "\xE2\x88\x92";
    if (text.empty()) return false;
    if (text.front() == '+' || text.front() == '-') {
        const bool negative = text.front() == '-';
        text.remove_prefix(1);
        return negative;
    }
    if (signs != Signs::withMinusSign || !text.starts_with(minusSign)) return false;
    text.remove_prefix(minusSign.size());
    return true;
}

/// Gathers the digits of one decimal number from left to right: first integer digits, in as many
/// runs as the notation has, then fraction digits, then an exponent.
///
/// Takes any number of digits in constant space. Up to 38 of them are kept from the first one on
/// that is not zero, in two halves that each fit 64 bits; what follows may only be zeros.
class DecimalDigits {
public:
    /// Takes the integer digits off the beginning of the text; true when there were any.
    bool takeInteger(std::string_view& text) noexcept { return takeRun(text) > 0; }

    /// Takes the digits after the decimal separator off the beginning of the text.
    void takeFraction(std::string_view& text) noexcept { exponent_ -= takeRun(text); }

    /// Takes "e" or "E", an optional sign and digits off the beginning of the text, if all of that
    /// stands there.
    void takeExponent(std::string_view& text, Signs signs) noexcept {
        if (text.empty() || (text.front() != 'e' && text.front() != 'E')) return;
        std::string_view rest = text.substr(1);
        const bool negative = takeSign(rest, signs);
        if (!beginsWithDigits(rest, 1)) return;
        std::int64_t exponent = 0;
        for (; beginsWithDigits(rest, 1); rest.remove_prefix(1)) {
            if (exponent < kBeyondAnyText) exponent = exponent * 10 + digitValue(rest.front());
        }
        exponent_ += negative ? -exponent : exponent;
        text = rest;
    }

    /// The number; nothing when no digit was taken or the number does not fit exactly.
    std::optional<Decimal> number(bool negative) const noexcept {
        if (!any_ || tooLong_) return std::nullopt;
        if (count_ <= kHalf) return Decimal::fromParts(negative, 0, upper_, exponent_);
        return decimalFrom(negative, upper_ * powerOfTen(count_ - kHalf) + lower_, exponent_);
    }

private:
    static constexpr int kHalf = Decimal::maximumDigits / 2;

    /// An exponent that no number of zeros in a text makes up for. It keeps growing by one digit
    /// at most, so that sums with the length of a text stay in range.
    static constexpr std::int64_t kBeyondAnyText = 100'000'000'000'000'000;

    std::int64_t takeRun(std::string_view& text) noexcept {
        std::size_t length = 0;
        for (; length < text.size(); ++length) {
            const unsigned digit = digitValue(text[length]);
            if (digit > 9) break;
            append(digit);
        }
        text.remove_prefix(length);
        any_ = any_ || length > 0;
        return static_cast<std::int64_t>(length);
    }

    void append(unsigned digit) noexcept {
        if (count_ < kHalf) [[likely]] {
            upper_ = upper_ * 10 + digit;
            count_ += upper_ != 0;  // zeros in front do not count
        } else if (count_ < Decimal::maximumDigits) {
            lower_ = lower_ * 10 + digit;
            ++count_;
        } else {
            tooLong_ = tooLong_ || digit != 0;
            ++exponent_;
        }
    }

    std::uint64_t upper_ = 0;    // the first 19 digits
    std::uint64_t lower_ = 0;    // those after them
    int count_ = 0;              // how many digits both hold
    std::int64_t exponent_ = 0;  // of the last digit held
    bool any_ = false;           // a digit was taken, if only a zero
    bool tooLong_ = false;       // a digit other than zero came after the 38th
};

}  // namespace brackwell
