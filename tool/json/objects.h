// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The objects of the model as JSON: each field that has a getter, under its name, in the order in which
/// the class declares its fields.

#include <brackwell/brackwell.h>

namespace tool {

class JsonWriter;
class ListedAccounts;
struct Filter;

// Bases
void writeMessage(JsonWriter& json, const brackwell::TvOFXMessage& message);
void writeStatus(JsonWriter& json, const brackwell::TvOFXStatus& status);
/// What is asked of a document besides its responses.
struct Choice {
    const Filter& filter;
    const ListedAccounts& listed;
};
/// Any response: its class, what its wrapper said, and the fields of its class, with the accounts and
/// transactions that are wanted. Nothing for the statement of an account that is not.
void writeResponse(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);

// Accounts
/// Any account: its class and its fields.
void writeAccount(JsonWriter& json, const brackwell::TvOFXAggregate& account);
void writeBankAccount(JsonWriter& json, const brackwell::TvOFXBankAccount& account);
void writeCreditCardAccount(JsonWriter& json, const brackwell::TvOFXCreditCardAccount& account);
void writeInvestmentAccount(JsonWriter& json, const brackwell::TvOFXInvestmentAccount& account);
/// The record of an account list, with all its blocks.
void writeAccountInfo(JsonWriter& json, const brackwell::ListedAccount& account);

// Statements
/// The currency that amounts have of their own, or were converted from, if any.
void writeCurrency(JsonWriter& json, std::string_view name,
                   const std::optional<brackwell::TransactionCurrency>& currency);
void writeTransaction(JsonWriter& json, const brackwell::TvOFXStatementTransaction& transaction);

// The fields of each response class, without what all responses have.
void writeStatementFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);
void writeCCStatementFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);
void writeAccountInfoFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);
void writeSignOnFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);
void writeProfileFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);

}  // namespace tool
