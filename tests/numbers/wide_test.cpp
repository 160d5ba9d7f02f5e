// SPDX-License-Identifier: Apache-2.0
#include "numbers/wide.h"

#include <doctest/doctest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

using brackwell::PortableWide;

namespace {

PortableWide made(std::uint64_t high, std::uint64_t low) { return PortableWide(high) << 64 | low; }

std::uint64_t highOf(PortableWide number) { return static_cast<std::uint64_t>(number >> 64); }
std::uint64_t lowOf(PortableWide number) { return static_cast<std::uint64_t>(number); }

/// Words at whose borders something happens, and random ones of all lengths.
std::vector<std::uint64_t> someWords() {
    std::vector<std::uint64_t> words = {0, 1, 2, 5, 10, 0xFFFFFFFF, 0x100000000, 0x8000000000000000, ~0ULL};
    std::mt19937_64 random(20);
    for (unsigned bits = 1; bits < 64; bits += 9) words.push_back(random() >> bits);
    return words;
}

}  // namespace

TEST_CASE("a wide number is what it was made of") {
    CHECK(PortableWide() == 0);
    CHECK(highOf(5U) == 0);
    CHECK(lowOf(5U) == 5);
    CHECK(highOf(-1) == ~0ULL);
    CHECK(static_cast<char>(PortableWide('x')) == 'x');
    CHECK(lowOf(made(7, 9)) == 9);
    CHECK(highOf(made(7, 9)) == 7);
}

TEST_CASE("wide numbers are divided as on paper") {
    struct Row {
        PortableWide number, divisor, quotient, rest;
    };
    const PortableWide tenTo38 = made(0x4B3B4CA85A86C47A, 0x098A224000000000);
    for (const Row& row : std::vector<Row>{
             {0, 1, 0, 0},
             {99, 10, 9, 9},
             {made(1, 0), 2, 1ULL << 63, 0},
             {made(1, 0), made(1, 0), 1, 0},
             {made(1, 0), made(1, 1), 0, made(1, 0)},
             {made(~0ULL, ~0ULL), made(~0ULL, ~0ULL), 1, 0},
             {made(~0ULL, ~0ULL), 0x100000001, made(0xFFFFFFFF, 0x00000000FFFFFFFF), 0},
             {tenTo38, 10000000000000000000ULL, 10000000000000000000ULL, 0},
         }) {
        CHECK(row.number / row.divisor == row.quotient);
        CHECK(row.number % row.divisor == row.rest);
    }
}

TEST_CASE("the quotient and the rest of wide numbers make them again") {
    const std::vector<std::uint64_t> words = someWords();
    for (const std::uint64_t high : words)
        for (const std::uint64_t low : words)
            for (const std::uint64_t divisorHigh : words) {
                const PortableWide number = made(high, low);
                const PortableWide divisor = made(divisorHigh, low | 1);
                const PortableWide rest = number % divisor;
                CHECK(rest < divisor);
                CHECK(number / divisor * divisor + rest == number);
            }
}

#if defined(__SIZEOF_INT128__)
TEST_CASE("wide numbers are those of the compiler") {
    using Native = brackwell::Wide;
    const auto native = [](PortableWide number) { return Native{highOf(number)} << 64 | lowOf(number); };
    const std::vector<std::uint64_t> words = someWords();
    std::vector<PortableWide> numbers;
    for (const std::uint64_t high : words)
        for (const std::uint64_t low : words) numbers.push_back(made(high, low));
    for (const PortableWide a : numbers) {
        for (const unsigned shift : {0U, 1U, 31U, 32U, 63U, 64U, 65U, 127U}) {
            CHECK((native(a << shift) == native(a) << shift));
            CHECK((native(a >> shift) == native(a) >> shift));
        }
        for (const PortableWide b : numbers) {
            const bool areSame =
                native(a + b) == native(a) + native(b) && native(a - b) == native(a) - native(b) &&
                native(a * b) == native(a) * native(b) && native(a | b) == (native(a) | native(b)) &&
                native(a & b) == (native(a) & native(b)) && (a < b) == (native(a) < native(b)) &&
                (a == b) == (native(a) == native(b)) &&
                (b == 0 ||
                 (native(a / b) == native(a) / native(b) && native(a % b) == native(a) % native(b)));
            CHECK(areSame);
        }
    }
}
#endif
