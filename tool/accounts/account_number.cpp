// SPDX-License-Identifier: Apache-2.0
#include "accounts/account_number.h"

#include <optional>

namespace tool {

using namespace brackwell;

OptionalText accountNumber(const TvOFXAggregate* account) noexcept {
    if (const auto* bank = dynamic_cast<const TvOFXBankAccount*>(account)) return bank->accountID();
    if (const auto* card = dynamic_cast<const TvOFXCreditCardAccount*>(account)) return card->accountID();
    if (const auto* held = dynamic_cast<const TvOFXInvestmentAccount*>(account))
        return held->accountID().text();
    return std::nullopt;
}

}  // namespace tool
