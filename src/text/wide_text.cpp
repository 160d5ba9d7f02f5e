// SPDX-License-Identifier: Apache-2.0
#include "text/wide_text.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "memory/load_word.h"
#include "text/utf8.h"

namespace brackwell {
namespace {

constexpr char32_t kFirstBeyondUnit = 0x10000;
constexpr char32_t kLastCharacter = 0x10FFFF;
constexpr unsigned kHalfBits = 10;  ///< of a character in each of its surrogates
constexpr std::uint32_t kHalfMask = (1U << kHalfBits) - 1;
constexpr std::uint32_t kHighSurrogates = 0xD800;
constexpr std::uint32_t kLowSurrogates = 0xDC00;

constexpr bool isSurrogate(std::uint32_t unit) noexcept { return unit >> 11 == kHighSurrogates >> 11; }
constexpr bool isHighSurrogate(std::uint32_t unit) noexcept {
    return unit >> kHalfBits == kHighSurrogates >> kHalfBits;
}
constexpr bool isLowSurrogate(std::uint32_t unit) noexcept {
    return unit >> kHalfBits == kLowSurrogates >> kHalfBits;
}

/// The number that `size` bytes are.
template <std::size_t size>
std::uint32_t unitAt(const char* bytes, std::endian order) noexcept {
    std::uint32_t unit = 0;
    for (std::size_t i = 0; i != size; ++i)
        unit = unit << 8 | static_cast<unsigned char>(bytes[order == std::endian::big ? i : size - 1 - i]);
    return unit;
}

template <std::size_t size>
void appendUnit(std::string& bytes, std::uint32_t unit, std::endian order) {
    for (std::size_t i = 0; i != size; ++i)
        bytes += static_cast<char>(unit >> 8 * (order == std::endian::big ? size - 1 - i : i) & 0xFF);
}

/// Appends the ASCII that UTF-16 begins with, four characters at a time, and takes it off.
void takeASCII(std::string_view& bytes, std::endian order, std::string& text) {
    const unsigned lowByte = order == std::endian::big ? 8 : 0;  // of the lowest unit of a word
    const std::uint64_t others = ~(std::uint64_t{0x007F007F007F007F} << lowByte);
    std::array<char, 1024> chunk;
    std::size_t size = 0;
    for (; bytes.size() >= sizeof(std::uint64_t); bytes.remove_prefix(sizeof(std::uint64_t))) {
        const std::uint64_t units = loadWord(bytes.data());
        if ((units & others) != 0) break;
        for (unsigned i = 0; i != 4; ++i) chunk[size++] = static_cast<char>(units >> (16 * i + lowByte));
        if (size != chunk.size()) continue;
        text.append(chunk.data(), size);
        size = 0;
    }
    text.append(chunk.data(), size);
}

/// Appends the text's characters, each by `append`.
template <class Append>
void forEachCharacter(std::string_view text, Append append) {
    while (!text.empty()) {
        const UTF8Character character = firstCharacter(text);
        append(character.value);
        text.remove_prefix(character.size);
    }
}

}  // namespace

std::optional<std::string> decodeUTF16(std::string_view bytes, std::endian order) {
    constexpr std::size_t unitSize = 2;
    if (bytes.size() % unitSize != 0) return std::nullopt;
    std::string text;
    text.reserve(bytes.size() / unitSize);  // at least that many, if there is nothing but ASCII
    while (true) {
        takeASCII(bytes, order, text);
        if (bytes.empty()) return text;
        char32_t character = unitAt<unitSize>(bytes.data(), order);
        bytes.remove_prefix(unitSize);
        if (isSurrogate(character)) {
            if (!isHighSurrogate(character) || bytes.empty()) return std::nullopt;
            const std::uint32_t low = unitAt<unitSize>(bytes.data(), order);
            if (!isLowSurrogate(low)) return std::nullopt;
            bytes.remove_prefix(unitSize);
            character = kFirstBeyondUnit + ((character & kHalfMask) << kHalfBits | (low & kHalfMask));
        }
        appendCharacter(text, character);
    }
}

std::optional<std::string> decodeUTF32(std::string_view bytes, std::endian order) {
    constexpr std::size_t unitSize = 4;
    if (bytes.size() % unitSize != 0) return std::nullopt;
    std::string text;
    text.reserve(bytes.size() / unitSize);
    for (; !bytes.empty(); bytes.remove_prefix(unitSize)) {
        const char32_t character = unitAt<unitSize>(bytes.data(), order);
        if (character > kLastCharacter || isSurrogate(character)) return std::nullopt;
        appendCharacter(text, character);
    }
    return text;
}

std::string encodeUTF16(std::string_view text, std::endian order) {
    std::string bytes;
    bytes.reserve(text.size() * 2);  // no character takes more
    forEachCharacter(text, [&](char32_t character) {
        if (character < kFirstBeyondUnit) return appendUnit<2>(bytes, character, order);
        const std::uint32_t rest = character - kFirstBeyondUnit;
        appendUnit<2>(bytes, kHighSurrogates | rest >> kHalfBits, order);
        appendUnit<2>(bytes, kLowSurrogates | (rest & kHalfMask), order);
    });
    return bytes;
}

std::string encodeUTF32(std::string_view text, std::endian order) {
    std::string bytes;
    bytes.reserve(text.size() * 4);
    forEachCharacter(text, [&](char32_t character) { appendUnit<4>(bytes, character, order); });
    return bytes;
}

}  // namespace brackwell
