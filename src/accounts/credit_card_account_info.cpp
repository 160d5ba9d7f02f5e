// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include "accounts/service_status.h"

namespace brackwell {

struct BRACKWELL_INTERNAL TvOFXCreditCardAccountInfo::Elements {
    using Self = TvOFXCreditCardAccountInfo;
    static constexpr auto kTable = elementTable<Self>({
        {element("CCACCTFROM"), object<&Self::creditCardAccountFrom_>},
        {element("SUPTXDL"), flag<&Self::supportsTransactionDownload_>},
        {element("XFERSRC"), flag<&Self::isTransferSourceAccount_>},
        {element("XFERDEST"), flag<&Self::isTransferDestinationAccount_>},
        {element("SVCSTATUS"), choice<&Self::serviceStatus_, kServiceStatuses>},
    });
};

std::shared_ptr<TvOFXCreditCardAccountInfo> TvOFXCreditCardAccountInfo::initWithParserDict(
    const std::optional<ParseDictionary>& node) {
    auto info = std::make_shared<TvOFXCreditCardAccountInfo>();
    if (node) Elements::kTable.read(*info, NodeRef::of(*node));
    return info;
}

// Shortcuts into the account, for callers that need only one of its texts.

OptionalText TvOFXCreditCardAccountInfo::accountID() const noexcept {
    return creditCardAccountFrom_ ? creditCardAccountFrom_->accountID() : std::nullopt;
}

OptionalText TvOFXCreditCardAccountInfo::acctKeyChecksum() const noexcept {
    return creditCardAccountFrom_ ? creditCardAccountFrom_->acctKeyChecksum() : std::nullopt;
}

}  // namespace brackwell
