// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

#include <cstdint>
#include <vector>

#include "bookkeeping/draft.h"

namespace tool {

/// An account of documents: what drafts are made from, and later the entries that they stand for.
/// Transactions are told by their numbers in the account's history.
class AccountDrafts {
public:
    AccountDrafts() = default;
    AccountDrafts(const AccountDrafts&) = delete;
    AccountDrafts& operator=(const AccountDrafts&) = delete;
    virtual ~AccountDrafts() = default;

    /// Adds what the statements say; transactions that several of them have, once.
    virtual void addTo(DraftLists& lists) = 0;

    virtual BookIdentity identityOf(std::uint32_t transaction) const = 0;
    virtual std::vector<Posting> postingsOf(const DraftEntry& draft) const = 0;
    /// An entry without day and postings.
    virtual BookEntry textsOf(std::uint32_t transaction, const BookIdentity& identity) const = 0;
    virtual BookRemark remarkOf(std::uint32_t transaction) const = 0;
    /// The transaction of a bank or card account; null for others. The other parties decide what is a
    /// transfer.
    virtual const brackwell::TvOFXStatementTransaction* bankTransaction(std::uint32_t) const {
        return nullptr;
    }
};

}  // namespace tool
