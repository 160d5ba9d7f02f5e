// SPDX-License-Identifier: Apache-2.0
#include "csv/written_decimals.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tool {
namespace {

using brackwell::Decimal;

bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

std::string digitsOf(std::string_view text) {
    std::string digits;
    for (const char c : text)
        if (isDigit(c)) digits += c;
    return digits;
}

/// How many digits follow the last mark of a text; 0 when it has no mark.
std::size_t digitsAfterMark(std::string_view text) {
    const std::size_t mark = text.find_last_of(".,");
    return mark == text.npos ? 0 : digitsOf(text.substr(mark)).size();
}

/// True when an amount that is written with these digits has so many of them after the point.
bool hasDecimals(const Decimal& amount, const Decimal& digits, std::size_t count) {
    const auto factor = Decimal::fromParts(false, 0, 1, static_cast<std::int64_t>(count));
    const auto whole = factor ? amount.times(*factor) : std::nullopt;
    return whole && (*whole == digits || *whole == digits.negated());
}

}  // namespace

std::string withWrittenDecimals(const Decimal& amount, std::string_view written) {
    std::string text = amount.toString();
    const auto digits = Decimal::fromString(digitsOf(written));
    const std::size_t count = digitsAfterMark(written);
    if (!digits || !hasDecimals(amount, *digits, count)) return text;
    const std::size_t point = text.find('.');
    const std::size_t present = point == text.npos ? 0 : text.size() - point - 1;
    if (count > 0 && present == 0) text += '.';
    if (count > present) text.append(count - present, '0');
    return text;
}

}  // namespace tool
