// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <string>
#include <string_view>

namespace tool {

/// The amount in plain notation with as many decimals as its text in the document has: "-6.40" for -6.40, for
/// "-6,40" and for "-6.40 EUR", where "1,234" that was read as 1234 has none. Where the text does not have
/// the digits of the amount, as in "1e3", it has no more decimals than it needs.
std::string withWrittenDecimals(const brackwell::Decimal& amount, std::string_view written);

}  // namespace tool
