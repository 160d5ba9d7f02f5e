// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

namespace brackwell {

/// What follows the last of these characters in a text; the whole text when it has none of them.
inline std::string_view afterLast(std::string_view text, std::string_view characters) noexcept {
    const std::size_t last = text.find_last_of(characters);
    return last == text.npos ? text : text.substr(last + 1);
}

}  // namespace brackwell
