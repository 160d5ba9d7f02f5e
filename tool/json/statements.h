// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <optional>
#include <string_view>

#include "json/choice.h"

namespace tool {

class JsonWriter;

/// The currency that amounts have of their own, or were converted from, if any.
void writeCurrency(JsonWriter& json, std::string_view name,
                   const std::optional<brackwell::TransactionCurrency>& currency);
void writeTransaction(JsonWriter& json, const brackwell::TvOFXStatementTransaction& transaction);

/// @{
/// The fields of a statement, without what all responses have.
void writeStatementFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);
void writeCCStatementFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);
/// @}

}  // namespace tool
