// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

namespace brackwell {

std::string_view TvOFXMessageSetProfileSignOn::className() const noexcept {
    return "TvOFXMessageSetProfileSignOn";
}

}  // namespace brackwell
