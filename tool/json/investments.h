// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

/// \file
/// Investments as JSON: the kind by the name of its aggregate, then each field under its getter's name. A
/// word of a closed list is written as the document has it.

namespace tool {

class JsonWriter;
class SecurityLookup;
struct Filter;

/// With the transactions and positions that are wanted.
void writeInvestmentStatement(JsonWriter& json, const brackwell::InvestmentStatement& statement,
                              const Filter& filter, const SecurityLookup& securities);
void writeInvestmentTransaction(JsonWriter& json, const brackwell::InvestmentTransaction& transaction);
void writePosition(JsonWriter& json, const brackwell::Position& position);
void writeSecurity(JsonWriter& json, const brackwell::Security& security);

}  // namespace tool
