// SPDX-License-Identifier: Apache-2.0
#include "text/visible_text.h"

#include <brackwell/platform.h>

#include <cstddef>

#include "text/characters.h"
#include "text/plain_run.h"

namespace tool {
namespace {

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

}  // namespace

bool isTerminalCommand(char32_t code) noexcept {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || turnsDirection(code);
}

bool isVisible(std::string_view text) noexcept {
    return plainRun(text) == text.size() && !text.starts_with(' ') && !text.ends_with(' ') &&
           text.find("  ") == text.npos;
}

std::string visibleText(std::string_view text) {
    if (isVisible(text)) return std::string(text);
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

std::string visiblePart(std::string_view text, std::string_view staying) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = plainRun(text);
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

}  // namespace tool
