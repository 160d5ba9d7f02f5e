// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

#include "fields/element_table.h"

namespace brackwell {

TvOFXMessageSetProfile::TvOFXMessageSetProfile(const std::optional<ParseDictionary>& node)
    : AggregateClass(node) {
    if (node)
        object<&TvOFXMessageSetProfile::messageSetCore_>(*this, NodeRef::of(*node)[element("MSGSETCORE")]);
}

std::string TvOFXMessageSetProfile::description() const {
    std::string text(className());
    text.append(":\n");
    if (messageSetCore_) text.append(messageSetCore_->description());
    return text;
}

std::string_view TvOFXMessageSetProfile::className() const noexcept { return "TvOFXMessageSetProfile"; }

}  // namespace brackwell
