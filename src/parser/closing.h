// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace brackwell::reading {

/// The prefix of extension names, which a close tag may leave out.
inline constexpr std::string_view kExtensionPrefix = "INTU.";

/// True when a close tag closes what was opened with this name because it leaves out the prefix.
inline bool closesWithoutPrefix(std::string_view closeTag, std::string_view open) noexcept {
    return open.size() == kExtensionPrefix.size() + closeTag.size() && open.starts_with(kExtensionPrefix) &&
           open.ends_with(closeTag);
}

/// True when a close tag of one name closes what was opened with another one.
inline bool closes(std::string_view closeTag, std::string_view open) noexcept {
    return closeTag == open || closesWithoutPrefix(closeTag, open);
}

}  // namespace brackwell::reading
