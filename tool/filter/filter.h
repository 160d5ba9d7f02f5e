// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

#include <optional>
#include <string>
#include <vector>

namespace tool {

/// The order of a statement's transactions.
enum class Order : unsigned char {
    document,
    date,    ///< earliest first
    amount,  ///< least first, so that what was spent most stands at the top
};

/// Which accounts and transactions a command works with, and in which order; all of them, in the order
/// of the document, unless something is set.
struct Filter {
    using Transactions = std::vector<const brackwell::TvOFXStatementTransaction*>;

    std::optional<brackwell::Date> since;   ///< posted at this moment or later
    std::optional<brackwell::Date> before;  ///< posted before this moment
    std::vector<std::string> accounts;      ///< whole numbers or their ends; none: every account
    std::vector<std::string> words;         ///< in folded case; each must occur in a transaction
    Order order = Order::document;

    /// True when an account of this number is wanted; one without a number only when all are.
    bool takesAccount(brackwell::OptionalText number) const noexcept;
    /// True when the statement's account is wanted.
    bool takes(const brackwell::TvOFXAccountStatement& statement) const noexcept;

    /// The transactions of a statement that are wanted, in the order that is wanted. Those without a
    /// date are not wanted where dates are asked for, and stand last in the order of dates; likewise
    /// those without an amount.
    Transactions transactionsOf(const brackwell::TvOFXAccountStatement& statement) const;
};

}  // namespace tool
