// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "bookkeeping/book.h"
#include "bookkeeping/known_journal.h"

/// \file
/// Entries before it is known which of them a journal has already, and which two are one transfer.

namespace tool {

class AccountMap;

/// An account of documents, by what transfers call it.
struct DraftAccount {
    std::string bank;
    std::string number;  ///< "" for one that takes no part in transfers
};

/// An entry of which the first posting is that of the account it is from.
struct DraftEntry {
    BookEntry entry;
    std::size_t account = 0;  ///< in Drafts::accounts
    /// Of a bank or card account; null for others. The other parties decide what is a transfer.
    const brackwell::TvOFXStatementTransaction* transaction = nullptr;
    std::optional<std::size_t> partner;  ///< the entry that says the same of the other account
    bool isLeftOut = false;
};

/// Finds the entries that are the two ends of one transfer: one names the account of the other, and they are
/// of the same day and of opposite amounts in one currency, and no other two could be meant. Everything else
/// stays as it is.
void pairTransfers(std::vector<DraftEntry>& drafts, const std::vector<DraftAccount>& accounts);

/// Makes one entry of two that are partners, or lets the one of them that is not in a journal end in the
/// account of transfers, where its partner ends, too. Entries that are not needed are left out.
void joinTransfers(std::vector<DraftEntry>& drafts, const AccountMap& map);

/// Leaves out what a journal has. Returns how many entries it has with an identifier, but with other texts or
/// on another day.
std::size_t leaveOutKnown(std::vector<DraftEntry>& drafts, KnownJournal& journal);

}  // namespace tool
