// SPDX-License-Identifier: Apache-2.0
// Properties of Decimal that hold for every number, tried on many.

#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <random>
#include <string>

#include "support/decimals.h"

using brackwell::Decimal;
using brackwell::tests::decimal;
using brackwell::tests::zeros;

namespace {

// A second, plain implementation on texts of digits, which the properties below are held against.

struct Reference {
    bool negative = false;
    std::string digits;  // no zeros at either end; empty is zero
    int exponent = 0;

    bool operator==(const Reference&) const = default;
};

Reference normalised(Reference number) {
    while (!number.digits.empty() && number.digits.back() == '0') {
        number.digits.pop_back();
        ++number.exponent;
    }
    number.digits.erase(0, std::min(number.digits.find_first_not_of('0'), number.digits.size()));
    if (number.digits.empty()) return {};
    return number;
}

bool fits(const Reference& number) {
    return number.digits.empty() ||
           (number.digits.size() <= 38 && number.exponent >= -128 && number.exponent <= 127);
}

/// Both numbers' digits at the same exponent and in the same length.
int align(std::string& a, int exponentA, std::string& b, int exponentB) {
    const int exponent = std::min(exponentA, exponentB);
    a += zeros(static_cast<std::size_t>(exponentA - exponent));
    b += zeros(static_cast<std::size_t>(exponentB - exponent));
    const std::size_t length = std::max(a.size(), b.size());
    a.insert(0, length - a.size(), '0');
    b.insert(0, length - b.size(), '0');
    return exponent;
}

/// a + b x sign, digit by digit, for aligned digits with a >= b where the sign is -1.
std::string combine(const std::string& a, const std::string& b, int sign) {
    std::string result(a.size(), '0');
    int carry = 0;
    for (std::size_t i = a.size(); i-- > 0;) {
        int digit = (a[i] - '0') + sign * (b[i] - '0') + carry;
        carry = digit > 9 ? 1 : digit < 0 ? -1 : 0;
        digit -= carry * 10;
        result[i] = static_cast<char>('0' + digit);
    }
    return carry == 1 ? "1" + result : result;
}

Reference sum(const Reference& a, const Reference& b) {
    std::string digitsA = a.digits;
    std::string digitsB = b.digits;
    const int exponent = align(digitsA, a.exponent, digitsB, b.exponent);
    if (a.negative == b.negative) return normalised({a.negative, combine(digitsA, digitsB, 1), exponent});
    if (digitsA >= digitsB) return normalised({a.negative, combine(digitsA, digitsB, -1), exponent});
    return normalised({b.negative, combine(digitsB, digitsA, -1), exponent});
}

/// Digit by digit, like on paper.
Reference product(const Reference& a, const Reference& b) {
    std::string digits(a.digits.size() + b.digits.size(), '0');
    for (std::size_t i = a.digits.size(); i-- > 0;) {
        int carry = 0;
        for (std::size_t j = b.digits.size(); j-- > 0;) {
            const int sum = (digits[i + j + 1] - '0') + (a.digits[i] - '0') * (b.digits[j] - '0') + carry;
            digits[i + j + 1] = static_cast<char>('0' + sum % 10);
            carry = sum / 10;
        }
        digits[i] = static_cast<char>('0' + carry);
    }
    return normalised({a.negative != b.negative, digits, a.exponent + b.exponent});
}

int order(const Reference& a, const Reference& b) {
    std::string digitsA = a.digits;
    std::string digitsB = b.digits;
    align(digitsA, a.exponent, digitsB, b.exponent);
    const int magnitudes = digitsA.compare(digitsB) < 0 ? -1 : digitsA == digitsB ? 0 : 1;
    if (a.negative != b.negative) return a.negative ? -1 : 1;
    return a.negative ? -magnitudes : magnitudes;
}

std::string scientific(const Reference& number) {
    const std::string digits = number.digits.empty() ? "0" : number.digits;
    return (number.negative ? "-" : "") + digits + "e" + std::to_string(number.exponent);
}

/// Numbers of every length, close to each other often enough that sums cancel, fill all 38 digits
/// or just miss them.
class Generator {
public:
    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

    Reference number() {
        Reference number;
        const int length = between(0, 38);
        const int style = between(0, 3);
        for (int i = 0; i < length; ++i) number.digits += digit(style);
        number.negative = between(0, 1) == 1;
        number.exponent = between(0, 9) == 0 ? between(-128, 127) : between(-20, 20);
        return normalised(number);
    }

    /// A number that shares its upper digits with another.
    Reference neighbour(Reference number) {
        if (number.digits.empty()) return number;
        number.negative = between(0, 1) == 1;
        char& digit =
            number.digits[static_cast<std::size_t>(between(0, static_cast<int>(number.digits.size()) - 1))];
        digit = static_cast<char>('0' + between(0, 9));
        if (between(0, 3) == 0) number.exponent += between(-3, 3);
        return normalised(number);
    }

private:
    char digit(int style) {
        if (style == 0) return '9';
        if (style == 1) return between(0, 5) == 0 ? '1' : '0';
        return static_cast<char>('0' + between(0, 9));
    }

    std::mt19937_64 random_{20240131};
};

}  // namespace

TEST_CASE("sums and order of decimal numbers agree with arithmetic on their digits") {
    Generator generator;
    int sums = 0;
    for (int round = 0; round < 50'000; ++round) {
        const Reference a = generator.number();
        const Reference b = generator.between(0, 1) == 0 ? generator.number() : generator.neighbour(a);
        CAPTURE(scientific(a));
        CAPTURE(scientific(b));
        if (!fits(a) || !fits(b)) {
            REQUIRE(Decimal::fromString(scientific(a)).has_value() == fits(a));
            REQUIRE(Decimal::fromString(scientific(b)).has_value() == fits(b));
            continue;
        }
        const Decimal first = decimal(scientific(a));
        const Decimal second = decimal(scientific(b));
        REQUIRE((first <=> second) == (order(a, b) <=> 0));
        REQUIRE((first == second) == (a == b));

        const Reference expected = sum(a, b);
        const auto total = first.plus(second);
        REQUIRE(total.has_value() == fits(expected));
        if (!total) continue;
        ++sums;
        REQUIRE(*total == decimal(scientific(expected)));
        REQUIRE(second.plus(first) == total);
    }
    CHECK(sums > 10'000);
}

TEST_CASE("products of decimal numbers agree with arithmetic on their digits") {
    Generator generator;
    int products = 0;
    for (int round = 0; round < 50'000; ++round) {
        const Reference a = generator.number();
        const Reference b = generator.number();
        if (!fits(a) || !fits(b)) continue;
        CAPTURE(scientific(a));
        CAPTURE(scientific(b));
        const Reference expected = product(a, b);
        const auto found = decimal(scientific(a)).times(decimal(scientific(b)));
        REQUIRE(found.has_value() == fits(expected));
        if (!found) continue;
        ++products;
        REQUIRE(*found == decimal(scientific(expected)));
    }
    CHECK(products > 10'000);
}

TEST_CASE("a decimal number survives its plain notation and its parts") {
    Generator generator;
    for (int round = 0; round < 20'000; ++round) {
        const Reference reference = generator.number();
        if (!fits(reference)) continue;
        const Decimal number = decimal(scientific(reference));
        const std::string text = number.toString();
        CAPTURE(text);
        REQUIRE(text.find_first_not_of("-.0123456789") == std::string::npos);
        REQUIRE((text.find('.') == std::string::npos || (text.back() != '0' && text.back() != '.')));
        REQUIRE(decimal(text) == number);
        REQUIRE(Decimal::fromParts(number.isNegative(), number.coefficientHigh(), number.coefficientLow(),
                                   number.exponent()) == number);
    }
}

TEST_CASE("a difference is the sum with the negated number") {
    Generator generator;
    for (int round = 0; round < 10'000; ++round) {
        const Reference a = generator.number();
        const Reference b = generator.neighbour(a);
        if (!fits(a) || !fits(b)) continue;
        const Decimal first = decimal(scientific(a));
        const Decimal second = decimal(scientific(b));
        REQUIRE(first.minus(second) == first.plus(second.negated()));
    }
}

TEST_CASE("a rounded number is at most half of its last digit away, and rounding again changes nothing") {
    Generator generator;
    for (int round = 0; round < 20'000; ++round) {
        const Reference reference = generator.number();
        if (!fits(reference)) continue;
        const Decimal number = decimal(scientific(reference));
        const int digits = generator.between(0, 40);
        CAPTURE(scientific(reference));
        CAPTURE(digits);
        const Decimal rounded = number.rounded(digits);
        REQUIRE(rounded.exponent() >= (rounded.isZero() ? 0 : -digits));
        REQUIRE(rounded.rounded(digits) == rounded);
        // The difference to a longer number may not fit, but then nothing was rounded by more than it is
        // long.
        if (const auto difference = number.minus(rounded)) {
            const Decimal half = decimal("5e-" + std::to_string(digits + 1));
            REQUIRE(*difference <= half);
            REQUIRE(*difference >= half.negated());
        }
    }
}

TEST_CASE("numbers of up to 15 digits survive the way to a binary number and back") {
    Generator generator;
    for (int round = 0; round < 20'000; ++round) {
        Reference reference = generator.number();
        reference.digits.resize(std::min<std::size_t>(reference.digits.size(), 15));
        reference = normalised(reference);
        if (!fits(reference)) continue;
        const Decimal number = decimal(scientific(reference));
        CAPTURE(scientific(reference));
        REQUIRE(Decimal::fromDouble(number.toDouble()) == number);
    }
}
