// SPDX-License-Identifier: Apache-2.0
#include "text/display_width.h"

#include <algorithm>
#include <span>

#include "text/characters.h"
#include "text/plain_run.h"
#include "text/width_ranges.h"

namespace tool {
namespace {

bool contains(std::span<const CharacterRange> ranges, char32_t character) noexcept {
    const auto range = std::ranges::lower_bound(ranges, character, {}, &CharacterRange::last);
    return range != ranges.end() && range->first <= character;
}

}  // namespace

std::size_t characterWidth(char32_t character) noexcept {
    if (character < kNoColumnRanges[0].first) return 1;
    if (contains(kNoColumnRanges, character)) return 0;
    return contains(kTwoColumnRanges, character) ? 2 : 1;
}

std::size_t displayWidth(std::string_view text) noexcept {
    std::size_t width = 0;
    for (;;) {
        const std::size_t plain = plainRun(text);
        width += plain;
        text.remove_prefix(plain);
        if (text.empty()) return width;
        const Character character = firstCharacter(text);
        width += characterWidth(character.code);
        text.remove_prefix(character.size);
    }
}

std::string clipped(std::string_view text, std::size_t width) {
    if (displayWidth(text) <= width) return std::string(text);
    if (width == 0) return {};
    std::size_t used = 0;
    std::size_t kept = 0;
    for (std::string_view rest = text; !rest.empty();) {
        const Character character = firstCharacter(rest);
        used += characterWidth(character.code);
        if (used > width - 1) break;
        kept += character.size;
        rest.remove_prefix(character.size);
    }
    while (kept > 0 && text[kept - 1] == ' ') --kept;
    return std::string(text.substr(0, kept)).append(kEllipsis);
}

}  // namespace tool
