// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

namespace brackwell {

std::shared_ptr<TvOFXMessageSetProfileSignOn> TvOFXMessageSetProfileSignOn::initWithParseDict(
    const std::optional<ParseDictionary>& node) {
    return std::make_shared<TvOFXMessageSetProfileSignOn>(node);
}

std::string_view TvOFXMessageSetProfileSignOn::className() const noexcept {
    return "TvOFXMessageSetProfileSignOn";
}

}  // namespace brackwell
