// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>

#include "bookkeeping/account_drafts.h"
#include "bookkeeping/identity.h"
#include "bookkeeping/investment_entry.h"
#include "history/investment_history.h"
#include "investments/security_lookup.h"

namespace tool {

/// The drafts of an investment account. In a book it is two accounts, of which that of the securities is at a
/// place among those of the drafts, and that of the cash at the next one.
class InvestmentDrafts final : public AccountDrafts {
public:
    /// The securities are those of all documents.
    InvestmentDrafts(const InvestmentAccount& account, const InvestmentNames& names, std::uint32_t place,
                     const brackwell::SecurityList& securities, const BookContext& context);

    void addTo(DraftLists& lists) override;
    BookIdentity identityOf(std::uint32_t transaction) const override;
    std::vector<Posting> postingsOf(const DraftEntry& draft) const override;
    BookEntry textsOf(std::uint32_t transaction, const BookIdentity& identity) const override;
    BookRemark remarkOf(std::uint32_t transaction) const override;

private:
    SecurityLookup securitiesOf(const InvestmentSource& source) const;
    std::optional<brackwell::Security> securityOf(const InvestmentEntry& entry) const;
    std::optional<BookDay> dayOf(const InvestmentEntry& entry) const;
    bool isStatedBefore(std::uint32_t number, StatedBefore& before) const;
    void addEntry(DraftLists& lists, std::uint32_t number) const;
    std::vector<Posting> postingsOf(const InvestmentEntry& entry, CounterAccount counter) const;

    const InvestmentAccount& account_;
    const InvestmentNames& names_;
    std::uint32_t place_;
    const brackwell::SecurityList& securities_;
    BookContext context_;
    Identities identities_;
};

}  // namespace tool
