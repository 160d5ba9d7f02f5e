// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "bookkeeping/account_map.h"
#include "bookkeeping/book.h"
#include "bookkeeping/book_day.h"

/// \file
/// What is kept of the transactions of documents until they are written. A large document is mostly
/// transactions, and an entry with its texts takes many times their room; so this is what decides about order
/// and identity, and the rest is made when it is needed.

namespace tool {

/// Stands for an entry of which the first posting is that of the account it is from.
struct DraftEntry {
    static constexpr std::uint32_t kNoPartner = std::numeric_limits<std::uint32_t>::max();

    BookDay day;
    std::uint32_t account;               ///< that of the first posting, in Drafts
    std::uint32_t transaction;           ///< in the entries of the account's history
    CounterAccount counter = {};         ///< of a bank transaction
    std::uint32_t partner = kNoPartner;  ///< the draft that says the same of the other account
    bool isLeftOut = false;
    bool isJoined = false;  ///< the last posting is the first one of the partner
};
static_assert(sizeof(DraftEntry) == 24, "there may be millions");

/// Stands for a remark about a transaction, or for one that was made of something else.
struct DraftRemark {
    std::uint32_t account;
    std::uint32_t number;  ///< of the transaction like that of an entry, or in DraftLists::sayings
    bool isOfTransaction = true;
};

/// Everything that documents say of accounts.
struct DraftLists {
    std::vector<DraftEntry> entries;
    std::vector<DraftRemark> remarks;
    std::vector<BookRemark> sayings;  ///< remarks about what is no transaction
    std::vector<BookBalance> balances;
    std::vector<BookPrice> prices;
};

}  // namespace tool
