// SPDX-License-Identifier: Apache-2.0
#include "text/utf8.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace brackwell {

namespace {

constexpr std::size_t kLongestCharacter = 4;

unsigned byteAt(std::string_view text, std::size_t index) noexcept {
    return static_cast<unsigned char>(text[index]);
}

bool isContinuation(unsigned byte) noexcept { return (byte & 0xC0U) == 0x80U; }

/// What the first byte of a character says: how many bytes there are, and the bounds of the second one,
/// which are narrower than those of a continuation where they keep out overlong forms (E0, F0),
/// surrogates (ED) and what is above U+10FFFF (F4).
struct Lead {
    std::size_t size = 0;
    unsigned secondFrom = 0x80;
    unsigned secondTo = 0xBF;
};

Lead leadOf(unsigned byte) noexcept {
    if (byte < 0x80) return {1};
    if (byte < 0xC2) return {};
    if (byte < 0xE0) return {2};
    if (byte < 0xF0) return {3, byte == 0xE0 ? 0xA0U : 0x80U, byte == 0xED ? 0x9FU : 0xBFU};
    if (byte < 0xF5) return {4, byte == 0xF0 ? 0x90U : 0x80U, byte == 0xF4 ? 0x8FU : 0xBFU};
    return {};
}

/// Well-formed UTF-8; `prefix` steps over the ASCII between other characters.
template <std::size_t (*prefix)(std::string_view) noexcept>
bool isValid(std::string_view bytes) noexcept {
    for (;;) {
        bytes.remove_prefix(prefix(bytes));
        if (bytes.empty()) return true;
        // Text in other scripts has few single bytes of ASCII, for which the search is not worth it.
        do {
            const UTF8Character character = firstCharacter(bytes);
            if (character.size == 0) return false;
            bytes.remove_prefix(character.size);
        } while (!bytes.empty() && byteAt(bytes, 0) >= 0x80);
    }
}

}  // namespace

bool isValidUTF8(std::string_view bytes) noexcept { return isValid<asciiPrefix>(bytes); }

UTF8Character firstCharacter(std::string_view text) noexcept {
    if (text.empty()) return {};
    const unsigned first = byteAt(text, 0);
    const Lead lead = leadOf(first);
    if (lead.size == 1) return {first, 1};
    if (lead.size == 0 || text.size() < lead.size) return {};
    const unsigned second = byteAt(text, 1);
    if (second < lead.secondFrom || second > lead.secondTo) return {};

    // Of a lead byte in a sequence of n bytes the lower 7 - n bits count.
    char32_t value = first & (0x7FU >> lead.size);
    value = value << 6U | (second & 0x3FU);
    for (std::size_t i = 2; i < lead.size; ++i) {
        const unsigned byte = byteAt(text, i);
        if (!isContinuation(byte)) return {};
        value = value << 6U | (byte & 0x3FU);
    }
    return {value, lead.size};
}

UTF8Character lastCharacter(std::string_view text) noexcept {
    std::size_t size = 1;
    while (size < kLongestCharacter && size < text.size() && isContinuation(byteAt(text, text.size() - size)))
        ++size;
    if (size > text.size()) return {};
    const UTF8Character character = firstCharacter(text.substr(text.size() - size));
    // A shorter one would leave continuation bytes after it, which belong to no character.
    return character.size == size ? character : UTF8Character{};
}

void appendCharacter(std::string& text, char32_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    const unsigned continuations = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    // 110xxxxx, 1110xxxx or 11110xxx, then 10xxxxxx as often as needed.
    const unsigned mark = 0xFF80U >> continuations & 0xFFU;
    text += static_cast<char>(mark | character >> 6U * continuations);
    for (unsigned left = continuations; left != 0; --left)
        text += static_cast<char>(0x80U | (character >> 6U * (left - 1) & 0x3FU));
}

std::size_t asciiPrefix(std::string_view bytes) noexcept {
#if defined(__SSE2__)
    return asciiPrefixSSE2(bytes);
#else
    return asciiPrefixPortable(bytes);
#endif
}

std::size_t asciiPrefixPortable(std::string_view bytes) noexcept {
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::size_t position = 0;
    std::uint64_t word = 0;
    for (; bytes.size() - position >= sizeof word; position += sizeof word) {
        std::memcpy(&word, bytes.data() + position, sizeof word);
        if ((word & highBits) != 0) break;
    }
    while (position < bytes.size() && byteAt(bytes, position) < 0x80) ++position;
    return position;
}

bool isValidUTF8Portable(std::string_view bytes) noexcept { return isValid<asciiPrefixPortable>(bytes); }

#if defined(__SSE2__)

std::size_t asciiPrefixSSE2(std::string_view bytes) noexcept {
    constexpr std::size_t width = sizeof(__m128i);
    const auto load = [&](std::size_t position) noexcept {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes.data() + position));
    };
    const auto highBits = [](__m128i block) noexcept {
        return static_cast<unsigned>(_mm_movemask_epi8(block));
    };

    // Four blocks with one branch, as long as nothing is found; then one by one.
    std::size_t position = 0;
    for (; bytes.size() - position >= 4 * width; position += 4 * width) {
        const __m128i firstHalf = _mm_or_si128(load(position), load(position + width));
        const __m128i secondHalf = _mm_or_si128(load(position + 2 * width), load(position + 3 * width));
        if (highBits(_mm_or_si128(firstHalf, secondHalf)) != 0) break;
    }
    for (; bytes.size() - position >= width; position += width) {
        const unsigned bits = highBits(load(position));
        if (bits != 0) return position + static_cast<std::size_t>(std::countr_zero(bits));
    }
    return position + asciiPrefixPortable(bytes.substr(position));
}

bool isValidUTF8SSE2(std::string_view bytes) noexcept { return isValid<asciiPrefixSSE2>(bytes); }

#endif

}  // namespace brackwell
