// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include "json/choice.h"

namespace tool {

class JsonWriter;

/// Any account: its class and its fields.
void writeAccount(JsonWriter& json, const brackwell::TvOFXAggregate& account);
void writeBankAccount(JsonWriter& json, const brackwell::TvOFXBankAccount& account);
void writeCreditCardAccount(JsonWriter& json, const brackwell::TvOFXCreditCardAccount& account);
void writeInvestmentAccount(JsonWriter& json, const brackwell::TvOFXInvestmentAccount& account);
/// The record of an account list, with all its blocks.
void writeAccountInfo(JsonWriter& json, const brackwell::ListedAccount& account);
/// The fields of an account list, without what all responses have.
void writeAccountInfoFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);

}  // namespace tool
