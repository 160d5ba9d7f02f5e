// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

#include "fields/element_table.h"

namespace brackwell {

TvOFXMessageSetProfileCreditCard::TvOFXMessageSetProfileCreditCard(const std::optional<ParseDictionary>& node)
    : AggregateClass(node) {
    if (node)
        flag<&TvOFXMessageSetProfileCreditCard::closingStatementInformationAvailable_>(
            *this, NodeRef::of(*node)[element("CLOSINGAVAIL")]);
}

std::string_view TvOFXMessageSetProfileCreditCard::className() const noexcept {
    return "TvOFXMessageSetProfileCreditCard";
}

}  // namespace brackwell
