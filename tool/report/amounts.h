// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <optional>
#include <string>

#include "money/sum.h"

namespace tool {

/// "−1,234.50": as much of it as is worth showing, at least the decimals that amounts in the currency have,
/// thousands in groups, a sign of minus that cannot be overlooked.
std::string amountText(const Amount& amount, brackwell::OptionalText currency);
/// The same, with a plus when it is positive.
std::string signedAmountText(const Amount& amount, brackwell::OptionalText currency);
/// "−1,234.5": as many decimals as there are; "" for nothing. Of units and prices.
std::string numberText(const std::optional<brackwell::Decimal>& number);
/// Of sums; "not representable" for one that does not fit into a number.
std::string amountText(const Sum& sum, brackwell::OptionalText currency);
std::string signedAmountText(const Sum& sum, brackwell::OptionalText currency);

}  // namespace tool
