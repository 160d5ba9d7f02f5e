// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool {

/// How many transactions, or accounts, are compared with one at most: enough for what people have alike, and
/// a limit to the time that a hostile document can take.
inline constexpr std::size_t kMostCompared = 64;

/// Finds the transactions of one account that an earlier statement of it had already: those that the
/// library calls equal, if besides
///   - their amounts are the same, and in the same currency, or both have none; and
///   - their FITIDs are the same, or one has no FITID and the dates posted are the same, or both have none.
/// The library skips what one of two transactions lacks, so to it one without fields equals every other;
/// nobody means that when he says that he has it twice.
///
/// Transactions of one statement are never the same as each other: a list with two coffees is about two
/// coffees. So each transaction of a statement is matched with one of those before it at most, and the
/// other way round.
///
/// Time is n log n on any transactions: of those that have amount and date in common but not their FITID,
/// at most kMostCompared are compared with one of another statement.
class Repeats {
public:
    using Transaction = brackwell::TvOFXStatementTransaction;

    /// `currency` is that of the account.
    explicit Repeats(std::string currency) : currency_(std::move(currency)) {}

    /// What comes from now on stands in another statement, of so many transactions.
    void beginStatement(std::size_t transactions);

    /// The number of the transaction that this one repeats. When there is none, `number` itself is returned,
    /// and the transaction stands for all that repeat it in later statements; it must live as long as this.
    std::uint32_t add(const Transaction& transaction, std::uint32_t number);

private:
    /// A transaction that repeats none.
    struct Original {
        const Transaction* transaction;
        std::uint32_t number;
        std::uint32_t matchedIn;  ///< the statement that had its last match
    };
    /// Originals that have something in common. Those that were matched in this statement go in front.
    struct Bucket {
        std::vector<std::uint32_t> places;  ///< in originals_
        std::size_t matched = 0;
        std::uint32_t statement = 0;
    };
    template <class Second>
    using Index = std::map<std::pair<std::optional<brackwell::Decimal>, Second>, Bucket>;
    using DateIndex = Index<std::optional<brackwell::Date>>;

    void enter(std::uint32_t place);
    Original* findEqual(const Transaction& transaction);
    template <class Second>
    Original* findEqualIn(Index<Second>& index, const Transaction& transaction, Second second);
    Original* findEqualIn(Bucket& bucket, const Transaction& transaction);
    bool areSame(const Transaction& a, const Transaction& b) const;

    std::string currency_;
    std::vector<Original> originals_;
    std::size_t entered_ = 0;  ///< how many of these are in the indexes: those of earlier statements
    std::uint32_t statement_ = 0;
    Index<std::string_view> withIdentifier_;  ///< by amount and FITID
    DateIndex datedWithIdentifier_;           ///< the same by amount and date
    DateIndex datedWithoutIdentifier_;
};

}  // namespace tool
