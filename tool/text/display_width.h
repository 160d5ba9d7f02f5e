// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

/// What stands for a part that was cut out; takes one column.
inline constexpr std::string_view kEllipsis = "\u2026";

/// How many columns of a terminal a character takes: two for East Asian wide characters and emoji,
/// none for combining marks and other characters that only change their neighbour.
std::size_t characterWidth(char32_t character) noexcept;

/// How many columns a text takes that has no control characters.
std::size_t displayWidth(std::string_view text) noexcept;

/// The text cut so that it takes no more than `width` columns; one that is cut ends in an ellipsis.
std::string clipped(std::string_view text, std::size_t width);

}  // namespace tool
