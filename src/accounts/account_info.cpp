// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include "accounts/service_status.h"

namespace brackwell {

struct BRACKWELL_INTERNAL TvOFXAccountInfo::Elements {
    using Self = TvOFXAccountInfo;
    static constexpr auto kTable = elementTable<Self>({
        {element("DESC"), text<&Self::texts_, accountDescription_>},
        {element("PHONE"), text<&Self::texts_, accountPhone_>},
        {element("SVCSTATUS"), choice<&Self::serviceStatus_, kServiceStatuses>},
    });

    /// Of the blocks (names that end in "ACCTINFO") only those of banks are read: intended.
    static bool isBankBlock(std::string_view name) noexcept {
        return name.starts_with("BANK") && name.ends_with("ACCTINFO");
    }
};

std::shared_ptr<TvOFXAccountInfo> TvOFXAccountInfo::initWithParserDict(
    const std::optional<ParseDictionary>& node) {
    auto info = std::make_shared<TvOFXAccountInfo>();
    if (!node) return info;
    const NodeRef record = NodeRef::of(*node);
    Elements::kTable.read(*info, record);
    // A table of names cannot find the block; where there are several, the last one counts.
    for (const NodeRef& child : record.children())
        if (Elements::isBankBlock(child.name()) && child.isDictionary())
            info->bankAccountInfo_ = TvOFXBankAccountInfo::initWithParserDict(child.dictionary());
    return info;
}

}  // namespace brackwell
