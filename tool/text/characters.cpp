// SPDX-License-Identifier: Apache-2.0
#include "text/characters.h"

#include <brackwell/platform.h>

namespace tool {
namespace {

/// What the first byte of a character says of the rest: how many bytes follow, and the range of the
/// second one, which rules out overlong forms, surrogates and what lies above U+10FFFF.
struct Lead {
    std::size_t following;
    unsigned char lowest;
    unsigned char highest;
};

Lead leadOf(unsigned char byte) noexcept {
    if (byte >= 0xC2 && byte <= 0xDF) return {1, 0x80, 0xBF};
    if (byte == 0xE0) return {2, 0xA0, 0xBF};
    if (byte == 0xED) return {2, 0x80, 0x9F};
    if (byte >= 0xE1 && byte <= 0xEF) return {2, 0x80, 0xBF};
    if (byte == 0xF0) return {3, 0x90, 0xBF};
    if (byte >= 0xF1 && byte <= 0xF3) return {3, 0x80, 0xBF};
    if (byte == 0xF4) return {3, 0x80, 0x8F};
    return {0, 0, 0};
}

}  // namespace

Character firstCharacter(std::string_view text) noexcept {
    if (text.empty()) return {};
    const auto byteAt = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byteAt(0);
    if (first < 0x80) return {first, 1};
    Lead lead = leadOf(first);
    if (lead.following == 0) return {kReplacementCharacter, 1};
    char32_t code = first & (0x3FU >> lead.following);
    for (std::size_t i = 1; i <= lead.following; ++i) {
        if (i == text.size() || byteAt(i) < lead.lowest || byteAt(i) > lead.highest)
            return {kReplacementCharacter, i};
        code = code << 6 | (byteAt(i) & 0x3FU);
        lead.lowest = 0x80;
        lead.highest = 0xBF;
    }
    return {code, lead.following + 1};
}

void appendCharacter(std::string& text, char32_t code) {
    const auto append = [&text](char32_t byte) {
        text += static_cast<char>(static_cast<unsigned char>(byte));
    };
    if (code < 0x80) return append(code);
    if (code < 0x800) {
        append(0xC0 | code >> 6);
    } else {
        if (code < 0x10000) {
            append(0xE0 | code >> 12);
        } else {
            append(0xF0 | code >> 18);
            append(0x80 | (code >> 12 & 0x3F));
        }
        append(0x80 | (code >> 6 & 0x3F));
    }
    append(0x80 | (code & 0x3F));
}

std::string_view asUTF8(std::string_view text, std::string& storage) {
    if (brackwell::isValidUTF8(text)) return text;
    storage.clear();
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        appendCharacter(storage, character.code);
        text.remove_prefix(character.size);
    }
    return storage;
}

}  // namespace tool
