// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "bookkeeping/account_map.h"
#include "bookkeeping/investment_entry.h"
#include "history/history.h"

namespace tool {

/// The names that the accounts of documents have in books.
struct BookedNames {
    std::vector<std::string> banks;            ///< in the order of History::accounts
    std::vector<InvestmentNames> investments;  ///< in the order of InvestmentHistory::accounts
    /// Accounts whose numbers are alike, so that a digest had to be added to their names.
    std::size_t alike = 0;
};

/// What the account map says, else a name by kind and number: Assets:Bank:0012345678. Accounts in different
/// currencies may share a name; other different accounts share one only where the map says so.
BookedNames bookedNames(const History& history, const AccountMap& map);

}  // namespace tool
