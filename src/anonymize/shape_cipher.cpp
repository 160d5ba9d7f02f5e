// SPDX-License-Identifier: Apache-2.0
#include "anonymize/shape_cipher.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace brackwell::anonymizing {
namespace {

/// Places in one network: the product of half their counts must fit 64 bits, and 26^12 does.
constexpr std::size_t kLongest = 24;

/// Texts of two places may need this many until nothing of the network's structure shows.
constexpr std::uint64_t kRounds = 10;

std::uint64_t hashOf(const UnpredictableHash& hash, const std::array<std::uint64_t, 4>& words) noexcept {
    char bytes[sizeof words];
    std::memcpy(bytes, words.data(), sizeof words);
    return hash({bytes, sizeof bytes});
}

/// The places as one number, the first the highest.
std::uint64_t numberOf(std::span<const Symbol> symbols) noexcept {
    std::uint64_t number = 0;
    for (const Symbol symbol : symbols) number = number * symbol.count + symbol.value;
    return number;
}

/// How many numbers the places can be.
std::uint64_t sizeOf(std::span<const Symbol> symbols) noexcept {
    std::uint64_t size = 1;
    for (const Symbol symbol : symbols) size *= symbol.count;
    return size;
}

void setNumber(std::span<Symbol> symbols, std::uint64_t number) noexcept {
    for (auto symbol = symbols.rbegin(); symbol != symbols.rend(); ++symbol) {
        symbol->value = static_cast<std::uint8_t>(number % symbol->count);
        number /= symbol->count;
    }
}

/// Moves a number within its size. Both are far below 2^63.
std::uint64_t moved(std::uint64_t number, std::uint64_t by, std::uint64_t size) noexcept {
    return (number + by % size) % size;
}

/// One place alone: its values are brought into an order that nobody knows, and each becomes the next one.
void replaceOne(const UnpredictableHash& hash, Symbol& symbol, std::uint64_t purpose) noexcept {
    const auto rank = [&](std::uint64_t value) {
        return std::pair(hashOf(hash, {purpose, symbol.count, value, 0}), value);
    };
    const auto own = rank(symbol.value);
    auto next = own;
    auto first = own;
    for (std::uint64_t value = 0; value < symbol.count; ++value) {
        const auto other = rank(value);
        first = std::min(first, other);
        if (other > own && (next == own || other < next)) next = other;
    }
    symbol.value = static_cast<std::uint8_t>((next == own ? first : next).second);
}

/// The two numbers of several places, and what they are hashed with.
struct Halves {
    std::array<std::uint64_t, 2> numbers;
    std::array<std::uint64_t, 2> sizes;
    std::uint64_t purpose;
    std::uint64_t places;

    /// How far a number is moved in a round.
    std::uint64_t distance(const UnpredictableHash& hash, std::uint64_t round) const noexcept {
        return hashOf(hash, {purpose, places, round, numbers[1 - round % 2]}) % sizes[round % 2];
    }
    void scramble(const UnpredictableHash& hash) noexcept {
        for (std::uint64_t round = 0; round < kRounds; ++round)
            numbers[round % 2] = moved(numbers[round % 2], distance(hash, round), sizes[round % 2]);
    }
    /// What scramble makes these numbers of.
    void unscramble(const UnpredictableHash& hash) noexcept {
        for (std::uint64_t done = 0; done < kRounds; ++done) {
            const std::uint64_t round = kRounds - 1 - done;
            const std::uint64_t back = sizes[round % 2] - distance(hash, round);
            numbers[round % 2] = moved(numbers[round % 2], back, sizes[round % 2]);
        }
    }
    /// Takes the next one of all pairs, and the first after the last.
    void advance() noexcept {
        numbers[1] = moved(numbers[1], 1, sizes[1]);
        if (numbers[1] == 0) numbers[0] = moved(numbers[0], 1, sizes[0]);
    }
};

/// The network alone would leave a text as it is now and then. So it brings all texts of the shape into an
/// order that nobody knows, and each becomes the one after it.
void replaceSeveral(const UnpredictableHash& hash, std::span<Symbol> symbols,
                    std::uint64_t purpose) noexcept {
    const std::span<Symbol> first = symbols.first(symbols.size() / 2);
    const std::span<Symbol> second = symbols.subspan(symbols.size() / 2);
    Halves halves{
        {numberOf(first), numberOf(second)}, {sizeOf(first), sizeOf(second)}, purpose, symbols.size()};
    halves.unscramble(hash);
    halves.advance();
    halves.scramble(hash);
    setNumber(first, halves.numbers[0]);
    setNumber(second, halves.numbers[1]);
}

}  // namespace

void ShapeCipher::replace(std::span<Symbol> symbols, std::uint64_t purpose) const noexcept {
    while (!symbols.empty()) {
        const std::span<Symbol> part = symbols.first(std::min(symbols.size(), kLongest));
        symbols = symbols.subspan(part.size());
        // What follows depends on this part, as it is now, so long texts with equal ends do not show it.
        const std::uint64_t next = hashOf(hash_, {purpose, numberOf(part.first(part.size() / 2)),
                                                  numberOf(part.subspan(part.size() / 2)), part.size()});
        if (part.size() == 1)
            replaceOne(hash_, part.front(), purpose);
        else
            replaceSeveral(hash_, part, purpose);
        purpose = next;
    }
}

}  // namespace brackwell::anonymizing
