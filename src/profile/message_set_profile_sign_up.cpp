// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

#include "model/element_table.h"

namespace brackwell {

struct BRACKWELL_INTERNAL TvOFXMessageSetProfileSignUp::Elements {
    using Self = TvOFXMessageSetProfileSignUp;
    static constexpr ElementTable<Self, 1> clientEnroll{{
        {element("ACCTREQUIRED"), flag<&Self::clientEnrollAccountRequired_>},
    }};
    static constexpr ElementTable<Self, 1> webEnroll{{
        {element("URL"), text<&Self::texts_, webEnrollUrl_>},
    }};
    /// The same field as the address, so the last of the two aggregates wins: intended.
    static constexpr ElementTable<Self, 1> otherEnroll{{
        {element("MESSAGE"), text<&Self::texts_, webEnrollUrl_>},
    }};
    static constexpr ElementTable<Self, 6> table{{
        {element("CLIENTENROLL"), inner<clientEnroll>},
        {element("WEBENROLL"), inner<webEnroll>},
        {element("OTHERENROLL"), inner<otherEnroll>},
        {element("CHGUSERINFO"), flag<&Self::serverSupportsClientBasedUserInformationChange_>},
        {element("AVAILACCTS"), flag<&Self::serverProvidesAccountInfos_>},
        {element("CLIENTACTREQ"), flag<&Self::serverAllowsServiceActivationRequest_>},
    }};
};

TvOFXMessageSetProfileSignUp::TvOFXMessageSetProfileSignUp(const std::optional<ParseDictionary>& node)
    : TvOFXMessageSetProfile(node) {
    if (node) Elements::table.read(*this, NodeRef::of(*node));
}

std::shared_ptr<TvOFXMessageSetProfileSignUp> TvOFXMessageSetProfileSignUp::initWithParseDict(
    const std::optional<ParseDictionary>& node) {
    return std::make_shared<TvOFXMessageSetProfileSignUp>(node);
}

std::string_view TvOFXMessageSetProfileSignUp::className() const noexcept {
    return "TvOFXMessageSetProfileSignUp";
}

}  // namespace brackwell
