// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// How a table is written, as the command line says.
struct CsvFormat {
    char delimiter = ',';
    char decimalMark = '.';
    bool isRaw = false;                ///< no apostrophe before what a spreadsheet might run
    bool hasDays = false;              ///< a date without a time of day is written as its day
    bool keepsDecimals = false;        ///< amounts have the decimals of the document
    bool isUnique = false;             ///< without what an earlier statement had already
    std::vector<std::string> columns;  ///< their names, in the order that is wanted; none: all
};

/// The format with the columns of a table.
struct CsvLayout {
    const CsvFormat& format;
    std::vector<std::size_t> places;  ///< of the columns that are wanted, in their order; none: all
};

/// Every name must be one of the table's columns.
CsvLayout layoutOf(const CsvFormat& format, std::span<const std::string_view> columns);

/// The first name that is no column of a table; nothing when all are.
std::optional<std::string> unknownColumn(std::span<const std::string> names,
                                         std::span<const std::string_view> columns);

}  // namespace tool
