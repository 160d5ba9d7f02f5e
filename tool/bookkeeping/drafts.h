// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "bookkeeping/account_drafts.h"
#include "bookkeeping/account_map.h"
#include "bookkeeping/booked_accounts.h"
#include "bookkeeping/commodities.h"
#include "bookkeeping/known_journal.h"
#include "history/history.h"

namespace tool {

/// An account of documents, by what transfers call it.
struct TransferAccount {
    std::string_view bank;
    std::string_view number;  ///< "" for one that takes no part in transfers
};

/// What documents say of accounts: what has to be known of all of it at once, in lists, and what else there
/// is of an entry when it is asked for. History and map have to live as long as this.
class Drafts {
public:
    Drafts(const History& history, const AccountMap& map);
    Drafts(const Drafts&) = delete;
    Drafts& operator=(const Drafts&) = delete;
    ~Drafts() = default;

    const DraftLists& lists() const noexcept { return lists_; }
    DraftLists& lists() noexcept { return lists_; }
    const AccountMap& map() const noexcept { return map_; }
    const Commodities& commodities() const noexcept { return commodities_; }
    /// Accounts whose numbers are alike, so that digests are in their names.
    std::size_t alike() const noexcept { return names_.alike; }

    /// Leaves out what a journal has. Returns how many entries it has with an identifier, but with other
    /// texts or on another day.
    std::size_t leaveOutKnown(KnownJournal& journal);

    std::string_view nameOf(const DraftEntry& draft) const { return accounts_[draft.account].name; }
    /// For each account of drafts the place of its name among those of all.
    std::vector<std::uint32_t> ranksOfNames() const;
    /// By what transfers call the draft's account.
    const TransferAccount& transferAccountOf(const DraftEntry& draft) const {
        return accounts_[draft.account].transfers;
    }
    /// The transaction of a bank or card account; null for others.
    const brackwell::TvOFXStatementTransaction* bankTransaction(const DraftEntry& draft) const {
        return sourceOf(draft).bankTransaction(draft.transaction);
    }
    /// The postings, without identities and facts.
    std::vector<Posting> postingsOf(const DraftEntry& draft) const;
    BookEntry entryOf(const DraftEntry& draft) const;
    BookRemark remarkOf(const DraftRemark& draft) const;

private:
    /// An account of the book. Two are of one investment account.
    struct Account {
        std::string_view name;
        std::shared_ptr<AccountDrafts> source;
        TransferAccount transfers = {};
    };
    void addBank(const AccountHistory& account, std::string_view name);
    void addInvestments(const InvestmentAccount& account, const InvestmentNames& names);
    const AccountDrafts& sourceOf(const DraftEntry& draft) const { return *accounts_[draft.account].source; }
    BookEntry ownEntryOf(const DraftEntry& draft) const;

    const AccountMap& map_;
    Commodities commodities_;
    BookedNames names_;
    brackwell::SecurityList securities_;  ///< of all documents
    std::vector<Account> accounts_;
    DraftLists lists_;
};

}  // namespace tool
