// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace tool {

struct AccountHistory;

/// How many transactions, or accounts, are compared with one at most: enough for what people have alike, and
/// a limit to the time that a hostile document can take.
inline constexpr std::size_t kMostCompared = 64;

/// Finds the transactions of an account that an earlier statement of it had already, and notes that in its
/// entries. Those are the same that the library calls equal, if besides
///   - their amounts are the same, and in the same currency, or both have none; and
///   - their FITIDs are the same, or one has no FITID and the dates posted are the same, or both have none.
/// The library skips what one of two transactions lacks, so to it one without fields equals every other;
/// nobody means that when he says that he has it twice.
///
/// Transactions of one statement are never the same as each other: a list with two coffees is about two
/// coffees. So each transaction of a statement is matched with one of those before it at most, and the
/// other way round. A transaction that repeats none stands for all that repeat it in later statements.
///
/// Time is n log n on any transactions: of those that have amount and date in common but not their FITID,
/// at most kMostCompared are compared with one of another statement.
void noteRepeats(AccountHistory& account);

}  // namespace tool
