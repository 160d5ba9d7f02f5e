// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bookkeeping/book.h"

namespace tool {

/// What an account has before the first of its entries.
struct OpeningBalance {
    std::string account;
    std::string commodity;
    brackwell::Decimal amount;
    std::string day;  ///< of the account's first entry or balance
};

/// Holds balances against entries, which must be sorted by day, and finds the amounts that the accounts began
/// with. A balance of a statement has in it what that statement and earlier ones list up to its day, and what
/// the account began with. Where balances disagree about that, most of them decide, and of as many the
/// earlier ones. Balances that do not hold at the end of their day get an objection.
///
/// Of accounts that a journal `knows` nothing is found out: it has more entries than these.
///
/// Takes n log n time for n entries and balances.
std::vector<OpeningBalance> settleBalances(const std::vector<BookEntry>& entries,
                                           std::vector<BookBalance>& balances,
                                           const std::function<bool(const std::string&)>& knows);

/// The objection to a balance that held before later entries of its day had come. It is no contradiction.
inline constexpr const char* kHeldEarlier = "later statements have more transactions of this day";

}  // namespace tool
