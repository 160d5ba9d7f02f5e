// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <iconv.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <new>
#include <span>

#include "text/ascii_case.h"
#include "text/byte_order_marks.h"
#include "text/utf8.h"

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

constexpr bool kHostIsBigEndian = std::endian::native == std::endian::big;

/// How bytes become text.
enum class Method : std::uint8_t {
    ascii,           ///< all bytes are below 0x80
    utf8,            ///< checked, not converted
    marked16,        ///< iconv, in the byte order that a mark tells
    marked32,        ///< the same with four bytes to a character
    singleByte,      ///< each byte is a character; those below 0x80 are ASCII
    asciiExtension,  ///< iconv; bytes below 0x80, when nothing else is there, are ASCII
    other,           ///< iconv
};

struct Encoding {
    TextEncoding number;
    Method method;
    const char* iconvName;  ///< of marked encodings: the host's byte order
    std::string_view name;
    std::array<std::string_view, 6> otherNames = {};  ///< "-", "_" and blanks are left out in comparing
};

// Shift_JIS as it is found in files is the code page of Windows, in which 5C and 7E are ASCII.
constexpr std::array kEncodings = {
    Encoding{TextEncodingASCII,
             Method::ascii,
             "ASCII",
             "ASCII",
             {"USASCII", "ISO646-US", "ANSI_X3.4-1968", "CP367", "IBM367"}},
    Encoding{TextEncodingUTF8, Method::utf8, "UTF-8", "UTF-8", {"CP65001", "65001", "WINDOWS-65001"}},
    Encoding{TextEncodingISOLatin1,
             Method::singleByte,
             "ISO-8859-1",
             "ISO-8859-1",
             {"8859-1", "LATIN1", "ISO-LATIN-1", "L1", "CP819", "IBM819"}},
    Encoding{TextEncodingUTF16, Method::marked16, kHostIsBigEndian ? "UTF-16BE" : "UTF-16LE", "UTF-16"},
    Encoding{TextEncodingWindows1252,
             Method::singleByte,
             "CP1252",
             "windows-1252",
             {"CP1252", "1252", "WIN-1252", "X-CP1252", "MS-ANSI"}},
    Encoding{TextEncodingUTF16BigEndian, Method::other, "UTF-16BE", "UTF-16BE"},
    Encoding{TextEncodingUTF16LittleEndian, Method::other, "UTF-16LE", "UTF-16LE"},
    Encoding{TextEncodingUTF32BigEndian, Method::other, "UTF-32BE", "UTF-32BE"},
    Encoding{kEncodingUTF32LittleEndian, Method::other, "UTF-32LE", "UTF-32LE"},
    Encoding{kEncodingUTF32, Method::marked32, kHostIsBigEndian ? "UTF-32BE" : "UTF-32LE", "UTF-32"},
    Encoding{kEncodingISOLatin2,
             Method::singleByte,
             "ISO-8859-2",
             "ISO-8859-2",
             {"8859-2", "LATIN2", "ISO-LATIN-2", "L2", "CP912"}},
    Encoding{kEncodingISOLatin9,
             Method::singleByte,
             "ISO-8859-15",
             "ISO-8859-15",
             {"8859-15", "LATIN9", "ISO-LATIN-9", "L9", "CP923", "IBM923"}},
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
    Encoding{kEncodingISO2022JP, Method::other, "ISO-2022-JP", "ISO-2022-JP"},
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

/// Throws when there is less memory than it takes to load an encoding.
void requireMemory() {
    constexpr std::size_t enough = std::size_t{1} << 20;
    ::operator delete(::operator new(enough));
}

/// A conversion that the C library has begun; ended on every way out.
class Converter {
public:
    Converter(const char* from, const char* to) : handle_(::iconv_open(to, from)) {
        if (isOpen()) return;
        // The C library loads encodings when they are wanted. Without memory for that it mostly says that
        // there is no such encoding; that is so when it says it again and there is memory.
        handle_ = ::iconv_open(to, from);
        if (!isOpen()) requireMemory();
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (isOpen()) ::iconv_close(handle_);
    }

    // NOLINTNEXTLINE(performance-no-int-to-ptr): what POSIX has iconv_open return
    bool isOpen() const noexcept { return handle_ != reinterpret_cast<iconv_t>(-1); }

    /// Appends all that the bytes become; false when that is not possible without any loss.
    bool convert(std::string_view bytes, std::string& result) const {
        char* input = const_cast<char*>(bytes.data());  // iconv only reads, but its type does not say so
        std::size_t inputSize = bytes.size();
        return run(&input, &inputSize, result) && run(nullptr, nullptr, result);
    }

private:
    /// Without input, appends what returns to the encoding's first state.
    bool run(char** input, std::size_t* inputSize, std::string& result) const {
        constexpr auto failure = static_cast<std::size_t>(-1);
        // Large enough that few calls are needed, small enough for any thread's stack.
        std::array<char, 16384> chunk;
        std::size_t outcome = failure;
        int problem = 0;
        do {
            char* output = chunk.data();
            std::size_t room = chunk.size();
            outcome = ::iconv(handle_, input, inputSize, &output, &room);
            problem = errno;
            result.append(chunk.data(), chunk.size() - room);
        } while (outcome == failure && problem == E2BIG);
        return outcome == 0;  // more than 0 counts characters that were replaced by others
    }

    iconv_t handle_;
};

std::optional<std::string> convert(std::string_view bytes, const char* from, const char* to) {
    const Converter converter(from, to);
    if (!converter.isOpen()) return std::nullopt;
    std::string result;
    result.reserve(bytes.size());
    if (!converter.convert(bytes, result)) return std::nullopt;
    return result;
}

std::optional<Data> decodeByIconv(std::string_view bytes, const char* from) {
    auto text = convert(bytes, from, "UTF-8");
    if (!text) return std::nullopt;
    return Data::adopt(std::move(*text));
}

/// Converts each byte from 0x80 on once and looks it up from then on; between them stands ASCII, which is
/// copied. Asking iconv for all of a text takes ten times as long.
std::optional<Data> decodeSingleBytes(std::string_view bytes, const char* from) {
    const Converter converter(from, "UTF-8");
    if (!converter.isOpen()) return std::nullopt;
    std::array<std::string, 128> characters;
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    while (!bytes.empty()) {
        const std::size_t ascii = asciiPrefix(bytes);
        text.append(bytes.substr(0, ascii));
        bytes.remove_prefix(ascii);
        if (bytes.empty()) break;
        std::string& character = characters[static_cast<unsigned char>(bytes.front()) - 0x80U];
        if (character.empty() && !converter.convert(bytes.substr(0, 1), character)) return std::nullopt;
        text.append(character);
        bytes.remove_prefix(1);
    }
    return Data::adopt(std::move(text));
}

std::optional<Data> decodeUTF8(const Data& data) {
    if (!isValidUTF8(data.bytes())) return std::nullopt;
    return data.bytes().starts_with(kUTF8Mark) ? data.from(kUTF8Mark.size()) : data;
}

/// Of the encodings with characters of so many bytes the one that the mark tells, without the mark.
std::optional<Data> decodeMarked(std::string_view bytes, std::size_t unit, const char* unmarked) {
    for (const WideEncoding& wide : kWideEncodings)
        if (wide.unit == unit && bytes.starts_with(wide.mark))
            return decodeByIconv(bytes.substr(wide.mark.size()), wide.name);
    return decodeByIconv(bytes, unmarked);
}

}  // namespace

std::optional<Data> decodeText(const Data& data, TextEncoding encoding) {
    const Encoding* found = findEncoding(encoding);
    if (found == nullptr) return std::nullopt;
    const auto isASCII = [&] { return asciiPrefix(data.bytes()) == data.size(); };
    switch (found->method) {
        case Method::ascii:
            return isASCII() ? std::optional(data) : std::nullopt;
        case Method::utf8:
            return decodeUTF8(data);
        case Method::marked16:
            return decodeMarked(data.bytes(), 2, found->iconvName);
        case Method::marked32:
            return decodeMarked(data.bytes(), 4, found->iconvName);
        case Method::singleByte:
            return isASCII() ? data : decodeSingleBytes(data.bytes(), found->iconvName);
        case Method::asciiExtension:
            if (isASCII()) return data;
            break;
        case Method::other:
            break;
    }
    return decodeByIconv(data.bytes(), found->iconvName);
}

std::optional<Data> encodeText(std::string_view text, TextEncoding encoding) {
    const Encoding* found = findEncoding(encoding);
    if (found == nullptr || !isValidUTF8(text)) return std::nullopt;
    if (found->method == Method::utf8) return Data::copy(text);

    auto bytes = convert(text, "UTF-8", found->iconvName);
    if (!bytes) return std::nullopt;
    // The C library drops some characters silently and takes similar ones for others. Nothing was lost
    // when the bytes are the same text again.
    if (convert(*bytes, found->iconvName, "UTF-8") != text) return std::nullopt;
    return Data::adopt(std::move(*bytes));
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
