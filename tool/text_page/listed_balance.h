// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <string>

namespace tool {

/// A balance of a list as its kind asks for: "4.9 %", "800.10 EUR", with the currency when it is not the
/// statement's.
std::string shownBalance(const brackwell::ListedBalance& balance, brackwell::OptionalText statementCurrency);

}  // namespace tool
