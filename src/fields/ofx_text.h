// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brackwell {

/// From this version on leaves are closed.
inline constexpr std::uint64_t kFirstClosingVersion = 200;

/// Appends a line with one leaf, closed when the version asks for it. Nothing is escaped.
inline void appendLeaf(std::string& text, std::string_view name, std::string_view value,
                       std::uint64_t ofxVersion) {
    text.append("<").append(name).append(">").append(value);
    if (ofxVersion >= kFirstClosingVersion) text.append("</").append(name).append(">");
    text.append("\n");
}

}  // namespace brackwell
