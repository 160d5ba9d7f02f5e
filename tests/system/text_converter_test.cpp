// SPDX-License-Identifier: Apache-2.0
#include "system/text_converter.h"

#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "text/utf8.h"

using namespace brackwell;

/// \file
/// The library's own encodings beside those of the system, where it has any.

namespace {

/// An encoding, by the name that this library and the system both have for it.
constexpr std::array<const char*, 8> kOwnEncodings = {"ASCII",    "ISO-8859-1", "ISO-8859-15", "windows-1252",
                                                      "UTF-16BE", "UTF-16LE",   "UTF-32BE",    "UTF-32LE"};

std::optional<std::string> bySystem(std::string_view text, const char* from, const char* to) {
    const system::TextConverter converter(from, to);
    std::string result;
    if (!converter.isOpen() || !converter.convert(text, result)) return std::nullopt;
    return result;
}

bool hasSystemEncodings() { return system::TextConverter("ISO-8859-1", "UTF-8").isOpen(); }

std::optional<std::string> textOf(const std::optional<Data>& data) {
    if (!data) return std::nullopt;
    return std::string(data->bytes());
}

bool isSurrogate(char32_t character) { return character >= 0xD800 && character <= 0xDFFF; }

}  // namespace

TEST_CASE("every character is written as the system writes it") {
    if (!hasSystemEncodings()) return;
    for (const char* const name : kOwnEncodings) {
        CAPTURE(name);
        const TextEncoding encoding = textEncodingNamed(name);
        const system::TextConverter converter("UTF-8", name);
        REQUIRE(converter.isOpen());
        const bool isWide = std::string_view(name).starts_with("UTF");
        std::string all;
        for (char32_t character = 0; character <= 0x10FFFF; ++character) {
            if (isSurrogate(character)) continue;
            if (isWide) {
                appendCharacter(all, character);
            } else if (character < 0x3000) {
                std::string one;
                appendCharacter(one, character);
                std::string expected;
                const bool isWritten = converter.convert(one, expected);
                const std::optional<std::string> written = textOf(encodeText(one, encoding));
                CHECK(written == (isWritten ? std::optional(expected) : std::nullopt));
            }
        }
        if (isWide) CHECK(textOf(encodeText(all, encoding)) == bySystem(all, "UTF-8", name));
    }
}

TEST_CASE("every byte, and every pair of bytes, is read as the system reads it") {
    if (!hasSystemEncodings()) return;
    for (const char* const name : kOwnEncodings) {
        CAPTURE(name);
        const TextEncoding encoding = textEncodingNamed(name);
        for (unsigned number = 0; number <= 0xFFFF; ++number) {
            std::string bytes = {static_cast<char>(number >> 8), static_cast<char>(number & 0xFFU)};
            if (std::string_view(name).starts_with("UTF-32")) bytes = std::string(1, '\0') + bytes + '\x01';
            const bool isSame =
                textOf(decodeText(Data::view(bytes), encoding)) == bySystem(bytes, name, "UTF-8");
            if (!isSame) CHECK_MESSAGE(isSame, "of number ", number);
        }
    }
}

TEST_CASE("a conversion that the system does not have is not open") {
    CHECK_FALSE(system::TextConverter("no such encoding", "UTF-8").isOpen());
}
