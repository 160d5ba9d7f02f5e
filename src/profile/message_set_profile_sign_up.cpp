// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

#include "fields/element_table.h"

namespace brackwell {

struct BRACKWELL_INTERNAL TvOFXMessageSetProfileSignUp::Elements {
    using Self = TvOFXMessageSetProfileSignUp;
    static constexpr auto kClientEnroll = elementTable<Self>({
        {element("ACCTREQUIRED"), flag<&Self::clientEnrollAccountRequired_>},
    });
    static constexpr auto kWebEnroll = elementTable<Self>({
        {element("URL"), text<&Self::texts_, webEnrollUrl_>},
    });
    /// The same field as the URL of WEBENROLL, so the last of the two aggregates wins: intended.
    static constexpr auto kOtherEnroll = elementTable<Self>({
        {element("MESSAGE"), text<&Self::texts_, webEnrollUrl_>},
    });
    static constexpr auto kTable = elementTable<Self>({
        {element("CLIENTENROLL"), inner<kClientEnroll>},
        {element("WEBENROLL"), inner<kWebEnroll>},
        {element("OTHERENROLL"), inner<kOtherEnroll>},
        {element("CHGUSERINFO"), flag<&Self::serverSupportsClientBasedUserInformationChange_>},
        {element("AVAILACCTS"), flag<&Self::serverProvidesAccountInfos_>},
        {element("CLIENTACTREQ"), flag<&Self::serverAllowsServiceActivationRequest_>},
    });
};

TvOFXMessageSetProfileSignUp::TvOFXMessageSetProfileSignUp(const std::optional<ParseDictionary>& node)
    : AggregateClass(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*node));
}

std::string_view TvOFXMessageSetProfileSignUp::className() const noexcept {
    return "TvOFXMessageSetProfileSignUp";
}

}  // namespace brackwell
