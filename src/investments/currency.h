// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <cstddef>
#include <optional>

#include "investments/field_table.h"

namespace brackwell::investments {

/// The rows that make up a currency.
struct CurrencyFields {
    consteval explicit CurrencyFields(const FieldTable& table)
        : given(table.currency("currency")),
          original(table.currency("originalCurrency")),
          symbol(table.part("currencySymbol")),
          rate(table.rate("currencyRate")) {}

    std::size_t given;     ///< CURRENCY
    std::size_t original;  ///< ORIGCURRENCY
    std::size_t symbol;
    std::size_t rate;
};

/// The currency of an object; nothing when it names neither currency nor rate.
std::optional<TransactionCurrency> currencyOf(const InvestmentRecord& object, const CurrencyFields& fields);

}  // namespace brackwell::investments
