// SPDX-License-Identifier: Apache-2.0
#include "text/searched_letters.h"

#include <cstddef>

#include "text/characters.h"
#include "text/folded_case.h"

namespace tool {
namespace {

/// Letters with marks beside each other: the letter without them, or a point where there is none.
struct MarkedLetters {
    char32_t first;
    std::string_view plain;
};

constexpr MarkedLetters kMarked[] = {
    {0xC0,
     "aaaaaa.ceeeeiiii.nooooo..uuuuy..aaaaaa.ceeeeiiii.nooooo.ouuuuy.y"
     "aaaaaaccccccccdd.deeeeeeeeeegggggggghh.hiiiiiiiiii..jjkk.llllll."
     "l.lnnnnnn...oooooo..rrrrrrsssssssstttt.tuuuuuuuuuuuuwwyyyzzzzzz."
     "................................oo.............uu..............."
     ".............aaiioouuuuuuuuuu.aaaa....ggkkoooo..j...gg..nnaa...o"
     "aaaaeeeeiiiioooorrrruuuusstt..hh......aaeeooooooooyy"},
    {0x1E00,
     "aabbbbbbccddddddddddeeeeeeeeeeffgghhhhhhhhhhiiiikkkkkkllllllllmm"
     "mmmmnnnnnnnnoooooooopppprrrrrrrrssssssssssttttttttuuuuuuuuuuvvvv"
     "wwwwwwwwwwxxxxyyzzzzzzhtwy......aaaaaaaaaaaaaaaaaaaaaaaaeeeeeeee"
     "eeeeeeeeiiiioooooooooooooooooooooooouuuuuuuuuuuuuuyyyyyyyy......"},
};

/// Letters that are written as two.
struct DoubleLetter {
    char32_t code;
    std::string_view plain;
};
constexpr DoubleLetter kDouble[] = {{0xDF, "ss"}, {0xE6, "ae"}, {0x153, "oe"}, {0x133, "ij"}};

constexpr bool isMark(char32_t code) noexcept { return code >= 0x300 && code <= 0x36F; }

/// What a letter is without its marks; "" when it is one without.
std::string_view plainLetter(char32_t code) noexcept {
    for (const DoubleLetter& letter : kDouble)
        if (letter.code == code) return letter.plain;
    for (const MarkedLetters& range : kMarked) {
        if (code < range.first || code - range.first >= range.plain.size()) continue;
        const std::string_view plain = range.plain.substr(code - range.first, 1);
        return plain == "." ? std::string_view() : plain;
    }
    return {};
}

}  // namespace

void appendSearchedLetters(std::string& letters, std::string_view text) {
    const std::size_t begin = letters.size();
    appendFoldedCase(letters, text);
    if (std::string_view(letters).substr(begin).find_first_of("\xC3\xC4\xC5\xC6\xC7\xC8\xCC\xCD\xE1") ==
        std::string_view::npos)
        return;
    const std::string folded = letters.substr(begin);
    letters.resize(begin);
    for (std::string_view rest = folded; !rest.empty();) {
        const Character character = firstCharacter(rest);
        const std::string_view plain = plainLetter(character.code);
        if (!plain.empty())
            letters += plain;
        else if (!isMark(character.code))
            letters += rest.substr(0, character.size);
        rest.remove_prefix(character.size);
    }
}

}  // namespace tool
