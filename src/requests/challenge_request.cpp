// SPDX-License-Identifier: Apache-2.0
#include <brackwell/requests.h>

namespace brackwell {

std::string_view TvOFXChallengeRequest::className() const noexcept { return "TvOFXChallengeRequest"; }

std::string_view TvOFXChallengeRequest::requestIdentifier() const noexcept { return "CHALLENGERQ"; }

std::string_view TvOFXChallengeRequest::humanReadableName() const noexcept { return "Challenge Request"; }

}  // namespace brackwell
