// SPDX-License-Identifier: Apache-2.0
#include "report/amounts.h"

#include <algorithm>

#include "view/sections.h"

namespace tool {
namespace {

constexpr const char* kNotRepresentable = "not representable";

}  // namespace

std::string amountText(const brackwell::Decimal& amount) {
    std::string text = shownAmount(amount);
    const std::size_t first = amount.isNegative() ? 1 : 0;
    std::string grouped = amount.isNegative() ? "\u2212" : "";
    const std::size_t point = text.find('.');
    for (std::size_t i = first; i < point; ++i) {
        if (i > first && (point - i) % 3 == 0) grouped += ',';
        grouped += text[i];
    }
    return grouped.append(text, point);
}

std::string signedAmountText(const brackwell::Decimal& amount) {
    const bool isPositive = !amount.isNegative() && !amount.isZero();
    return (isPositive ? "+" : "") + amountText(amount);
}

std::string amountText(const Sum& sum) { return sum.value() ? amountText(*sum.value()) : kNotRepresentable; }

std::string signedAmountText(const Sum& sum) {
    return sum.value() ? signedAmountText(*sum.value()) : kNotRepresentable;
}

std::string withCurrency(const std::string& amount, const std::string& currency) {
    return currency.empty() ? amount : amount + " " + currency;
}

}  // namespace tool
