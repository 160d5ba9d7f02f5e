// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/accounts.h>

#include <string_view>

namespace tool {

/// What people call an account of this type.
inline std::string_view accountTypeName(brackwell::TvOFXBankAccountType type) noexcept {
    constexpr std::string_view names[] = {"Account", "Checking account", "Savings account",
                                          "Money market account", "Credit line"};
    return type < std::size(names) ? names[type] : names[0];
}

}  // namespace tool
