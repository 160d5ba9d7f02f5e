// SPDX-License-Identifier: Apache-2.0
#include "parser/tag_search.h"

#include <doctest/doctest.h>

#include "support/random_text.h"

using namespace brackwell;
using namespace brackwell::tests;
using reading::ByteBlock;
using reading::PortableByteBlock;

namespace {

/// The searches once more, as loops over bytes.
std::size_t firstOf(std::string_view text, std::string_view wanted, std::size_t from) {
    while (from < text.size() && wanted.find(text[from]) == std::string_view::npos) ++from;
    return std::min(from, text.size());
}
std::size_t firstInk(std::string_view text, std::size_t from) {
    while (from < text.size() && static_cast<unsigned char>(text[from]) <= ' ') ++from;
    return std::min(from, text.size());
}
bool hasAmpersand(std::string_view text, std::size_t from, std::size_t end) {
    return from < end && text.substr(from, end - from).find('&') != std::string_view::npos;
}

template <class Block>
void compareSearches(std::string_view text) {
    for (std::size_t from = 0; from <= text.size() + 1; ++from) {
        CAPTURE(from);
        const reading::TextEnd end = reading::findOpen<Block>(text, from);
        REQUIRE(end.position == firstOf(text, "<", from));
        REQUIRE(end.hasEntity == hasAmpersand(text, from, end.position));
        REQUIRE(reading::findClose<Block>(text, from) == firstOf(text, ">", from));
        REQUIRE(reading::findInk<Block>(text, from) == firstInk(text, from));
    }
}

/// The search of which the last block is the text's last.
template <class Block>
void compareMarkup(std::string_view text) {
    if (text.size() < Block::size) return;
    const std::size_t last = text.size() - Block::size;
    for (std::size_t from = 0; from <= text.size(); ++from) {
        CAPTURE(from);
        const char* const found = reading::findMarkup<Block>(text.data() + from, text.data() + last);
        const std::size_t wanted = firstOf(text, "<>&", from);
        if (wanted <= last)
            REQUIRE(found == text.data() + wanted);
        else
            REQUIRE(found > text.data() + last);
    }
}

/// Searches a copy of exactly the text's size, so that reading past its end is seen.
void compare(std::string_view text) {
    const std::vector<char> exact(text.begin(), text.end());
    compareSearches<ByteBlock>({exact.data(), exact.size()});
    compareSearches<PortableByteBlock>({exact.data(), exact.size()});
    compareMarkup<ByteBlock>({exact.data(), exact.size()});
    compareMarkup<PortableByteBlock>({exact.data(), exact.size()});
}

}  // namespace

TEST_CASE("the searches find what loops over the bytes find, wherever a text begins and ends") {
    const std::vector<std::string> pieces{"<", ">", "&", "a",    "b",    " ",    "=", ";",
                                          "?", "%", "'", "\xBC", "\xBE", "\xA6", "|", std::string(1, '\0')};
    RandomText random(4);
    for (std::size_t size = 0; size <= 70; ++size)
        for (int repeat = 0; repeat < 4; ++repeat) compare(random.soup(pieces, size));
}

TEST_CASE("the searches pass over long texts without markup") {
    for (const std::size_t size : {15U, 16U, 17U, 47U, 48U, 49U, 200U}) {
        CAPTURE(size);
        compare(std::string(size, 'x'));
        compare(std::string(size, 'x') + "<");
        compare(std::string(size, 'x') + "&amp;" + std::string(size, 'y') + "<>");
    }
}

TEST_CASE("an ampersand after the tag does not belong to the text before it") {
    for (const std::string_view text :
         {"abc<&", "abcdefghijklmnop<&rstuvwxyz012345", "<&aaaaaaaaaaaaaaaaaaaa"}) {
        CAPTURE(text);
        CHECK_FALSE(reading::findOpen(text, 0).hasEntity);
    }
}

TEST_CASE("a block compares each of its bytes with a character and with another block") {
    RandomText random(6);
    std::array<char, 2 * ByteBlock::size> bytes{};
    for (int i = 0; i < 20000; ++i) {
        for (char& byte : bytes)
            byte = random.once(2) ? random.oneOf("<>&") : static_cast<char>(random.below(256));
        const char* first = bytes.data() + random.below(16);
        const char* second = bytes.data() + random.below(16);
        unsigned sameCharacter = 0;
        unsigned sameByte = 0;
        unsigned markup = 0;
        for (unsigned place = 0; place < ByteBlock::size; ++place) {
            sameCharacter |= unsigned{first[place] == *second} << place;
            sameByte |= unsigned{first[place] == second[place]} << place;
            markup |= unsigned{(std::string_view("<>&").find(first[place]) != std::string_view::npos)}
                      << place;
        }
        REQUIRE(ByteBlock(first).equal(*second) == sameCharacter);
        REQUIRE(PortableByteBlock(first).equal(*second) == sameCharacter);
        REQUIRE(ByteBlock(first).markup() == markup);
        REQUIRE(PortableByteBlock(first).markup() == markup);
        REQUIRE(ByteBlock(first).equal(ByteBlock(second)) == sameByte);
        REQUIRE(PortableByteBlock(first).equal(PortableByteBlock(second)) == sameByte);
    }
}
