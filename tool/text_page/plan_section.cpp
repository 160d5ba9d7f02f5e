// SPDX-License-Identifier: Apache-2.0
#include "text_page/plan_section.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/shown_values.h"
#include "text/visible_text.h"
#include "text_page/listed_balance.h"
#include "text_page/table.h"
#include "text_page/text_page.h"

namespace tool {
namespace {

using namespace brackwell;

using Rows = std::vector<Table::Row>;

bool isCapital(char c) noexcept { return c >= 'A' && c <= 'Z'; }

/// "otherVested" as "other vested", "planID" as "plan ID".
std::string inWords(std::string_view getter) {
    std::string words;
    for (std::size_t i = 0; i < getter.size(); ++i) {
        const char c = getter[i];
        const bool isAbbreviation = isCapital(c) && (i + 1 == getter.size() || isCapital(getter[i + 1]));
        if (isCapital(c) && !isCapital(getter[i - 1])) words += ' ';
        words += isCapital(c) && !isAbbreviation ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return words;
}

constexpr std::array<std::string_view, 3> kPercentages = {"preTaxDeferral", "afterTaxDeferral", "rate"};
constexpr std::array<std::string_view, 2> kCounts = {"initialPayments", "remainingPayments"};

template <std::size_t Count>
bool isOneOf(const std::array<std::string_view, Count>& names, std::string_view name) noexcept {
    return std::ranges::find(names, name) != names.end();
}

/// All numbers of a plan are money but for some.
std::string valueText(const InvestmentField& field, OptionalText currency) {
    if (field.date) return shownDate(field.date);
    if (!field.amount) return visibleText(field.text);
    if (field.name.ends_with("Percent") || isOneOf(kPercentages, field.name))
        return field.amount->toString() + " %";
    return isOneOf(kCounts, field.name) ? field.amount->toString() : shownAmount(*field.amount, currency);
}

/// A row for each field; adding one to the library adds it here.
void addFields(Rows& rows, const std::string& part, const InvestmentRecord& record, OptionalText currency) {
    for (const InvestmentField& field : record.fields())
        rows.push_back({part, inWords(field.name), valueText(field, currency)});
}

void addAmounts(Rows& rows, const std::string& part, const std::optional<Amounts401k>& amounts,
                OptionalText currency) {
    if (!amounts) return;
    addFields(rows, part, *amounts, currency);
    for (const ListedBalance& balance : amounts->listed())
        rows.push_back(
            {part, visibleText(balance.name().value_or("")), visibleText(shownBalance(balance, currency))});
}

std::string titleOf(const Period401k& period) {
    if (period.elementName() == "YEARTODATE") return "Year to date";
    return period.elementName() == "PERIODTODATE" ? "Period to date" : "Inception to date";
}

void addPeriod(Rows& rows, const Period401k& period, OptionalText currency) {
    const std::string title = titleOf(period);
    addFields(rows, title, period, currency);
    addAmounts(rows, title + ", contributions", period.contributions(), currency);
    addAmounts(rows, title + ", withdrawals", period.withdrawals(), currency);
    addAmounts(rows, title + ", earnings", period.earnings(), currency);
}

void addPlan(Rows& rows, const Plan401k& plan, OptionalText currency) {
    addFields(rows, "Plan", plan, currency);
    for (const Loan401k& loan : plan.loans()) addFields(rows, "Loan", loan, currency);
    for (const Period401k& period : plan.periods()) addPeriod(rows, period, currency);
}

}  // namespace

void showPlan(TextPage& page, const InvestmentStatement& statement) {
    Rows rows;
    if (const auto plan = statement.plan401k()) addPlan(rows, *plan, statement.currency());
    addAmounts(rows, "Balance", statement.balance401k(), statement.currency());
    if (rows.empty()) return;
    Table table({{"Retirement plan", Column::Kind::text, 8, 3},
                 {"", Column::Kind::text, 8, 2},
                 {"", Column::Kind::text, 8, 4}});
    for (const Table::Row& row : rows) table.measure(row);
    table.fit(page.width());
    page.emptyLine();
    table.writeTitles(page);
    for (const Table::Row& row : rows) table.writeRow(page, row);
}

}  // namespace tool
