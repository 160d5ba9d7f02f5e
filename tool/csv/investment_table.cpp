// SPDX-License-Identifier: Apache-2.0
#include "csv/investment_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <vector>

#include "console/messages.h"
#include "csv/investment_columns.h"
#include "csv/row.h"
#include "input/run.h"
#include "investments/security_lookup.h"

namespace tool {
namespace {

using namespace brackwell;

/// A document's part of the table.
struct Part {
    Run& run;
    const std::string& file;
    const OpenedDocument& document;
    const SecurityLookup& securities;
    const CsvLayout& layout;

    const Filter& filter() const noexcept { return run.options.filter; }
};

/// The rows of objects of one statement, or of no statement.
template <class Object>
void writeRows(const Part& part, const InvestmentStatement* statement, const std::vector<Object>& objects) {
    Row row(part.layout);
    for (const Object& object : objects) {
        if (!part.run.output.isGood()) return;
        row.clear();
        addFields(row, Item<Object>{part.file, statement, object, part.securities});
        row.write(part.run.output);
    }
}

void writeTransactions(const Part& part) {
    for (const InvestmentStatement& statement : part.document.investmentStatements())
        if (part.filter().takes(statement))
            writeRows(part, &statement, part.filter().transactionsOf(statement, part.securities));
}

void writePositions(const Part& part) {
    for (const InvestmentStatement& statement : part.document.investmentStatements())
        if (part.filter().takes(statement))
            writeRows(part, &statement, part.filter().positionsOf(statement, part.securities));
}

void writeSecurities(const Part& part) {
    writeRows<Security>(part, nullptr, part.filter().securitiesOf(part.document));
}

/// A kind of table.
struct CsvTable {
    TableKind kind;
    std::vector<std::string_view> (*columns)();
    void (*write)(const Part&);
};

constexpr std::array kTables = {
    CsvTable{TableKind::investments, columnNames<InvestmentTransaction>, writeTransactions},
    CsvTable{TableKind::positions, columnNames<Position>, writePositions},
    CsvTable{TableKind::securities, columnNames<Security>, writeSecurities},
};

/// Something of a file that a table does not have.
struct LeftOut {
    std::size_t count;
    std::string_view one;
    std::string_view several;
    std::string_view table;  ///< the kind of table that has it
};

/// Appends "a", "a and b" or "a, b and c", one at a time.
void appendToList(std::string& list, const std::string& text, std::size_t place, std::size_t count,
                  std::string_view last) {
    if (place > 0) list += place + 1 == count ? last : std::string_view(", ");
    list += text;
}

std::string sentenceOf(const std::vector<LeftOut>& leftOut) {
    std::string things;
    std::string tables;
    for (std::size_t i = 0; i < leftOut.size(); ++i) {
        const LeftOut& part = leftOut[i];
        const std::string_view name = part.count == 1 ? part.one : part.several;
        appendToList(things, std::to_string(part.count) + " " + std::string(name), i, leftOut.size(),
                     " and ");
        appendToList(tables, std::string(part.table), i, leftOut.size(), " or ");
    }
    const bool isOne = leftOut.size() == 1 && leftOut.front().count == 1;
    return things + (isOne ? " is" : " are") + " not in this table; use --kind " + tables + ".";
}

const CsvTable& tableOf(TableKind kind) { return *std::ranges::find(kTables, kind, &CsvTable::kind); }

}  // namespace

std::vector<std::string_view> investmentColumns(TableKind kind) { return tableOf(kind).columns(); }

bool writeInvestmentTable(Run& run) {
    const CsvTable& table = tableOf(run.options.table);
    const std::vector<std::string_view> columns = table.columns();
    const CsvLayout layout = layoutOf(run.options.csv, columns);
    Row header(layout);
    for (const std::string_view name : columns) header.add(OptionalText(name));
    header.write(run.output);
    return forEachFileWithSecurities(run, [&](const InputFile& input, const SecurityList& others) {
        for (const OpenedDocument& opened : input.file.documents()) {
            const SecurityList own(opened.securities());
            const SecurityLookup securities(own, others);
            table.write({run, input.name, opened, securities, layout});
        }
    });
}

void sayWhatIsLeftOut(Run& run, const InputFile& input) {
    const Filter& filter = run.options.filter;
    std::array counts = {LeftOut{0, "investment transaction", "investment transactions", "investments"},
                         LeftOut{0, "position", "positions", "positions"},
                         LeftOut{0, "security", "securities", "securities"}};
    for (const OpenedDocument& opened : input.file.documents()) {
        const SecurityList own(opened.securities());
        const SecurityLookup securities(own, input.file.securities());
        for (const InvestmentStatement& statement : opened.investmentStatements()) {
            if (!filter.takes(statement)) continue;
            counts[0].count += filter.transactionsOf(statement, securities).size();
            counts[1].count += filter.positionsOf(statement, securities).size();
        }
        counts[2].count += filter.securitiesOf(opened).size();
    }
    std::vector<LeftOut> leftOut;
    std::ranges::copy_if(counts, std::back_inserter(leftOut), &LeftOut::count);
    if (!leftOut.empty()) sayNotInTable(run, input.name, sentenceOf(leftOut));
}

void sayNotInTable(Run& run, const std::string& file, const std::string& sentence) {
    ++run.findings;
    if (!run.options.isQuiet) say(file, sentence);
}

}  // namespace tool
