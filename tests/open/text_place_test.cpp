// SPDX-License-Identifier: Apache-2.0
#include "open/text_place.h"

#include <doctest/doctest.h>

#include "support/random_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// Counts byte by byte.
TextPlace plainPlace(std::string_view text, std::size_t offset) {
    TextPlace place;
    for (std::size_t at = 0; at < offset; ++at) {
        const bool isFirstOfTwo = text[at] == '\r' && text.substr(at + 1).starts_with('\n');
        if (text[at] == '\n' || (text[at] == '\r' && !isFirstOfTwo)) {
            ++place.line;
            place.column = 1;
        } else if (const auto byte = static_cast<unsigned char>(text[at]); byte < 0x80 || byte >= 0xC0) {
            ++place.column;
        }
    }
    return place;
}

}  // namespace

TEST_CASE("places found in blocks are those found byte by byte") {
    const std::vector<std::string> pieces{"a",      "<NAME>", "\n",         "\r",     "\r\n",
                                          "\u00E9", "\u20AC", "\U0001F600", "\u0080", "\x80",
                                          "\xC0",   "\xBF",   "\xFF",       "\x7F",   std::string(1, '\0')};
    RandomText random(1);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = random.soup(pieces, random.below(60));
        opening::PlaceCursor cursor(text);
        for (std::size_t offset = 0; offset <= text.size(); offset += 1 + random.below(40)) {
            CAPTURE(text);
            CAPTURE(offset);
            const TextPlace wanted = plainPlace(text, offset);
            CHECK(placeInText(text, offset).line == wanted.line);
            CHECK(placeInText(text, offset).column == wanted.column);
            const TextPlace place = cursor.advanceTo(offset);
            CHECK(place.line == wanted.line);
            CHECK(place.column == wanted.column);
        }
    }
}
