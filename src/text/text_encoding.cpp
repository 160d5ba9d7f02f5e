// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "system/text_converter.h"
#include "text/ascii_case.h"
#include "text/byte_order_marks.h"
#include "text/single_bytes.h"
#include "text/utf8.h"
#include "text/wide_text.h"

namespace brackwell {

namespace {

// Encodings that have no constant in the header.
constexpr TextEncoding kEncodingEUCJP = 3;
constexpr TextEncoding kEncodingShiftJIS = 8;
constexpr TextEncoding kEncodingISOLatin2 = 9;
constexpr TextEncoding kEncodingWindows1251 = 11;
constexpr TextEncoding kEncodingWindows1253 = 13;
constexpr TextEncoding kEncodingWindows1254 = 14;
constexpr TextEncoding kEncodingWindows1250 = 15;
constexpr TextEncoding kEncodingISO2022JP = 21;
constexpr TextEncoding kEncodingMacRoman = 30;
constexpr TextEncoding kEncodingISOLatin9 = 0x8000020f;
constexpr TextEncoding kEncodingKOI8R = 0x80000a02;
constexpr TextEncoding kEncodingUTF32 = 0x8c000100;
constexpr TextEncoding kEncodingUTF32LittleEndian = 0x9c000100;

/// How bytes become text.
enum class Method : std::uint8_t {
    ascii,           ///< all bytes are below 0x80
    utf8,            ///< checked, not converted
    utf16,           ///< in the encoding's byte order
    utf32,           ///< the same with four bytes to a character
    marked16,        ///< in the byte order that a mark tells, else the host's
    marked32,        ///< the same with four bytes to a character
    singleByte,      ///< each byte is a character; those below 0x80 are ASCII
    asciiExtension,  ///< by the system; bytes below 0x80, when nothing else is there, are ASCII
    system,          ///< by the system
};

struct Encoding {
    TextEncoding number;
    Method method;
    const char* systemName;  ///< null where the system is not asked
    std::string_view name;
    std::array<std::string_view, 6> otherNames = {};  ///< "-", "_" and blanks are left out in comparing
    const UpperHalf* characters = nullptr;            ///< of single bytes, unless the system is asked
    std::endian order = std::endian::native;          ///< where no mark tells it
};

// Shift_JIS as it is found in files is the code page of Windows, in which 5C and 7E are ASCII.
constexpr std::array kEncodings = {
    Encoding{TextEncodingASCII,
             Method::ascii,
             nullptr,
             "ASCII",
             {"USASCII", "ISO646-US", "ANSI_X3.4-1968", "CP367", "IBM367"}},
    Encoding{TextEncodingUTF8, Method::utf8, nullptr, "UTF-8", {"CP65001", "65001", "WINDOWS-65001"}},
    Encoding{TextEncodingISOLatin1,
             Method::singleByte,
             nullptr,
             "ISO-8859-1",
             {"8859-1", "LATIN1", "ISO-LATIN-1", "L1", "CP819", "IBM819"},
             &kISOLatin1},
    Encoding{TextEncodingUTF16, Method::marked16, nullptr, "UTF-16"},
    Encoding{TextEncodingWindows1252,
             Method::singleByte,
             nullptr,
             "windows-1252",
             {"CP1252", "1252", "WIN-1252", "X-CP1252", "MS-ANSI"},
             &kWindows1252},
    Encoding{TextEncodingUTF16BigEndian, Method::utf16, nullptr, "UTF-16BE", {}, nullptr, std::endian::big},
    Encoding{
        TextEncodingUTF16LittleEndian, Method::utf16, nullptr, "UTF-16LE", {}, nullptr, std::endian::little},
    Encoding{TextEncodingUTF32BigEndian, Method::utf32, nullptr, "UTF-32BE", {}, nullptr, std::endian::big},
    Encoding{
        kEncodingUTF32LittleEndian, Method::utf32, nullptr, "UTF-32LE", {}, nullptr, std::endian::little},
    Encoding{kEncodingUTF32, Method::marked32, nullptr, "UTF-32"},
    Encoding{kEncodingISOLatin2,
             Method::singleByte,
             "ISO-8859-2",
             "ISO-8859-2",
             {"8859-2", "LATIN2", "ISO-LATIN-2", "L2", "CP912"}},
    Encoding{kEncodingISOLatin9,
             Method::singleByte,
             nullptr,
             "ISO-8859-15",
             {"8859-15", "LATIN9", "ISO-LATIN-9", "L9", "CP923", "IBM923"},
             &kISOLatin9},
    Encoding{kEncodingWindows1250,
             Method::singleByte,
             "CP1250",
             "windows-1250",
             {"CP1250", "1250", "WIN-1250", "X-CP1250"}},
    Encoding{kEncodingWindows1251,
             Method::singleByte,
             "CP1251",
             "windows-1251",
             {"CP1251", "1251", "WIN-1251", "X-CP1251"}},
    Encoding{kEncodingKOI8R, Method::singleByte, "KOI8-R", "KOI8-R", {"KOI8", "CP20866", "20866"}},
    Encoding{kEncodingWindows1253,
             Method::singleByte,
             "CP1253",
             "windows-1253",
             {"CP1253", "1253", "WIN-1253", "X-CP1253"}},
    Encoding{kEncodingWindows1254,
             Method::singleByte,
             "CP1254",
             "windows-1254",
             {"CP1254", "1254", "WIN-1254", "X-CP1254"}},
    Encoding{kEncodingMacRoman,
             Method::singleByte,
             "MACINTOSH",
             "macintosh",
             {"MACROMAN", "X-MAC-ROMAN", "CP10000", "10000"}},
    Encoding{kEncodingEUCJP, Method::asciiExtension, "EUC-JP", "EUC-JP", {"X-EUC-JP", "UJIS"}},
    Encoding{kEncodingShiftJIS,
             Method::asciiExtension,
             "CP932",
             "Shift_JIS",
             {"SJIS", "X-SJIS", "CP932", "932", "MS932", "WINDOWS-31J"}},
    Encoding{kEncodingISO2022JP, Method::system, "ISO-2022-JP", "ISO-2022-JP"},
};

/// Takes what names of encodings are written with and without off the beginning.
void withoutSeparators(std::string_view& name) noexcept {
    name.remove_prefix(std::min(name.find_first_not_of("-_ "), name.size()));
}

/// "ISO8859_1" and "iso 8859-1" are "ISO-8859-1", and "win1252" is "WIN-1252".
bool isSameName(std::string_view a, std::string_view b) noexcept {
    for (;;) {
        withoutSeparators(a);
        withoutSeparators(b);
        if (a.empty() || b.empty()) return a.empty() && b.empty();
        if (smallLetter(a.front()) != smallLetter(b.front())) return false;
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
}

const Encoding* findEncoding(TextEncoding number) noexcept {
    const auto found = std::ranges::find(kEncodings, number, &Encoding::number);
    return found == kEncodings.end() ? nullptr : &*found;
}

std::optional<std::string> convert(std::string_view bytes, const char* from, const char* to) {
    const system::TextConverter converter(from, to);
    if (!converter.isOpen()) return std::nullopt;
    std::string result;
    result.reserve(bytes.size());
    if (!converter.convert(bytes, result)) return std::nullopt;
    return result;
}

std::optional<Data> dataOf(std::optional<std::string> text) {
    if (!text) return std::nullopt;
    return Data::adopt(std::move(*text));
}

/// Looks each byte from 0x80 on up, in its UTF-8 form; between them stands ASCII, which is copied. `append`
/// appends the character of a byte, and is asked once for each byte; it is false for a byte that is none.
template <class Append>
std::optional<Data> decodeSingleBytes(std::string_view bytes, const Append& append) {
    std::array<std::string, 128> characters;
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    while (!bytes.empty()) {
        const std::size_t ascii = asciiPrefix(bytes);
        text.append(bytes.substr(0, ascii));
        bytes.remove_prefix(ascii);
        if (bytes.empty()) break;
        std::string& character = characters[static_cast<unsigned char>(bytes.front()) - 0x80U];
        if (character.empty() && !append(bytes.front(), character)) return std::nullopt;
        text.append(character);
        bytes.remove_prefix(1);
    }
    return Data::adopt(std::move(text));
}

std::optional<Data> decodeSingleBytes(std::string_view bytes, const Encoding& encoding) {
    if (encoding.characters != nullptr)
        return decodeSingleBytes(bytes, [&](char byte, std::string& text) {
            const char16_t character = (*encoding.characters)[static_cast<unsigned char>(byte) - 0x80U];
            if (character != 0) appendCharacter(text, character);
            return character != 0;
        });
    const system::TextConverter converter(encoding.systemName, "UTF-8");
    if (!converter.isOpen()) return std::nullopt;
    return decodeSingleBytes(bytes, [&](char byte, std::string& text) {
        return converter.convert(std::string_view(&byte, 1), text);
    });
}

/// Nothing when a character has no byte.
std::optional<Data> encodeSingleBytes(std::string_view text, const UpperHalf& characters) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const std::size_t ascii = asciiPrefix(text);
        bytes.append(text.substr(0, ascii));
        text.remove_prefix(ascii);
        if (text.empty()) break;
        const UTF8Character character = firstCharacter(text);
        const auto found = std::ranges::find(characters, character.value);
        if (found == characters.end()) return std::nullopt;
        bytes += static_cast<char>(0x80 + (found - characters.begin()));
        text.remove_prefix(character.size);
    }
    return Data::adopt(std::move(bytes));
}

std::optional<Data> decodeUTF8(const Data& data) {
    if (!isValidUTF8(data.bytes())) return std::nullopt;
    return data.bytes().starts_with(kUTF8Mark) ? data.from(kUTF8Mark.size()) : data;
}

std::optional<Data> decodeWide(std::string_view bytes, std::size_t unit, std::endian order) {
    return dataOf(unit == 2 ? decodeUTF16(bytes, order) : decodeUTF32(bytes, order));
}

/// Goes by a mark, which is no part of the text.
std::optional<Data> decodeMarked(std::string_view bytes, std::size_t unit) {
    for (const WideEncoding& wide : kWideEncodings)
        if (wide.unit == unit && bytes.starts_with(wide.mark))
            return decodeWide(bytes.substr(wide.mark.size()), unit, wide.order);
    return decodeWide(bytes, unit, std::endian::native);
}

/// Asks the system, which drops some characters silently and takes similar ones for others. Nothing was lost
/// when the bytes are the same text again.
std::optional<Data> encodeBySystem(std::string_view text, const char* name) {
    std::optional<std::string> bytes = convert(text, "UTF-8", name);
    if (!bytes || convert(*bytes, name, "UTF-8") != text) return std::nullopt;
    return Data::adopt(std::move(*bytes));
}

}  // namespace

std::optional<Data> decodeText(const Data& data, TextEncoding encoding) {
    const Encoding* found = findEncoding(encoding);
    if (found == nullptr) return std::nullopt;
    const std::string_view bytes = data.bytes();
    const auto isASCII = [&] { return asciiPrefix(bytes) == bytes.size(); };
    switch (found->method) {
        case Method::ascii:
            return isASCII() ? std::optional(data) : std::nullopt;
        case Method::utf8:
            return decodeUTF8(data);
        case Method::utf16:
            return decodeWide(bytes, 2, found->order);
        case Method::utf32:
            return decodeWide(bytes, 4, found->order);
        case Method::marked16:
            return decodeMarked(bytes, 2);
        case Method::marked32:
            return decodeMarked(bytes, 4);
        case Method::singleByte:
            return isASCII() ? data : decodeSingleBytes(bytes, *found);
        case Method::asciiExtension:
            if (isASCII()) return data;
            break;
        case Method::system:
            break;
    }
    return dataOf(convert(bytes, found->systemName, "UTF-8"));
}

std::optional<Data> encodeText(std::string_view text, TextEncoding encoding) {
    const Encoding* found = findEncoding(encoding);
    if (found == nullptr || !isValidUTF8(text)) return std::nullopt;
    switch (found->method) {
        case Method::ascii:
            if (asciiPrefix(text) != text.size()) return std::nullopt;
            return Data::copy(text);
        case Method::utf8:
            return Data::copy(text);
        case Method::utf16:
        case Method::marked16:
            return Data::adopt(encodeUTF16(text, found->order));
        case Method::utf32:
        case Method::marked32:
            return Data::adopt(encodeUTF32(text, found->order));
        case Method::singleByte:
            if (found->characters != nullptr) return encodeSingleBytes(text, *found->characters);
            break;
        case Method::asciiExtension:
        case Method::system:
            break;
    }
    return encodeBySystem(text, found->systemName);
}

OptionalText nameOfTextEncoding(TextEncoding encoding) noexcept {
    const Encoding* found = findEncoding(encoding);
    return found == nullptr ? OptionalText() : found->name;
}

TextEncoding textEncodingNamed(std::string_view name) noexcept {
    name = name.substr(0, name.find(':'));  // after it stands the year of a standard: "ISO_8859-1:1987"
    withoutSeparators(name);
    if (name.empty()) return TextEncodingNone;  // also what unused places of the table hold
    const auto isNamed = [&](const Encoding& encoding) {
        const auto matches = [&](std::string_view other) { return isSameName(name, other); };
        return matches(encoding.name) || std::ranges::any_of(encoding.otherNames, matches);
    };
    const auto found = std::ranges::find_if(kEncodings, isNamed);
    return found == kEncodings.end() ? TextEncodingNone : found->number;
}

std::vector<TextEncoding> knownTextEncodings() {
    std::vector<TextEncoding> numbers;
    numbers.reserve(kEncodings.size());
    for (const Encoding& encoding : kEncodings) numbers.push_back(encoding.number);
    return numbers;
}

}  // namespace brackwell
