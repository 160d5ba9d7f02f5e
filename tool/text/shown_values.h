// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/model.h>

#include <optional>
#include <string>

/// \file
/// Values as people are shown them.

namespace tool {

/// A number of an account, masked but for its last four characters, whatever script they are of, unless it
/// is to be shown in full. Of a number that has no more than four, nothing is shown.
std::string shownNumber(brackwell::OptionalText number, bool isFull);
/// "2024-01-31", or "2024-01-31 17:05" when it is not midnight; "" for nothing.
std::string shownDate(std::optional<brackwell::Date> date);
/// "2024-01-01 to 2024-01-31", "from 2024-01-01", "to 2024-01-31"; "" for nothing.
std::string shownPeriod(std::optional<brackwell::Date> start, std::optional<brackwell::Date> end);
/// "-12.50", "-1480" of yen: at least the decimals that amounts in the currency have.
std::string shownAmount(const brackwell::Decimal& amount, brackwell::OptionalText currency);
/// "12.50 EUR"; the amount alone where the currency is not known.
std::string withCurrency(const std::string& amount, brackwell::OptionalText currency);
/// "0.125": of units and prices, as exact as they are.
std::string shownUnits(const std::optional<brackwell::Decimal>& units);
/// "2003 [ERROR] Account not found".
std::string shownStatus(const brackwell::TvOFXStatus& status);
/// True when the institution did not do what it was asked, or said so only by a code.
bool isTrouble(const brackwell::TvOFXStatus* status);

}  // namespace tool
