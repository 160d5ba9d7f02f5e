// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include <algorithm>
#include <array>
#include <utility>

#include "numbers/decimal_coefficient.h"
#include "numbers/decimal_digits.h"

namespace brackwell {
namespace {

/// Read as grouping marks whatever the format's own is: space, U+00A0, U+202F, ' and U+2019.
constexpr std::array<std::string_view, 5> kCommonGroupingMarks = {" ", "\xC2\xA0", "\xE2\x80\xAF", "'",
                                                                  "\xE2\x80\x99"};

/// An empty mark stands nowhere.
bool beginsWithMark(std::string_view text, std::string_view mark) noexcept {
    return !text.empty() && !mark.empty() && text.front() == mark.front() && text.starts_with(mark);
}

bool takeMark(std::string_view& text, std::string_view mark) noexcept {
    if (!beginsWithMark(text, mark)) return false;
    text.remove_prefix(mark.size());
    return true;
}

/// Takes a grouping mark off the beginning of the text, if two digits follow it.
bool takeGroupingMark(std::string_view& text, std::string_view ownMark) noexcept {
    std::string_view rest = text;
    const bool taken = takeMark(rest, ownMark) || std::ranges::any_of(kCommonGroupingMarks, [&](auto mark) {
                           return takeMark(rest, mark);
                       });
    if (!taken || !beginsWithDigits(rest, 2)) return false;
    text = rest;
    return true;
}

/// The number with at most this many digits after the point, the rest rounded half to even.
Decimal rounded(const Decimal& number, int fractionDigits) noexcept {
    const int dropped = -number.exponent() - fractionDigits;
    if (dropped <= 0) return number;
    if (dropped > Decimal::maximumDigits) return {};  // less than a tenth of the last place
    const Wide unit = powerOfTen(dropped);
    Wide quotient = coefficientOf(number) / unit;
    const Wide twiceRemainder = coefficientOf(number) % unit * 2;
    if (twiceRemainder > unit || (twiceRemainder == unit && quotient % 2 != 0)) ++quotient;
    return *decimalFrom(number.isNegative(), quotient, -fractionDigits);
}

/// The digits of a number in the lengths that a format asks for.
struct Digits {
    std::string integer;
    std::string fraction;

    bool areZero() const noexcept {
        return integer.find_first_not_of('0') == std::string::npos &&
               fraction.find_first_not_of('0') == std::string::npos;
    }
};

/// Where a format's smallest and largest number of digits contradict each other, the smallest holds.
Digits digitsFor(const Decimal& number, const NumberFormat& format) {
    const int fewestFraction = std::max(format.minimumFractionDigits, 0);
    const int mostFraction = std::max(format.maximumFractionDigits, fewestFraction);
    const auto fewestInteger = static_cast<std::size_t>(std::max(format.minimumIntegerDigits, 0));
    const auto mostInteger =
        std::max(static_cast<std::size_t>(std::max(format.maximumIntegerDigits, 0)), fewestInteger);

    const Decimal written = rounded(number, mostFraction);
    const std::string plain = (written.isNegative() ? written.negated() : written).toString();
    const std::size_t point = std::min(plain.find('.'), plain.size());
    Digits digits;
    digits.integer = plain.substr(0, point);
    digits.integer.erase(0, digits.integer.size() - std::min(digits.integer.size(), mostInteger));
    digits.integer.erase(0, std::min(digits.integer.find_first_not_of('0'), digits.integer.size()));
    if (digits.integer.size() < fewestInteger)
        digits.integer.insert(0, fewestInteger - digits.integer.size(), '0');
    if (point < plain.size()) digits.fraction = plain.substr(point + 1);
    digits.fraction.resize(std::max(digits.fraction.size(), static_cast<std::size_t>(fewestFraction)), '0');
    if (digits.integer.empty() && digits.fraction.empty()) digits.integer.assign(1, '0');
    return digits;
}

void appendGrouped(std::string& text, std::string_view digits, std::string_view separator) {
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) text += separator;
        text += digits[i];
    }
}

}  // namespace

NumberFormatter::~NumberFormatter() = default;

DecimalNumberFormatter::DecimalNumberFormatter(NumberFormat format) : format_(std::move(format)) {}

std::optional<Decimal> DecimalNumberFormatter::numberFromString(std::string_view text) const {
    text = trimWhiteSpace(text);
    const bool negative = takeSign(text, Signs::withMinusSign);
    if (!beginsWithDigits(text, 1)) text = trimWhiteSpace(text);  // what stands between sign and digits

    DecimalDigits digits;
    // The decimal separator is looked for first: it wins over a grouping mark that looks the same.
    bool mayGroup = digits.takeInteger(text);
    bool separated = takeMark(text, format_.decimalSeparator);
    while (!separated && mayGroup) {
        mayGroup = takeGroupingMark(text, format_.groupingSeparator) && digits.takeInteger(text);
        separated = takeMark(text, format_.decimalSeparator);
    }
    if (separated) digits.takeFraction(text);
    digits.takeExponent(text, Signs::withMinusSign);
    if (!text.empty()) return std::nullopt;
    return digits.number(negative);
}

std::optional<std::string> DecimalNumberFormatter::stringFromNumber(const Decimal& number) const {
    const Digits digits = digitsFor(number, format_);
    if (!digits.fraction.empty() && format_.decimalSeparator.empty()) return std::nullopt;
    std::string text;
    if (number.isNegative() && !digits.areZero()) text += '-';
    // A separator that also is the decimal one would make another number of it.
    const bool grouped =
        format_.usesGroupingSeparator && format_.groupingSeparator != format_.decimalSeparator;
    appendGrouped(text, digits.integer, grouped ? std::string_view(format_.groupingSeparator) : "");
    if (!digits.fraction.empty()) text += format_.decimalSeparator + digits.fraction;
    return text;
}

}  // namespace brackwell
