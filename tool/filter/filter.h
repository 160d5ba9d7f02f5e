// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brackwell {
class OpenedDocument;
struct ListedAccount;
}  // namespace brackwell

namespace tool {

class SecurityLookup;

/// The order of a statement's transactions.
enum class Order : unsigned char {
    document,
    date,    ///< earliest first
    amount,  ///< least first, so that what was spent most stands at the top
};

/// Whether the first comes before the second; what is absent comes last.
template <class Value>
bool comesBefore(const std::optional<Value>& first, const std::optional<Value>& second) noexcept {
    return first && (!second || *first < *second);
}

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
    /// @{
    /// True when the statement's account is wanted.
    bool takes(const brackwell::TvOFXAccountStatement& statement) const noexcept;
    bool takes(const brackwell::InvestmentStatement& statement) const;
    /// @}
    /// The record of an account list with the accounts that are wanted; nothing when it has none of them.
    std::optional<brackwell::ListedAccount> chosenOf(const brackwell::ListedAccount& listed) const;
    /// True when a transaction of this date is wanted.
    bool takesDate(const std::optional<brackwell::Date>& date) const noexcept;

    /// True when an investment transaction is wanted, whatever its account.
    bool takes(const brackwell::InvestmentTransaction& transaction, const SecurityLookup& securities) const;

    /// True when not every transaction of an account is wanted.
    bool choosesTransactions() const noexcept { return since || before || !words.empty(); }
    /// What is said of a statement that has none that are wanted.
    std::string_view noTransactions() const noexcept {
        return choosesTransactions() ? "No transactions match the filter." : "No transactions.";
    }
    /// True when something of a document is wanted that words can be looked for in: transactions, positions
    /// or securities. The securities of other files name those that it does not describe.
    bool findsAny(const brackwell::OpenedDocument& document, const brackwell::SecurityList& others) const;

    /// The transactions of a statement that are wanted, in the order that is wanted. Those without a
    /// date are not wanted where dates are asked for, and stand last in the order of dates; likewise
    /// those without an amount.
    Transactions transactionsOf(const brackwell::TvOFXAccountStatement& statement) const;
    /// The same of an investment statement: its dates are those of the trade, its amounts the totals, and
    /// words are looked for in the security's name and ticker, too.
    std::vector<brackwell::InvestmentTransaction> transactionsOf(
        const brackwell::InvestmentStatement& statement, const SecurityLookup& securities) const;
    /// The positions in which all words occur. No date is asked of them; they are sorted by the date of their
    /// price and by market value.
    std::vector<brackwell::Position> positionsOf(const brackwell::InvestmentStatement& statement,
                                                 const SecurityLookup& securities) const;
    /// The securities of a document in which all words occur, sorted by the date of their price and by price.
    /// A security is of no account: where accounts are asked for, those are wanted that stand in a document
    /// with a statement of one of them.
    std::vector<brackwell::Security> securitiesOf(const brackwell::OpenedDocument& document) const;
};

}  // namespace tool
