// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "bookkeeping/bank_entry.h"
#include "bookkeeping/draft.h"
#include "bookkeeping/investment_entry.h"
#include "history/history.h"
#include "investments/security_lookup.h"

namespace tool {

/// Everything that documents say of accounts, before any of it is held against anything else.
struct Drafts {
    std::vector<DraftAccount> accounts;
    std::vector<DraftEntry> entries;
    std::vector<BookBalance> balances;
    std::vector<BookPrice> prices;
    std::vector<BookRemark> remarks;
};

/// @{
/// Adds what the statements of an account say; transactions that several of them have, once.
void addAccount(Drafts& drafts, const AccountHistory& account, const std::string& name,
                const BookContext& context);
void addAccount(Drafts& drafts, const InvestmentAccount& account, const InvestmentNames& names,
                const brackwell::SecurityList& others, const BookContext& context);
/// @}

}  // namespace tool
