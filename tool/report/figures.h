// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "report/account_name.h"
#include "report/balance_course.h"
#include "report/investment_figures.h"

/// \file
/// What a report says of accounts and currencies, worked out before anything is written.

namespace tool {

class History;
struct HistoryStatement;
struct Options;

/// What a report says of an account.
struct AccountFigures {
    const AccountHistory* history = nullptr;
    AccountName name;         ///< no other account of the report has the same
    std::string number;       ///< masked, unless it is to be shown in full
    std::string institution;  ///< "" when no file names it
    std::optional<StatedBalance> ledger;
    std::optional<StatedBalance> available;
    Transactions transactions;  ///< those that are wanted, each once, in the order of the files
    std::vector<const HistoryStatement*> sources;  ///< the statement of each of these
    Flow flow;
    std::size_t withoutDate = 0;
    std::size_t withoutAmount = 0;
    std::size_t foreign = 0;  ///< how many have an amount, but none in the account's currency
    std::vector<DayFlow> days;
    std::vector<MonthFlow> months;
    BalanceCourse balance;  ///< over all transactions, in the time that is wanted
};

/// All accounts in a currency. Amounts in different currencies are never added.
struct CurrencyFigures {
    std::string currency;
    std::vector<const AccountFigures*> accounts;
    std::vector<const InvestmentFigures*> investments;
    std::optional<Sum> balance;    ///< when it is known of all accounts; what investments are worth counts
    std::size_t transactions = 0;  ///< those that are wanted
    Flow flow;
    std::vector<MonthFlow> months;

    std::size_t count() const noexcept { return accounts.size() + investments.size(); }
};

/// The number as other commands mask it, with dots instead of asterisks.
std::string dottedNumber(brackwell::OptionalText number, bool isFull);

std::vector<AccountFigures> figuresOf(const History& history, const Options& options);

/// Makes the names of all accounts different.
void distinguishNames(std::vector<AccountFigures>& accounts, std::vector<InvestmentFigures>& investments);

/// The currencies in which there are several accounts. Accounts whose currency is not known are in none.
std::vector<CurrencyFigures> figuresByCurrency(const std::vector<AccountFigures>& accounts,
                                               const std::vector<InvestmentFigures>& investments);

}  // namespace tool
