// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace brackwell {

/// How many bytes stand before the first one that ends something; all of them when none does.
template <class Ends>
std::size_t sizeUntil(std::string_view text, Ends ends) noexcept {
    return static_cast<std::size_t>(std::ranges::find_if(text, ends) - text.begin());
}

}  // namespace brackwell
