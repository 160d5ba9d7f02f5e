// SPDX-License-Identifier: Apache-2.0
#include <brackwell/requests.h>

#include "requests/default_update.h"

namespace brackwell {

TvOFXAccountInfoRequest::TvOFXAccountInfoRequest(TextArgument updateDateTime)
    : AggregateClass("ACCTINFOTRNRQ"), dateTimeAccountUpdate_(updateDateTime.value_or(kDefaultUpdate)) {}

std::string TvOFXAccountInfoRequest::ofxString() const {
    return wrappedText({{"DTACCTUP", dateTimeAccountUpdate_}});
}

std::string_view TvOFXAccountInfoRequest::className() const noexcept { return "TvOFXAccountInfoRequest"; }

std::shared_ptr<TvOFXAccountInfoRequest> TvOFXAccountInfoRequest::initWithUpdateDateTime(
    TextArgument updateDateTime) {
    return std::make_shared<TvOFXAccountInfoRequest>(updateDateTime);
}

std::string_view TvOFXAccountInfoRequest::requestIdentifier() const noexcept { return "ACCTINFORQ"; }

std::string_view TvOFXAccountInfoRequest::humanReadableName() const noexcept {
    return "Account Info Request";
}

}  // namespace brackwell
