// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investment_records.h>

#include <optional>
#include <string>
#include <vector>

#include "field.h"

namespace brackwell::python {

/// Adds an object's own currency, an attribute by the name of currency, and the columns that it has in
/// tables: who adds up amounts has to see which are in another currency than the account's.
template <class T>
void addCurrency(std::vector<Field<T>>& fields, std::optional<TransactionCurrency> (*currencyOf)(const T&),
                 const char* doc) {
    fields.push_back(field<T>("currency", currencyOf, doc));
    fields.push_back(field<T>(
                         "currencySymbol",
                         [currencyOf](const T& object) {
                             const auto currency = currencyOf(object);
                             return currency ? std::optional(currency->symbol) : std::nullopt;
                         },
                         "")
                         .with(Use::column));
    fields.push_back(field<T>(
                         "currencyRate",
                         [currencyOf](const T& object) {
                             const auto currency = currencyOf(object);
                             return currency ? currency->rate : std::nullopt;
                         },
                         "")
                         .with(Use::column));
    fields.push_back(field<T>(
                         "currencyIsConverted",
                         [currencyOf](const T& object) {
                             const auto currency = currencyOf(object);
                             return currency ? std::optional(currency->isConverted) : std::nullopt;
                         },
                         "")
                         .with(Use::column));
}

}  // namespace brackwell::python
