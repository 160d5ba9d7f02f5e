// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "numbers/decimal_coefficient.h"
#include "numbers/decimal_digits.h"

namespace brackwell {
namespace {

/// How many digits a coefficient has.
int digitCount(Wide coefficient) noexcept {
    return static_cast<int>(std::ranges::upper_bound(kPowersOfTen, coefficient) - kPowersOfTen.begin());
}

/// Removes zeros from the end of a number other than zero and says how many there were.
template <typename Number>
int stripZeros(Number& number) noexcept {
    int stripped = 0;
    for (; number % 10 == 0; number /= 10) ++stripped;
    return stripped;
}

/// The order of the magnitudes of two numbers other than zero.
std::strong_ordering compareMagnitudes(const Decimal& a, const Decimal& b) noexcept {
    const Wide first = coefficientOf(a);
    const Wide second = coefficientOf(b);
    const auto places = digitCount(first) + a.exponent() <=> digitCount(second) + b.exponent();
    if (std::is_neq(places)) return places;
    // Both begin at the same place, so that the one with the larger exponent has fewer digits, and
    // filled up with zeros has as many as the other one.
    const int shift = a.exponent() - b.exponent();
    if (shift > 0) return first * powerOfTen(shift) <=> second;
    return first <=> second * powerOfTen(-shift);
}

/// Writes a number before a place, with a point before so many of its digits, and returns where it begins.
template <typename Number>
char* writeDigits(Number number, int places, char* end) noexcept {
    for (int written = 0; number != 0 || written <= places; ++written) {
        if (written == places && places > 0) *--end = '.';
        *--end = static_cast<char>('0' + static_cast<int>(number % 10));
        number /= 10;
    }
    return end;
}

/// The same for a coefficient; dividing 128 bits takes ten times as long as dividing 64.
char* writeCoefficient(Wide coefficient, int places, char* end) noexcept {
    const auto low = static_cast<std::uint64_t>(coefficient);
    return low == coefficient ? writeDigits(low, places, end) : writeDigits(coefficient, places, end);
}

}  // namespace

Decimal Decimal::fromInteger(std::int64_t value) noexcept {
    const auto bits = static_cast<std::uint64_t>(value);
    return *fromParts(value < 0, 0, value < 0 ? ~bits + 1 : bits, 0);
}

std::optional<Decimal> Decimal::fromString(std::string_view text) noexcept {
    const bool negative = takeSign(text, Signs::ascii);
    DecimalDigits digits;
    digits.takeInteger(text);
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        digits.takeFraction(text);
    }
    digits.takeExponent(text, Signs::ascii);
    if (!text.empty()) return std::nullopt;
    return digits.number(negative);
}

std::optional<Decimal> Decimal::fromParts(bool negative, std::uint64_t high, std::uint64_t low,
                                          std::int64_t exponent) noexcept {
    if (high == 0 && low == 0) return Decimal();
    // Stripping zeros raises the exponent by at most as many digits as there are.
    if (exponent < minimumExponent - maximumDigits || exponent > maximumExponent) return std::nullopt;
    if (high == 0) {
        exponent += stripZeros(low);
    } else {
        Wide coefficient = Wide{high} << 64 | low;
        exponent += stripZeros(coefficient);
        if (coefficient >= powerOfTen(maximumDigits)) return std::nullopt;
        high = static_cast<std::uint64_t>(coefficient >> 64);
        low = static_cast<std::uint64_t>(coefficient);
    }
    if (exponent < minimumExponent || exponent > maximumExponent) return std::nullopt;
    Decimal number;
    number.high_ = high;
    number.low_ = low;
    number.exponent_ = static_cast<std::int16_t>(exponent);
    number.negative_ = negative;
    return number;
}

std::string Decimal::toString() const {
    // The longest has a sign, all digits, and as many zeros as the largest exponent says.
    std::array<char, 1 + maximumDigits + maximumExponent> room;
    char* const end = room.data() + room.size();
    char* begin = end - std::max<int>(exponent_, 0);
    std::fill(begin, end, '0');
    begin = writeCoefficient(coefficientOf(*this), std::max(-exponent_, 0), begin);
    if (negative_) *--begin = '-';
    return {begin, end};
}

std::optional<Decimal> Decimal::plus(const Decimal& other) const noexcept {
    if (isZero()) return other;
    if (other.isZero()) return *this;
    const bool thisIsUpper = exponent_ >= other.exponent_;
    const Decimal& upper = thisIsUpper ? *this : other;
    const Decimal& lower = thisIsUpper ? other : *this;

    // Unless the exponents are equal, the last digit of the lower number is the sum's last digit too,
    // so the sum's coefficient is the one computed here. The lower coefficient lies below 10^38; hence
    // an upper one of 2 x 10^38 or more leaves too many digits even when the signs differ.
    const int shift = upper.exponent_ - lower.exponent_;
    if (shift > maximumDigits) return std::nullopt;
    if (coefficientOf(upper) >= 2 * powerOfTen(maximumDigits - shift)) return std::nullopt;
    const Wide above = coefficientOf(upper) * powerOfTen(shift);
    const Wide below = coefficientOf(lower);
    if (upper.negative_ == lower.negative_)
        return decimalFrom(upper.negative_, above + below, lower.exponent_);
    if (above >= below) return decimalFrom(upper.negative_, above - below, lower.exponent_);
    return decimalFrom(lower.negative_, below - above, lower.exponent_);
}

std::optional<Decimal> Decimal::minus(const Decimal& other) const noexcept { return plus(other.negated()); }

std::optional<Decimal> Decimal::times(const Decimal& other) const noexcept {
    if (isZero() || other.isZero()) return Decimal();
    Wide a = coefficientOf(*this);
    Wide b = coefficientOf(other);
    std::int64_t exponent = std::int64_t{exponent_} + other.exponent_;
    // Neither ends in a zero digit, so a zero at the end of the product comes from a two in one and a five in
    // the other. Without these pairs the product's digits are those of its coefficient.
    for (; a % 2 == 0 && b % 5 == 0; a /= 2, b /= 5) ++exponent;
    for (; a % 5 == 0 && b % 2 == 0; a /= 5, b /= 2) ++exponent;
    if (a > (powerOfTen(maximumDigits) - 1) / b) return std::nullopt;
    return decimalFrom(negative_ != other.negative_, a * b, exponent);
}

Decimal Decimal::negated() const noexcept {
    Decimal number = *this;
    number.negative_ = !negative_ && !isZero();
    return number;
}

Decimal Decimal::rounded(int fractionDigits) const noexcept {
    const int kept = std::clamp(fractionDigits, 0, -minimumExponent);
    const int dropped = -exponent_ - kept;
    if (dropped <= 0) return *this;
    const Wide coefficient = coefficientOf(*this);
    if (dropped > digitCount(coefficient)) return {};  // less than half of the last digit
    const Wide unit = powerOfTen(dropped);
    Wide quotient = coefficient / unit;
    const Wide twice = coefficient % unit * 2;
    if (twice > unit || (twice == unit && quotient % 2 == 1)) ++quotient;
    return *decimalFrom(negative_, quotient, -kept);  // no more digits than there were, so it fits
}

std::optional<Decimal> Decimal::fromMinorUnits(std::int64_t units, int fractionDigits) noexcept {
    const Decimal whole = fromInteger(units);
    return fromParts(whole.negative_, whole.high_, whole.low_,
                     std::int64_t{whole.exponent_} - std::int64_t{fractionDigits});
}

std::optional<std::int64_t> Decimal::toMinorUnits(int fractionDigits) const noexcept {
    if (isZero()) return 0;
    constexpr int digitsOfUnits = std::numeric_limits<std::int64_t>::digits10;
    // The coefficient ends in no zero, so that below 0 there is a fraction of a unit.
    const std::int64_t shift = std::int64_t{exponent_} + fractionDigits;
    if (shift < 0 || shift > digitsOfUnits || high_ != 0) return std::nullopt;
    constexpr Wide largest = std::numeric_limits<std::int64_t>::max();
    const Wide units = Wide{low_} * powerOfTen(static_cast<int>(shift));
    if (units > largest + (negative_ ? 1 : 0)) return std::nullopt;
    // From one less, since the smallest number has no counterpart above zero.
    return negative_ ? -static_cast<std::int64_t>(units - 1) - 1 : static_cast<std::int64_t>(units);
}

double Decimal::toDouble() const noexcept {
    if (isZero()) return 0;
    // "e", the exponent, at most "-128", and a zero stand at the end; digits are put before them.
    std::array<char, 1 + maximumDigits + 6> text{};
    char* begin = text.data() + 1 + maximumDigits;
    *begin = 'e';
    std::to_chars(begin + 1, text.data() + text.size() - 1, exponent_);
    begin = writeCoefficient(coefficientOf(*this), 0, begin);
    if (negative_) *--begin = '-';
    // Rounds correctly; no number is beyond what a double holds. Without a decimal mark the text means the
    // same in every locale.
    return std::strtod(begin, nullptr);
}

std::optional<Decimal> Decimal::fromDouble(double value) noexcept {
    std::array<char, 32> text;  // the longest has 24 characters
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific);
    return fromString({text.data(), static_cast<std::size_t>(written.ptr - text.data())});
}

std::strong_ordering operator<=>(const Decimal& a, const Decimal& b) noexcept {
    const auto sign = [](const Decimal& number) {
        return number.isZero() ? 0 : number.isNegative() ? -1 : 1;
    };
    if (sign(a) != sign(b)) return sign(a) <=> sign(b);
    if (a.isZero()) return std::strong_ordering::equal;
    return a.isNegative() ? compareMagnitudes(b, a) : compareMagnitudes(a, b);
}

}  // namespace brackwell
