// SPDX-License-Identifier: Apache-2.0
#include "money/amount.h"

#include <cstddef>
#include <string>

namespace tool {

using brackwell::Decimal;

Decimal Amount::shown() const {
    const std::string text = exact.toString();
    const std::size_t point = text.find('.');
    if (point == text.npos || places == kAllPlaces) return exact;
    const std::size_t end = point + 1 + static_cast<std::size_t>(places);
    if (end >= text.size()) return exact;
    const auto kept = Decimal::fromString(text.substr(0, places == 0 ? point : end));
    if (!kept) return exact;
    const auto step = Decimal::fromParts(exact.isNegative(), 0, 1, -places);
    const bool isUp = text[end] >= '5';
    return isUp && step ? kept->plus(*step).value_or(*kept) : *kept;
}

}  // namespace tool
