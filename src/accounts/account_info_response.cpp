// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include "fields/element_table.h"

namespace brackwell {

struct BRACKWELL_INTERNAL TvOFXAccountInfoResponse::Elements {
    using Self = TvOFXAccountInfoResponse;
    /// An empty text leaves the date as it is; the rule that dates share would clear it.
    static void lastUpdate(Self& self, const NodeRef& value) {
        if (value.isText() && !value.text().empty()) date<&Self::lastUpdateDateTime_>(self, value);
    }
    static void records(Self& self, const NodeRef& value) {
        appendObjects<TvOFXAccountInfo::initWithParserDict>(self.accountInfos_, value);
    }
    static constexpr auto kTable = elementTable<Self>({
        {element("DTACCTUP"), lastUpdate},
        {element("ACCTINFO"), records},
    });
};

TvOFXAccountInfoResponse::TvOFXAccountInfoResponse(const std::optional<ParseDictionary>& node)
    : AggregateClass(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*originalParseData()));
}

std::string TvOFXAccountInfoResponse::description() const {
    return "TvOFXAccountInfoResponse containing " + std::to_string(accountInfos_.size()) + " accounts.";
}

std::string_view TvOFXAccountInfoResponse::className() const noexcept { return "TvOFXAccountInfoResponse"; }

}  // namespace brackwell
