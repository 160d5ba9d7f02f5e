// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "csv/format.h"
#include "filter/filter.h"

namespace tool {

class Output;
class Row;
struct Options;

/// The columns of the table of bank and card transactions. The last three, of currencies, are in it only
/// where they are asked for.
std::span<const std::string_view> bankColumns() noexcept;

/// The fields that are the same in all rows of a statement, with which each begins.
void addStatementFields(Row& row, const std::string& file, const brackwell::TvOFXAccountStatement& statement);

/// The other fields of a transaction's row, those of currencies among them.
void addTransactionFields(Row& row, const brackwell::TvOFXStatementTransaction& transaction);

/// The table of the transactions of bank and card statements.
class BankTable {
public:
    /// Writes the header. The options and the output have to live as long as the table.
    BankTable(const Options& options, Output& output);
    BankTable(const BankTable&) = delete;
    BankTable& operator=(const BankTable&) = delete;

    /// Writes these transactions of a statement. Returns how many of them have amounts in another currency,
    /// which the table does not say.
    std::size_t write(const std::string& file, const brackwell::TvOFXAccountStatement& statement,
                      const Filter::Transactions& transactions) const;

private:
    Output& output_;
    bool hasCurrencies_;
    CsvLayout layout_;
};

}  // namespace tool
