// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <optional>
#include <string>

#include "money/amount.h"

/// \file
/// Amounts that a transaction or a position states in a currency of its own.

namespace tool {

/// True for amounts in another currency than the statement's.
bool isForeign(const std::optional<brackwell::TransactionCurrency>& currency,
               brackwell::OptionalText statementCurrency) noexcept;

/// How many decimals an amount in a currency has (ISO 4217); two where the currency is not known.
int decimalsOf(brackwell::OptionalText currency) noexcept;

/// The amount in the currency of the statement; nothing when it is in another one, whose rate is not given.
std::optional<Amount> inStatementCurrency(const std::optional<brackwell::Decimal>& amount,
                                          const std::optional<brackwell::TransactionCurrency>& currency,
                                          brackwell::OptionalText statementCurrency);

/// The same of what a bank or card transaction comes to.
std::optional<Amount> amountIn(const brackwell::TvOFXStatementTransaction& transaction,
                               brackwell::OptionalText statementCurrency);

/// The currency of amounts as they are written, where it is not the statement's; "" where it is.
std::string foreignSymbol(const std::optional<brackwell::TransactionCurrency>& currency,
                          brackwell::OptionalText statementCurrency);

}  // namespace tool
