// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "report/figures.h"

/// \file
/// The parts of a report's page, in their order.

namespace tool {

class InvestmentHistory;
class Markup;
struct Filter;

/// All that a page is made of.
struct Report {
    std::vector<AccountFigures> accounts;
    std::vector<CurrencyFigures> currencies;
    std::vector<std::string> unread;    ///< files that could not be read
    std::vector<FileFinding> findings;  ///< what is to be said of the others
    std::size_t repeats = 0;            ///< transactions that were left out
    const Filter* filter = nullptr;     ///< by which the others were chosen
    const InvestmentHistory* investments = nullptr;
    bool showsFullNumbers = false;
};

void writePage(Markup& markup, const Report& report);

/// A table of the accounts, when there are several, with sums by currency.
void writeOverview(Markup& markup, const Report& report);
/// An account: facts, plots, months. Its number is its place in the report.
void writeAccount(Markup& markup, const AccountFigures& figures, std::size_t number);
/// The plot and the months of all accounts in a currency.
void writeCurrency(Markup& markup, const CurrencyFigures& figures, std::size_t number);
/// All transactions of all accounts under the filter that the script drives, the newest first unless
/// another order is wanted.
void writeTransactions(Markup& markup, const Report& report);

/// The investment accounts: holdings of the latest statement, their kinds, transactions and income.
void writeInvestments(Markup& markup, const Report& report);

/// "2025-01-31"; "" for nothing.
std::string dayText(const std::optional<brackwell::Date>& date);

/// The months and their sums as a table that is folded away.
void writeMonths(Markup& markup, const std::vector<MonthFlow>& months, const std::string& currency);

}  // namespace tool
