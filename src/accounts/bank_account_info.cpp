// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include "accounts/service_status.h"

namespace brackwell {

struct BRACKWELL_INTERNAL TvOFXBankAccountInfo::Elements {
    using Self = TvOFXBankAccountInfo;
    static constexpr auto kTable = elementTable<Self>({
        {element("BANKACCTFROM"), object<&Self::bankAcctFrom_, TvOFXBankAccount::initWithParserDict>},
        {element("SUPTXDL"), flag<&Self::supportsTransactionDownload_>},
        {element("XFERSRC"), flag<&Self::isTransferSourceAccount_>},
        {element("XFERDEST"), flag<&Self::isTransferDestinationAccount_>},
        {element("SVCSTATUS"), choice<&Self::serviceStatus_, kServiceStatuses>},
    });
};

std::shared_ptr<TvOFXBankAccountInfo> TvOFXBankAccountInfo::initWithParserDict(
    const std::optional<ParseDictionary>& node) {
    auto info = std::make_shared<TvOFXBankAccountInfo>();
    if (node) Elements::kTable.read(*info, NodeRef::of(*node));
    return info;
}

// Shortcuts into the account, for callers that need only one of its texts.

OptionalText TvOFXBankAccountInfo::bankID() const noexcept {
    return bankAcctFrom_ ? bankAcctFrom_->bankID() : std::nullopt;
}

OptionalText TvOFXBankAccountInfo::branchID() const noexcept {
    return bankAcctFrom_ ? bankAcctFrom_->branchID() : std::nullopt;
}

OptionalText TvOFXBankAccountInfo::accountID() const noexcept {
    return bankAcctFrom_ ? bankAcctFrom_->accountID() : std::nullopt;
}

TvOFXBankAccountType TvOFXBankAccountInfo::accountType() const noexcept {
    return bankAcctFrom_ ? bankAcctFrom_->accountType() : TvOFXBankAccountTypeUnknown;
}

OptionalText TvOFXBankAccountInfo::acctKeyChecksum() const noexcept {
    return bankAcctFrom_ ? bankAcctFrom_->acctKeyChecksum() : std::nullopt;
}

}  // namespace brackwell
