// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/accounts.h>

#include <iterator>
#include <string_view>

#include "history/history.h"

namespace tool {

/// What people call an account of this type.
inline std::string_view accountTypeName(brackwell::TvOFXBankAccountType type) noexcept {
    constexpr std::string_view names[] = {"Account", "Checking account", "Savings account",
                                          "Money market account", "Credit line"};
    return type < std::size(names) ? names[type] : names[0];
}

/// The same of an account of either kind, and of statements that name none.
inline std::string_view kindOf(const AccountHistory& account) noexcept {
    if (account.isCard) return "Credit card";
    return accountTypeName(account.bankAccount ? account.bankAccount->accountType()
                                               : brackwell::TvOFXBankAccountTypeUnknown);
}

}  // namespace tool
