// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "money/sum.h"

/// \file
/// What all commands say of investments alike: when, how much, what it is called, what it is worth.

namespace tool {

/// "Bought stock", "Reinvested dividend", "Transferred in": what a transaction is, in plain words.
std::string kindInWords(const brackwell::InvestmentTransaction& transaction);

/// @{
/// "Stocks", "Funds": the securities of a kind.
std::string_view kindInWords(brackwell::PositionKind kind) noexcept;
std::string_view kindInWords(brackwell::SecurityKind kind) noexcept;
/// @}

/// The day of the trade; where there is none, that of the settlement, or on which a bank transaction was
/// posted.
std::optional<brackwell::Date> dateOf(const brackwell::InvestmentTransaction& transaction);
/// The total, or what a bank transaction comes to.
std::optional<brackwell::Decimal> amountOf(const brackwell::InvestmentTransaction& transaction);
/// The institution's identifier, of a bank transaction its own.
brackwell::OptionalText identifierOf(const brackwell::InvestmentTransaction& transaction);
/// The memo, of a bank transaction its own.
brackwell::OptionalText memoOf(const brackwell::InvestmentTransaction& transaction);

/// The currency of the amount; of a bank transaction its own.
std::optional<brackwell::TransactionCurrency> currencyOf(const brackwell::InvestmentTransaction& transaction);

/// @{
/// A position's market value, and what a transaction comes to, in the currency of the statement; nothing when
/// it is in another one, whose rate is not given.
std::optional<Amount> valueOf(const brackwell::Position& position,
                              const brackwell::InvestmentStatement& statement);
std::optional<Amount> amountOf(const brackwell::InvestmentTransaction& transaction,
                               const brackwell::InvestmentStatement& statement);
/// @}

/// What the positions of a statement are worth together, in its currency.
struct Worth {
    Sum positions;
    std::size_t withoutValue = 0;  ///< positions of which it is not known

    void add(const std::optional<Amount>& value) {
        if (value)
            positions.add(*value);
        else
            ++withoutValue;
    }
};

Worth worthOf(const brackwell::InvestmentStatement& statement);

/// What an account is worth: positions and available cash (AVAILCASH), or, without any of these, the balance
/// of a retirement plan. Nothing when nothing is known, or not of all positions. A margin balance is not in
/// it: documents do not say whether the available cash has it already.
std::optional<Amount> totalWorthOf(const brackwell::InvestmentStatement& statement);

/// "1 of 3 positions has no value in USD": why that is not known; "" where it is.
std::string whyNoWorth(const brackwell::InvestmentStatement& statement);

/// What a security is called: its name, else its ticker, else the identifier that is given.
std::string_view nameOf(const std::optional<brackwell::Security>& security,
                        brackwell::OptionalText identifier) noexcept;

}  // namespace tool
