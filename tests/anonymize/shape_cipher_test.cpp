// SPDX-License-Identifier: Apache-2.0
#include "anonymize/shape_cipher.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

using namespace brackwell::anonymizing;

namespace {

using Counts = std::vector<std::uint8_t>;

/// The text of a shape with this number.
std::vector<Symbol> textOf(const Counts& shape, std::size_t number) {
    std::vector<Symbol> symbols;
    for (const std::uint8_t count : shape) {
        symbols.push_back({static_cast<std::uint8_t>(number % count), count});
        number /= count;
    }
    return symbols;
}

std::vector<std::uint8_t> valuesOf(const std::vector<Symbol>& symbols) {
    std::vector<std::uint8_t> values;
    for (const Symbol symbol : symbols) values.push_back(symbol.value);
    return values;
}

}  // namespace

TEST_CASE("each text of a shape becomes another one, and no two become the same") {
    for (const Counts& shape :
         {Counts{2}, {10}, {26}, {2, 2}, {9, 10}, {10, 10, 10}, {26, 10, 9}, {10, 10, 10, 10}, {1, 10}})
        for (int key = 0; key < 20; ++key) {
            CAPTURE(shape.size());
            const ShapeCipher cipher;
            std::size_t size = 1;
            for (const std::uint8_t count : shape) size *= count;
            std::set<std::vector<std::uint8_t>> seen;
            for (std::size_t number = 0; number < size; ++number) {
                std::vector<Symbol> text = textOf(shape, number);
                const auto before = valuesOf(text);
                cipher.replace(text, 1);
                REQUIRE(valuesOf(text) != before);
                for (std::size_t i = 0; i < text.size(); ++i) REQUIRE(text[i].value < shape[i]);
                seen.insert(valuesOf(text));
            }
            CHECK(seen.size() == size);
        }
}

TEST_CASE("a text becomes the same for one purpose, and others for other purposes, keys and beginnings") {
    const Counts shape(40, 10);
    const ShapeCipher cipher;
    const auto replaced = [&](const ShapeCipher& by, std::uint64_t purpose, std::uint8_t first) {
        std::vector<Symbol> text = textOf(shape, first);
        by.replace(text, purpose);
        return valuesOf(text);
    };
    const auto once = replaced(cipher, 1, 0);
    CHECK(replaced(cipher, 1, 0) == once);
    CHECK(replaced(cipher, 2, 0) != once);
    CHECK(replaced(ShapeCipher(), 1, 0) != once);
    // What comes after the first part of a long text depends on that part.
    const auto other = replaced(cipher, 1, 1);
    CHECK(std::vector(other.begin() + 24, other.end()) != std::vector(once.begin() + 24, once.end()));
}

TEST_CASE("an empty text, and one whose places have no choice, stay") {
    const ShapeCipher cipher;
    std::vector<Symbol> none;
    cipher.replace(none, 1);
    CHECK(none.empty());
    std::vector<Symbol> fixed{{0, 1}, {0, 1}, {0, 1}};
    cipher.replace(fixed, 1);
    CHECK(valuesOf(fixed) == std::vector<std::uint8_t>{0, 0, 0});
}
