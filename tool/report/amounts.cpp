// SPDX-License-Identifier: Apache-2.0
#include "report/amounts.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "text/shown_values.h"

namespace tool {
namespace {

constexpr const char* kNotRepresentable = "not representable";

/// The text of a number with a sign that cannot be overlooked, and its thousands in groups.
std::string grouped(const std::string& text) {
    const std::size_t first = text.starts_with('-') ? 1 : 0;
    std::string grouped = first == 1 ? "\u2212" : "";
    const std::size_t point = std::min(text.find('.'), text.size());
    for (std::size_t i = first; i < point; ++i) {
        if (i > first && (point - i) % 3 == 0) grouped += ',';
        grouped += text[i];
    }
    return grouped.append(text, point);
}

}  // namespace

std::string amountText(const Amount& amount, brackwell::OptionalText currency) {
    return grouped(shownAmount(amount.shown(), currency));
}

std::string numberText(const std::optional<brackwell::Decimal>& number) {
    return number ? grouped(number->toString()) : std::string();
}

std::string signedAmountText(const Amount& amount, brackwell::OptionalText currency) {
    const brackwell::Decimal shown = amount.shown();
    const bool isPositive = !shown.isNegative() && !shown.isZero();
    return (isPositive ? "+" : "") + amountText(shown, currency);
}

std::string amountText(const Sum& sum, brackwell::OptionalText currency) {
    return sum.value() ? amountText(*sum.amount(), currency) : kNotRepresentable;
}

std::string signedAmountText(const Sum& sum, brackwell::OptionalText currency) {
    return sum.value() ? signedAmountText(*sum.amount(), currency) : kNotRepresentable;
}

}  // namespace tool
