// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "arrow_column.h"
#include "cell.h"

/// \file
/// A list of objects as columns, for whoever wants all values of a field and not the fields of an object.

namespace brackwell::python {

struct Column {
    std::string name;
    Kind kind;  ///< not object
};

class Table {
public:
    Table() = default;
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;
    virtual ~Table() = default;

    virtual std::size_t rowCount() const = 0;
    virtual const std::vector<Column>& columns() const = 0;
    /// Hands on the cells of a column from one row to before another, in their order. Needs no lock of
    /// Python.
    virtual void eachCell(std::size_t column, std::size_t begin, std::size_t end,
                          const std::function<void(const Cell&)>& take) const = 0;
    /// Appends the same cells to a column of Arrow's, without making each of them. False when one does not
    /// fit.
    virtual bool fill(std::size_t column, std::size_t begin, std::size_t end, ArrowColumn& into) const = 0;
    /// The most digits after the point that an amount of the column has.
    virtual int fractionDigits(std::size_t column) const = 0;
};

/// The columns as lists of Python's values, by name.
nb::dict columnsOf(const Table& table);

/// @{
/// The Arrow C data interface: a capsule with the stream of a table, or with its schema. Amounts are
/// decimal128 with 38 digits. Their scale is ten, or what the column's values need where that is more; what
/// does not fit then is an error of the stream, never a rounded value.
nb::object arrowStream(std::shared_ptr<const Table> table);
nb::object arrowSchema(const Table& table);
/// @}

}  // namespace brackwell::python
