// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

/// Stands for what is no character, and for characters that are not shown.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

/// The character that a text begins with, and how many bytes it takes. Bytes that are not UTF-8 are
/// U+FFFD, one for as many bytes as could have begun a character.
struct Character {
    char32_t code = 0;
    std::size_t size = 0;  ///< 0: the text is empty
};
Character firstCharacter(std::string_view text) noexcept;

/// Appends a character's UTF-8 form.
void appendCharacter(std::string& text, char32_t code);

/// The text when it is UTF-8, otherwise `storage`, which receives it with U+FFFD for what is not.
std::string_view asUTF8(std::string_view text, std::string& storage);

}  // namespace tool
