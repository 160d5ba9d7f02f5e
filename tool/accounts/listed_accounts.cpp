// SPDX-License-Identifier: Apache-2.0
#include "accounts/listed_accounts.h"

namespace tool {

using namespace brackwell;

ListedAccounts::ListedAccounts(const std::vector<ListedAccount>& accounts) {
    for (const ListedAccount& account : accounts) accounts_.emplace(account.record.get(), &account);
}

ListedAccount ListedAccounts::of(const std::shared_ptr<TvOFXAccountInfo>& record) const {
    const auto found = accounts_.find(record.get());
    if (found != accounts_.end()) return *found->second;
    return {record, record->bankAccountInfo(), nullptr, nullptr};
}

}  // namespace tool
