// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brackwell::tests {

/// A piece of text so many times, one after the other.
inline std::string repeated(std::string_view piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    while (count-- > 0) text.append(piece);
    return text;
}

}  // namespace brackwell::tests
