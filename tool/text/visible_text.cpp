// SPDX-License-Identifier: Apache-2.0
#include "text/visible_text.h"

#include <brackwell/platform.h>

#include <algorithm>
#include <cstddef>

#include "text/characters.h"

namespace tool {
namespace {

bool isPlain(char c) noexcept { return c > ' ' && c < '\x7F'; }

/// True for plain characters with single blanks between them, which most texts consist of. They are shown as
/// they are.
bool isShownAsItIs(std::string_view text) noexcept {
    bool afterBlank = true;  // nor does a text begin with one
    for (const char c : text) {
        if (c == ' ' ? afterBlank : !isPlain(c)) return false;
        afterBlank = c == ' ';
    }
    return !afterBlank;
}

/// Characters that order what stands around them from right to left, or end such an order.
bool turnsDirection(char32_t code) noexcept {
    return code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

/// What is shown for a character. Control characters of ASCII have pictures of their own.
char32_t shown(char32_t code) noexcept {
    if (code < 0x20) return 0x2400 + code;
    if (code == 0x7F) return 0x2421;
    return isTerminalCommand(code) ? kReplacementCharacter : code;
}

/// Replaces what is not visible but for the characters in `staying`.
std::string visible(std::string_view text, std::string_view staying) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const auto plain = static_cast<std::size_t>(std::ranges::find_if_not(text, isPlain) - text.begin());
        result.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) break;
        const Character character = firstCharacter(text);
        const bool stays = staying.find(text.front()) != staying.npos;
        appendCharacter(result, stays ? character.code : shown(character.code));
        text.remove_prefix(character.size);
    }
    return result;
}

}  // namespace

bool isTerminalCommand(char32_t code) noexcept {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || turnsDirection(code);
}

std::string visibleText(std::string_view text) {
    if (isShownAsItIs(text)) return std::string(text);
    std::string result;
    result.reserve(text.size());
    bool blank = false;  // one is due before the next character
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        text.remove_prefix(character.size);
        if (brackwell::isWhiteSpace(character.code)) {
            blank = !result.empty();
            continue;
        }
        if (blank) result += ' ';
        blank = false;
        appendCharacter(result, shown(character.code));
    }
    return result;
}

std::string visibleLines(std::string_view text) { return visible(text, "\n\t"); }

std::string visiblePart(std::string_view text) { return visible(text, ""); }

}  // namespace tool
