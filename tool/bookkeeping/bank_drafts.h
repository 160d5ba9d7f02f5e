// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "bookkeeping/account_drafts.h"
#include "bookkeeping/bank_entry.h"
#include "bookkeeping/identity.h"
#include "history/history.h"

namespace tool {

/// A bank or card account under its name in a book, and its place among the accounts of drafts.
class BankDrafts final : public AccountDrafts {
public:
    BankDrafts(const AccountHistory& account, std::string_view name, std::uint32_t place,
               const BookContext& context);

    void addTo(DraftLists& lists) override;
    BookIdentity identityOf(std::uint32_t transaction) const override;
    std::vector<Posting> postingsOf(const DraftEntry& draft) const override;
    BookEntry textsOf(std::uint32_t transaction, const BookIdentity& identity) const override;
    BookRemark remarkOf(std::uint32_t transaction) const override;
    const brackwell::TvOFXStatementTransaction* bankTransaction(std::uint32_t transaction) const override;

private:
    const brackwell::TvOFXAccountStatement& statementOf(const HistoryEntry& entry) const;
    std::optional<BookDay> dayOf(const HistoryEntry& entry) const;
    bool isStatedBefore(const HistoryEntry& entry, StatedBefore& before) const;
    void addEntry(DraftLists& lists, std::uint32_t number) const;

    const AccountHistory& account_;
    std::string_view name_;
    std::uint32_t place_;
    BookContext context_;
    Identities identities_;
};

}  // namespace tool
