// SPDX-License-Identifier: Apache-2.0
#include "text/folded_case.h"

#include <algorithm>
#include <iterator>

#include "text/characters.h"

namespace tool {
namespace {

/// Capital letters beside each other, and how far their small ones are away. Where capital and small
/// letters take turns, every second character is a capital, beginning with the first.
struct CapitalRange {
    char32_t first;
    char32_t last;
    char32_t distance;
    bool takesTurns = false;
};

constexpr CapitalRange kCapitals[] = {
    {0xC0, 0xD6, 32},        {0xD8, 0xDE, 32},          {0x100, 0x12F, 1, true},   {0x132, 0x137, 1, true},
    {0x139, 0x148, 1, true}, {0x14A, 0x177, 1, true},   {0x179, 0x17E, 1, true},   {0x1CD, 0x1DC, 1, true},
    {0x1DE, 0x1EF, 1, true}, {0x1F8, 0x21F, 1, true},   {0x222, 0x233, 1, true},   {0x386, 0x386, 38},
    {0x388, 0x38A, 37},      {0x38C, 0x38C, 64},        {0x38E, 0x38F, 63},        {0x391, 0x3A1, 32},
    {0x3A3, 0x3AB, 32},      {0x3C2, 0x3C2, 1},         {0x400, 0x40F, 80},        {0x410, 0x42F, 32},
    {0x460, 0x481, 1, true}, {0x48A, 0x4BF, 1, true},   {0x4C1, 0x4CE, 1, true},   {0x4D0, 0x52F, 1, true},
    {0x531, 0x556, 48},      {0x1E00, 0x1E95, 1, true}, {0x1EA0, 0x1EFF, 1, true}, {0xFF21, 0xFF3A, 32},
};

constexpr char32_t kCapitalYWithDiaeresis = 0x178;  // its small letter is the only one far below it
constexpr char32_t kSmallYWithDiaeresis = 0xFF;

char32_t smallLetter(char32_t code) noexcept {
    if (code == kCapitalYWithDiaeresis) return kSmallYWithDiaeresis;
    const auto* range = std::ranges::lower_bound(kCapitals, code, {}, &CapitalRange::last);
    if (range == std::end(kCapitals) || code < range->first) return code;
    return range->takesTurns && (code - range->first) % 2 != 0 ? code : code + range->distance;
}

}  // namespace

void appendFoldedCase(std::string& folded, std::string_view text) {
    const auto isASCII = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    const auto smallASCII = [](char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c); };
    while (!text.empty()) {
        const auto plain = std::ranges::find_if_not(text, isASCII);
        std::transform(text.begin(), plain, std::back_inserter(folded), smallASCII);
        text.remove_prefix(static_cast<std::size_t>(plain - text.begin()));
        if (text.empty()) break;
        const Character character = firstCharacter(text);
        text.remove_prefix(character.size);
        appendCharacter(folded, smallLetter(character.code));
    }
}

}  // namespace tool
