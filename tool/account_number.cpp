// SPDX-License-Identifier: Apache-2.0
#include "account_number.h"

namespace tool {

using namespace brackwell;

OptionalText accountNumber(const TvOFXAggregate* account) noexcept {
    if (const auto* bank = dynamic_cast<const TvOFXBankAccount*>(account)) return bank->accountID();
    if (const auto* card = dynamic_cast<const TvOFXCreditCardAccount*>(account)) return card->accountID();
    if (const auto* held = dynamic_cast<const TvOFXInvestmentAccount*>(account))
        return held->accountID().text();
    return std::nullopt;
}

OptionalText accountNumber(const TvOFXAccountInfo& record) noexcept {
    return record.bankAccountInfo() ? record.bankAccountInfo()->accountID() : std::nullopt;
}

const TvOFXAggregate* accountOf(const TvOFXAccountStatement& statement) noexcept {
    if (const auto* bank = dynamic_cast<const TvOFXStatementResponse*>(&statement))
        return bank->bankAccountFrom().get();
    if (const auto* card = dynamic_cast<const TvOFXCCStatementResponse*>(&statement))
        return card->creditCardAccountFrom().get();
    return nullptr;
}

}  // namespace tool
