// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>

#include <algorithm>

#include "lines.h"
#include "target.h"

/// \file
/// Lines: decimal separator, grouping separator, four limits on digits, a number; then a text to read.

namespace brackwell::fuzz {
namespace {

bool isOneOf(std::string_view separator, std::string_view characters) {
    return separator.size() == 1 && characters.find(separator) != std::string_view::npos;
}

/// True when what is written with these separators can be understood at all.
bool isSensible(const NumberFormat& format) {
    return isOneOf(format.decimalSeparator, ".,;:_") && isOneOf(format.groupingSeparator, ".,;:_' ") &&
           format.decimalSeparator != format.groupingSeparator;
}

/// As many digits as a decimal can have on either side.
NumberFormat withoutLimits(NumberFormat format) {
    format.minimumFractionDigits = 0;
    format.maximumFractionDigits = 200;
    format.minimumIntegerDigits = std::clamp(format.minimumIntegerDigits, 1, 200);
    format.maximumIntegerDigits = 200;
    return format;
}

void requireSound(const Decimal& number, const NumberFormat& format) {
    require(Decimal::fromString(number.toString()) == number, "a decimal's text reads back equal");
    require(Decimal::fromParts(number.isNegative(), number.coefficientHigh(), number.coefficientLow(),
                               number.exponent()) == number,
            "a decimal is made of its parts");
    require(number.negated().negated() == number, "two changes of the sign are none");
    require(number.plus(number.negated()) == Decimal(), "a number and its negative make zero");
    require(number.plus(Decimal()) == number, "zero adds nothing");

    DecimalNumberFormatter(format).stringFromNumber(number);
    const DecimalNumberFormatter exact(withoutLimits(format));
    const std::optional<std::string> text = exact.stringFromNumber(number);
    if (isSensible(format))
        require(text && exact.numberFromString(*text) == number, "a written number reads back equal");
}

void requireSum(const Decimal& a, const Decimal& b) {
    require((a < b) == (b > a) && (a == b) == (b == a), "order is the same from both sides");
    const std::optional<Decimal> sum = a.plus(b);
    require(sum == b.plus(a), "the order of summands is free");
    if (!sum) return;
    require((*sum <=> a) == (b <=> Decimal()), "a sum is on the side of the second summand");
    const std::optional<Decimal> difference = sum->plus(b.negated());
    require(difference == a, "a sum is undone by the negative");
}

int limit(std::string_view text) {
    return static_cast<int>(std::clamp<std::int64_t>(leadingInteger(text), -2, 400));
}

NumberFormat takeFormat(Lines& lines) {
    NumberFormat format;
    format.decimalSeparator = lines.next();
    format.groupingSeparator = lines.next();
    format.usesGroupingSeparator = !format.groupingSeparator.empty();
    format.minimumFractionDigits = limit(lines.next());
    format.maximumFractionDigits = limit(lines.next());
    format.minimumIntegerDigits = limit(lines.next());
    format.maximumIntegerDigits = limit(lines.next());
    return format;
}

}  // namespace

void tryBytes(std::string_view bytes) {
    Lines lines(bytes);
    const NumberFormat format = takeFormat(lines);
    const std::optional<Decimal> first = Decimal::fromString(lines.next());
    const std::string_view text = lines.rest();
    const std::optional<Decimal> second = Decimal::fromString(text);
    static const TvOFXHelper helper;
    const std::optional<Decimal> amount = helper.decimalNumberFromOFXAmountString(text);
    require(amount == helper.ofxAmountFormatter().numberFromString(text), "amounts are read as numbers");
    if (second) require(amount == second, "an exact number is an amount");
    for (const auto& number : {first, second, amount, DecimalNumberFormatter(format).numberFromString(text)})
        if (number) requireSound(*number, format);
    if (first && second) requireSum(*first, *second);
    helper.ofxAmountStringFromDecimalNumber(amount);
}

}  // namespace brackwell::fuzz
