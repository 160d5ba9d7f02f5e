// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investment_records.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "field.h"

namespace brackwell::python {

/// Adds an object's own currency, an attribute by the name of currency, and the columns that it has in
/// tables: who adds up amounts has to see which are in another currency than the account's.
template <class T>
void addCurrency(std::vector<Field<T>>& fields, std::optional<TransactionCurrency> (*currencyOf)(const T&),
                 const char* doc) {
    fields.push_back(field<T>("currency", currencyOf, doc));
    // Mostly no object has one, and looking for it takes long.
    const auto hasCurrency = std::make_shared<const std::function<bool(const T&)>>(
        [currencyOf](const T& object) { return currencyOf(object).has_value(); });
    const auto add = [&](const char* name, auto valueOf) {
        auto column = field<T>(
            name,
            [currencyOf, valueOf](const T& object) {
                const auto currency = currencyOf(object);
                return currency ? std::optional(valueOf(*currency)) : std::nullopt;
            },
            "");
        column.use = Use::column;
        column.condition = hasCurrency;
        fields.push_back(std::move(column));
    };
    add("currencySymbol", [](const TransactionCurrency& currency) { return currency.symbol; });
    add("currencyRate", [](const TransactionCurrency& currency) { return currency.rate; });
    add("currencyIsConverted", [](const TransactionCurrency& currency) { return currency.isConverted; });
}

}  // namespace brackwell::python
