// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "history/investment_history.h"
#include "investments/facts.h"
#include "report/account_name.h"
#include "report/flow.h"

/// \file
/// What a report says of investment accounts, worked out before anything is written.

namespace tool {

class History;
struct Options;

/// A transaction of an investment account, with what is asked of it again and again.
struct Trade {
    const InvestmentSource* source;  ///< the statement that has it
    brackwell::InvestmentTransaction transaction;
    std::optional<brackwell::Security> security;
    std::optional<brackwell::Date> date;
    std::optional<Amount> amount;  ///< in the account's currency
    bool movesMoney;               ///< in or out; what buys or sells securities only changes what is held
};

/// A position of an investment account.
struct Holding {
    brackwell::Position position;
    std::optional<brackwell::Security> security;
    std::optional<Amount> value;  ///< in the account's currency
};

/// What an account received from its securities.
struct Income {
    std::vector<MonthFlow> months;  ///< in order
    Sum withoutDate;
    std::size_t undated = 0;  ///< how many these are
    std::size_t unknown = 0;  ///< how many have no amount in the account's currency
};

/// What a report says of an investment account.
struct InvestmentFigures {
    const InvestmentAccount* account = nullptr;
    brackwell::InvestmentStatement latest;  ///< of the holdings and balances
    AccountName name;                       ///< no other account of the report has the same
    std::string number;                     ///< masked, unless it is to be shown in full
    std::optional<Amount> worth;
    std::vector<Holding> holdings;  ///< of the latest statement, those that are wanted
    std::vector<Trade> trades;      ///< those that are wanted, each once, in the order of the files
    Flow flow;
    std::vector<DayFlow> days;
    std::vector<MonthFlow> months;
    Income income;
};

/// A security is looked up in the document that names it, then among all.
std::vector<InvestmentFigures> investmentFiguresOf(const History& history, const brackwell::SecurityList& all,
                                                   const Options& options);

}  // namespace tool
