// SPDX-License-Identifier: Apache-2.0
#include "report/csv_lines.h"

#include "csv/bank_table.h"
#include "csv/investment_columns.h"
#include "history/history.h"
#include "investments/security_lookup.h"

namespace tool {
namespace {

/// Names of columns need no quotes.
std::string headerOf(const auto& columns) {
    std::string header;
    for (const std::string_view name : columns) header.append(header.empty() ? "" : ",").append(name);
    return header;
}

}  // namespace

using namespace brackwell;

std::string CsvLines::bankHeader() { return headerOf(bankColumns()); }

std::string CsvLines::investmentHeader() { return headerOf(columnNames<InvestmentTransaction>()); }

std::string_view CsvLines::of(const TvOFXStatementTransaction& transaction, const HistoryStatement& source,
                              OptionalText number, std::string_view shown) {
    row_.hide(number, shown);
    if (source_ != &source) {
        source_ = &source;
        common_.clear();
        common_.hide(number, shown);
        addStatementFields(common_, source.file, *source.statement);
    }
    row_.beginWith(common_);
    addTransactionFields(row_, transaction);
    return row_.text();
}

std::string_view CsvLines::of(const Trade& trade, OptionalText number, std::string_view shown) {
    row_.clear();
    row_.hide(number, shown);
    const SecurityLookup securities(*trade.source->securities, securities_);
    addFields(row_, Item<InvestmentTransaction>{trade.source->file, &trade.source->statement,
                                                trade.transaction, securities});
    return row_.text();
}

}  // namespace tool
