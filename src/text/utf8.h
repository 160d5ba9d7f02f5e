// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <cstddef>
#include <string>
#include <string_view>

/// \file
/// UTF-8, one character at a time, and the two ways in which whole texts are checked.

namespace brackwell {

/// A character and the number of bytes that it takes; no bytes when there is no valid character.
struct UTF8Character {
    char32_t value = 0;
    std::size_t size = 0;

    bool operator==(const UTF8Character&) const = default;
};

/// The character that the text begins with; none when the text is empty or begins with bytes that are
/// not well-formed UTF-8.
UTF8Character firstCharacter(std::string_view text) noexcept;

/// The character that the text ends with; none as above.
UTF8Character lastCharacter(std::string_view text) noexcept;

/// The first characters of a text, for a text that has more; otherwise all of it.
inline std::string_view firstCharacters(std::string_view text, std::size_t count) noexcept {
    if (text.size() <= count) return text;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool beginsCharacter = (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80;
        if (!beginsCharacter) continue;
        if (count == 0) return text.substr(0, i);
        --count;
    }
    return text;
}

/// Appends a character. It must be a Unicode scalar value.
void appendCharacter(std::string& text, char32_t character);

/// How many bytes below 0x80 the bytes begin with.
std::size_t asciiPrefix(std::string_view bytes) noexcept;

// The ways to check texts that stand behind asciiPrefix and isValidUTF8. They differ only in speed; the
// fastest that the processor has is chosen when the library is compiled.

std::size_t asciiPrefixPortable(std::string_view bytes) noexcept;
bool isValidUTF8Portable(std::string_view bytes) noexcept;

#if defined(__SSE2__)
std::size_t asciiPrefixSSE2(std::string_view bytes) noexcept;
bool isValidUTF8SSE2(std::string_view bytes) noexcept;
#endif

}  // namespace brackwell
