// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The objects of the model as JSON: each field that has a getter, under its name, in the order in which
/// the class declares its fields.

#include <brackwell/brackwell.h>

namespace tool {

class JsonWriter;
struct Filter;

// Bases
void writeMessage(JsonWriter& json, const brackwell::TvOFXMessage& message);
void writeStatus(JsonWriter& json, const brackwell::TvOFXStatus& status);
/// Any response: its class, what its wrapper said, and the fields of its class, with the accounts and
/// transactions that are wanted. Nothing for the statement of an account that is not.
void writeResponse(JsonWriter& json, const brackwell::TvOFXResponse& response, const Filter& filter);

// Accounts
/// Any account: its class and its fields.
void writeAccount(JsonWriter& json, const brackwell::TvOFXAggregate& account);
void writeBankAccount(JsonWriter& json, const brackwell::TvOFXBankAccount& account);
void writeCreditCardAccount(JsonWriter& json, const brackwell::TvOFXCreditCardAccount& account);
void writeAccountInfo(JsonWriter& json, const brackwell::TvOFXAccountInfo& record);

// Statements
/// The currency that amounts have of their own, or were converted from, if any.
void writeCurrency(JsonWriter& json, std::string_view name,
                   const std::optional<brackwell::TransactionCurrency>& currency);
void writeTransaction(JsonWriter& json, const brackwell::TvOFXStatementTransaction& transaction);

// The fields of each response class, without what all responses have.
void writeStatementFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Filter& filter);
void writeCCStatementFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Filter& filter);
void writeAccountInfoFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Filter& filter);
void writeSignOnFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Filter& filter);
void writeProfileFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Filter& filter);

}  // namespace tool
