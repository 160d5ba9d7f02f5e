// SPDX-License-Identifier: Apache-2.0
#include "reading/tag_scanner.h"

#include <doctest/doctest.h>

#include "support/random_text.h"

using namespace brackwell;
using namespace brackwell::tests;
using reading::TagScanner;

namespace {

constexpr std::string_view kMarkup = "<>&";

/// The scanner once more, as a loop over bytes.
class ByteLoop {
public:
    explicit ByteLoop(std::string_view text) : text_(text) {}

    std::size_t next(std::string_view wanted, bool* sawAmpersand = nullptr) {
        while (at_ < text_.size()) {
            const char c = text_[at_++];
            if (sawAmpersand != nullptr && c == '&') *sawAmpersand = true;
            if (wanted.find(c) != std::string_view::npos) return at_ - 1;
        }
        return text_.size();
    }
    /// Where the next markup stands, without passing it.
    std::vector<std::size_t> ahead(std::size_t count) const {
        ByteLoop copy = *this;
        std::vector<std::size_t> found;
        while (count-- > 0) found.push_back(copy.next(kMarkup));
        return found;
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

/// Walks a text with both, by chance to the next "<", to the next ">", or over what stands ahead.
void compare(std::string_view text, RandomText& random) {
    TagScanner scanner(text);
    ByteLoop loop(text);
    for (std::size_t steps = 0; steps < text.size() + 3; ++steps) {
        const std::size_t choice = random.below(3);
        if (choice == 0) {
            bool saw = false;
            bool loopSaw = false;
            REQUIRE(scanner.nextOpen(saw) == loop.next("<", &loopSaw));
            REQUIRE(saw == loopSaw);
        } else if (choice == 1) {
            REQUIRE(scanner.nextClose() == loop.next(">"));
        } else if (const std::uint32_t* ahead = scanner.ahead(3)) {
            REQUIRE(std::vector<std::size_t>(ahead, ahead + 3) == loop.ahead(3));
            scanner.skip(2);
            loop.next(kMarkup);
            loop.next(kMarkup);
        }
    }
}

}  // namespace

TEST_CASE("the scanner finds what a loop over the bytes finds, wherever a text begins and ends") {
    const std::vector<std::string> pieces{"<",
                                          ">",
                                          "&",
                                          "<",
                                          ">",
                                          "a",
                                          "b",
                                          " ",
                                          "=",
                                          ";",
                                          "?",
                                          "\xBC",
                                          "\xBE",
                                          "\xA6",
                                          "$",
                                          "'",
                                          "|",
                                          "~",
                                          std::string(1, '\0')};
    RandomText random(4);
    for (std::size_t size = 0; size <= 200; ++size) {
        const std::string text = random.soup(pieces, size + 64);
        for (std::size_t begin = 0; begin < 64; begin += 1 + random.below(4)) {
            // A copy of exactly this size, so that reading past its end is seen.
            const std::vector<char> exact(text.begin() + static_cast<std::ptrdiff_t>(begin),
                                          text.begin() + static_cast<std::ptrdiff_t>(begin + size));
            compare({exact.data(), exact.size()}, random);
        }
    }
}

TEST_CASE("the scanner finds what a loop finds in texts of more markup than it writes down at once") {
    RandomText random(5);
    for (const std::string_view pieces : {"<>&", "<", ">", "<>&abcdefghijklmnopqrstuvwxyz", "abc"}) {
        std::string text;
        for (int i = 0; i < 5000; ++i) text += random.oneOf(pieces);
        CAPTURE(std::string(pieces));
        compare(text, random);
    }
}

TEST_CASE("behind the end the scanner stays at the end") {
    for (const std::string_view text : {"", "a", "<>"}) {
        TagScanner scanner(text);
        for (int i = 0; i < 4; ++i) scanner.nextClose();
        bool saw = false;
        CHECK(scanner.nextOpen(saw) == text.size());
        CHECK(scanner.nextClose() == text.size());
        CHECK_FALSE(saw);
        CHECK(scanner.ahead(1) == nullptr);
    }
}

TEST_CASE("only <, > and & are markup, at each place of a block") {
    for (unsigned place = 0; place < 64; ++place)
        for (int byte = 0; byte < 256; ++byte) {
            std::array<char, 64> block;
            block.fill('x');
            block[place] = static_cast<char>(byte);
            const bool isMarkup = byte == '<' || byte == '>' || byte == '&';
            const std::uint64_t wanted = std::uint64_t{isMarkup} << place;
            CAPTURE(place);
            CAPTURE(byte);
            REQUIRE(reading::markupInBlock(block.data()) == wanted);
            REQUIRE(reading::markupInBlockPortably(block.data()) == wanted);
        }
}

TEST_CASE("blocks are searched portably and with vectors alike") {
    RandomText random(6);
    std::array<char, 64 + 16> bytes{};
    for (int i = 0; i < 20000; ++i) {
        for (char& byte : bytes)
            byte = random.once(2) ? random.oneOf(kMarkup) : static_cast<char>(random.below(256));
        const char* block = bytes.data() + random.below(16);
        REQUIRE(reading::markupInBlock(block) == reading::markupInBlockPortably(block));
    }
}
