// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <string>
#include <string_view>

#include "csv/row.h"
#include "report/investment_figures.h"

namespace tool {

struct HistoryStatement;

/// Transactions as lines of the tables that `brackwell csv --currencies` and `--kind investments` write, for
/// a page that saves those that it shows. An account's number is not in them but as the page shows it.
class CsvLines {
public:
    /// The securities of all files, which have to live as long as this.
    explicit CsvLines(const brackwell::SecurityList& securities) noexcept : securities_(securities) {}
    CsvLines(const CsvLines&) = delete;
    CsvLines& operator=(const CsvLines&) = delete;

    /// @{
    /// The names of the columns.
    static std::string bankHeader();
    static std::string investmentHeader();
    /// @}

    /// @{
    /// A line, valid until the next; the number of the account is given in full and as it is shown.
    std::string_view of(const brackwell::TvOFXStatementTransaction& transaction,
                        const HistoryStatement& source, brackwell::OptionalText number,
                        std::string_view shown);
    std::string_view of(const Trade& trade, brackwell::OptionalText number, std::string_view shown);
    /// @}

private:
    const brackwell::SecurityList& securities_;
    CsvFormat format_;
    CsvLayout layout_{format_, {}};
    Row row_{layout_};
    Row common_{layout_};                       ///< the fields of the statement that the last line was of
    const HistoryStatement* source_ = nullptr;  ///< that statement
};

}  // namespace tool
