// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "history/history.h"
#include "report/figures.h"

/// \file
/// The parts of a report's page, in their order.

namespace tool {

class HtmlWriter;
struct Filter;

/// All that a page is made of.
struct Report {
    std::vector<AccountFigures> accounts;
    std::vector<InvestmentFigures> investments;
    std::vector<CurrencyFigures> currencies;
    std::vector<std::string> unread;                   ///< files that could not be read
    std::vector<FileFinding> findings;                 ///< what is to be said of the others
    std::size_t repeats = 0;                           ///< transactions that were left out
    const Filter* filter = nullptr;                    ///< by which the others were chosen
    std::vector<brackwell::Security> otherSecurities;  ///< that no holding or transaction names

    std::size_t accountCount() const noexcept { return accounts.size() + investments.size(); }
};

void writePage(HtmlWriter& html, const Report& report);

/// A table of the accounts, when there are several, with sums by currency.
void writeOverview(HtmlWriter& html, const Report& report);
/// An account: facts, plots, months. Its number is its place in the report.
void writeAccount(HtmlWriter& html, const AccountFigures& figures, std::size_t number);
/// The plot and the months of all accounts in a currency.
void writeCurrency(HtmlWriter& html, const CurrencyFigures& figures, std::size_t number);
/// An investment account: facts, holdings of the latest statement, their kinds, income. Its number is its
/// place among the investment accounts.
void writeInvestment(HtmlWriter& html, const InvestmentFigures& figures, std::size_t number);
/// The securities that no holding or transaction names.
void writeOtherSecurities(HtmlWriter& html, const Report& report);
/// All transactions of all accounts under the filter that the script drives, the newest first unless
/// another order is wanted.
void writeTransactions(HtmlWriter& html, const Report& report);

/// "2025-01-31"; "" for nothing.
std::string dayText(const std::optional<brackwell::Date>& date);

/// "2025-01-01 to 2025-01-31"; one day once, and "" for none.
std::string periodOf(const std::vector<DayFlow>& days);

/// @{
/// One of the facts of an account; nothing for an empty text.
void writeFact(HtmlWriter& html, std::string_view label, brackwell::OptionalText text);
void writeFlowFacts(HtmlWriter& html, const Flow& flow);
/// @}

/// The months and their sums as a table that is folded away.
void writeMonths(HtmlWriter& html, const std::vector<MonthFlow>& months, const std::string& currency);

}  // namespace tool
