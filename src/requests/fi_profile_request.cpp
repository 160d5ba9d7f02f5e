// SPDX-License-Identifier: Apache-2.0
#include <brackwell/requests.h>

#include <array>
#include <cstddef>

#include "requests/default_update.h"

namespace brackwell {

TvOFXFIProfileRequest::TvOFXFIProfileRequest(TextArgument updateDateTime)
    : AggregateClass("PROFTRNRQ"), dateTimeProfileUpdate_(updateDateTime.value_or(kDefaultUpdate)) {}

std::string TvOFXFIProfileRequest::description() const { return ofxString(); }

std::string TvOFXFIProfileRequest::ofxString() const {
    return wrappedText({{"CLIENTROUTING", clientRoutingString()}, {"DTPROFUP", dateTimeProfileUpdate_}});
}

std::string_view TvOFXFIProfileRequest::className() const noexcept { return "TvOFXFIProfileRequest"; }

std::shared_ptr<TvOFXFIProfileRequest> TvOFXFIProfileRequest::initWithUpdateDateTime(
    TextArgument updateDateTime) {
    return std::make_shared<TvOFXFIProfileRequest>(updateDateTime);
}

std::string_view TvOFXFIProfileRequest::clientRoutingString() const noexcept {
    // The number is the caller's, who may have set any; one without a word gives an empty leaf.
    constexpr std::array<std::string_view, 3> texts{"NONE", "SERVICE", "MSGSET"};
    if (clientRouting_ < 0 || clientRouting_ >= static_cast<std::int32_t>(texts.size())) return "";
    return texts[static_cast<std::size_t>(clientRouting_)];
}

std::string_view TvOFXFIProfileRequest::requestIdentifier() const noexcept { return "PROFRQ"; }

std::string_view TvOFXFIProfileRequest::humanReadableName() const noexcept { return "FI Profile Request"; }

}  // namespace brackwell
