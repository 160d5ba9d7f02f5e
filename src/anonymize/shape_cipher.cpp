// SPDX-License-Identifier: Apache-2.0
#include "anonymize/shape_cipher.h"

#include <algorithm>
#include <array>
#include <cstring>

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

/// One place alone: every value moves by as much, so none stays and no two meet.
void replaceOne(Symbol& symbol, std::uint64_t hash) noexcept {
    if (symbol.count > 1)
        symbol.value =
            static_cast<std::uint8_t>(moved(symbol.value, 1 + hash % (symbol.count - 1U), symbol.count));
}

void replaceSeveral(const UnpredictableHash& hash, std::span<Symbol> symbols,
                    std::uint64_t purpose) noexcept {
    const std::span<Symbol> first = symbols.first(symbols.size() / 2);
    const std::span<Symbol> second = symbols.subspan(symbols.size() / 2);
    const std::uint64_t sizes[] = {sizeOf(first), sizeOf(second)};
    const std::uint64_t before[] = {numberOf(first), numberOf(second)};
    std::uint64_t numbers[] = {before[0], before[1]};
    // A text that would stay as it is takes another turn, with another key. There are few of them, and the
    // chance that one then meets another text of the document is as small as that of a guess.
    for (std::uint64_t turn = 0; turn < 4 && std::ranges::equal(numbers, before); ++turn)
        for (std::uint64_t round = 0; round < kRounds; ++round) {
            std::uint64_t& changed = numbers[round % 2];
            const std::uint64_t other = numbers[1 - round % 2];
            const std::uint64_t by = hashOf(hash, {purpose, symbols.size() << 8U | round, turn, other});
            changed = moved(changed, by, sizes[round % 2]);
        }
    setNumber(first, numbers[0]);
    setNumber(second, numbers[1]);
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
            replaceOne(part.front(), hashOf(hash_, {purpose, part.front().count, 0, 0}));
        else
            replaceSeveral(hash_, part, purpose);
        purpose = next;
    }
}

}  // namespace brackwell::anonymizing
