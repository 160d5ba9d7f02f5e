// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include "text/ascii_space.h"
#include "text/utf8.h"

namespace brackwell {

namespace {

bool isASCII(char byte) noexcept { return static_cast<unsigned char>(byte) < 0x80; }

/// The size of the white space character at one end of a text, which is not empty; 0 when there is another
/// character, or bytes that are no character.
template <UTF8Character (*characterAtEnd)(std::string_view) noexcept>
std::size_t whiteSpaceSize(char endByte, std::string_view text) noexcept {
    if (isASCII(endByte)) return isASCIIWhiteSpace(endByte) ? 1 : 0;
    const UTF8Character character = characterAtEnd(text);
    return isWhiteSpace(character.value) ? character.size : 0;
}

}  // namespace

// Both follow Unicode: the property White_Space, and the characters that end a line.

bool isWhiteSpace(char32_t character) noexcept {
    if (character < 0x80) return isASCIIWhiteSpace(static_cast<char>(character));
    if (character < 0x1680) return character == 0x85 || character == 0xA0;
    if (character >= 0x2000 && character <= 0x200A) return true;
    switch (character) {
        case 0x1680:
        case 0x2028:
        case 0x2029:
        case 0x202F:
        case 0x205F:
        case 0x3000:
            return true;
        default:
            return false;
    }
}

bool isLineBreak(char32_t character) noexcept {
    if (character < 0x80) return character >= '\n' && character <= '\r';
    return character == 0x85 || character == 0x2028 || character == 0x2029;
}

std::string_view trimWhiteSpace(std::string_view text) noexcept {
    while (!text.empty()) {
        const std::size_t size = whiteSpaceSize<firstCharacter>(text.front(), text);
        if (size == 0) break;
        text.remove_prefix(size);
    }
    while (!text.empty()) {
        const std::size_t size = whiteSpaceSize<lastCharacter>(text.back(), text);
        if (size == 0) break;
        text.remove_suffix(size);
    }
    return text;
}

std::vector<std::string_view> splitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    std::size_t position = 0;
    while (position < text.size()) {
        const UTF8Character character = firstCharacter(text.substr(position));
        // Bytes that are no character have size 0 and belong to the line; the next one may begin one.
        const std::size_t next = position + (character.size == 0 ? 1 : character.size);
        if (character.size != 0 && isLineBreak(character.value)) {
            lines.push_back(text.substr(start, position - start));
            start = next;
        }
        position = next;
    }
    lines.push_back(text.substr(start));
    return lines;
}

}  // namespace brackwell
