// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <set>
#include <string>
#include <vector>

using namespace brackwell;
using namespace std::string_literals;

namespace {

constexpr bool kHostIsBigEndian = std::endian::native == std::endian::big;

std::optional<std::string> decoded(std::string_view bytes, TextEncoding encoding) {
    const auto text = decodeText(Data::view(bytes), encoding);
    if (!text) return std::nullopt;
    return std::string(text->bytes());
}

std::optional<std::string> encoded(std::string_view text, TextEncoding encoding) {
    const auto bytes = encodeText(text, encoding);
    if (!bytes) return std::nullopt;
    return std::string(bytes->bytes());
}

TextEncoding named(std::string_view name) {
    const TextEncoding encoding = textEncodingNamed(name);
    REQUIRE(encoding != TextEncodingNone);
    return encoding;
}

/// Which single bytes are no text.
std::set<unsigned> undefinedBytes(TextEncoding encoding) {
    std::set<unsigned> undefined;
    for (unsigned byte = 0; byte < 0x100; ++byte) {
        if (!decoded(std::string{static_cast<char>(byte)}, encoding)) undefined.insert(byte);
    }
    return undefined;
}

std::set<unsigned> range(unsigned from, unsigned to) {
    std::set<unsigned> bytes;
    for (unsigned byte = from; byte <= to; ++byte) bytes.insert(byte);
    return bytes;
}

std::set<unsigned> together(std::set<unsigned> a, const std::set<unsigned>& b) {
    a.insert(b.begin(), b.end());
    return a;
}

/// A text in an encoding.
struct Sample {
    const char* name;
    std::string text;
    std::string bytes;
};

const std::vector<Sample> kSamples = {
    {"ASCII", "plain\r\n\t~", "plain\r\n\t~"},
    {"UTF-8", "M\u00FCller \u20AC \U0001F600", "M\xC3\xBCller \xE2\x82\xAC \xF0\x9F\x98\x80"},
    {"ISO-8859-1", "M\u00FCller\u00A0\u0080", "M\xFCller\xA0\x80"},
    {"ISO-8859-2", "\u0141\u00F3d\u017A",
     "\xA3\xF3"
     "d\xBC"},
    {"ISO-8859-15", "M\u00FCller \u20AC\u0153", "M\xFCller \xA4\xBD"},
    {"KOI8-R", "\u0411\u0430\u043D\u043A", "\xE2\xC1\xCE\xCB"},
    {"windows-1250", "\u0141\u00F3d\u017A \u20AC",
     "\xA3\xF3"
     "d\x9F \x80"},
    {"windows-1251", "\u0411\u0430\u043D\u043A", "\xC1\xE0\xED\xEA"},
    {"windows-1252", "M\u00FCller \u20AC\u2019", "M\xFCller \x80\x92"},
    {"windows-1253", "\u0391\u03B8\u03AE\u03BD\u03B1", "\xC1\xE8\xDE\xED\xE1"},
    {"windows-1254", "\u0130stanbul", "\xDDstanbul"},
    {"macintosh", "M\u00FCller\u2026", "M\x9Fller\xC9"},
    {"EUC-JP", "a\u6771\u4EAC\\~", "a\xC5\xEC\xB5\xFE\\~"},
    {"Shift_JIS", "a\u6771\u4EAC\\~\uFF71", "a\x93\x8C\x8B\x9E\\~\xB1"},
    {"ISO-2022-JP", "a\u6771\u4EAC", "a\x1B$BEl5~\x1B(B"},
    {"UTF-16BE", "A\u20AC\U0001F600\0\uFEFF"s, "\0A\x20\xAC\xD8\x3D\xDE\0\0\0\xFE\xFF"s},
    {"UTF-16LE", "A\u20AC\U0001F600\0\uFEFF"s, "A\0\xAC\x20\x3D\xD8\0\xDE\0\0\xFF\xFE"s},
    {"UTF-32BE", "A\U0001F600\uFEFF", "\0\0\0A\0\x01\xF6\0\0\0\xFE\xFF"s},
    {"UTF-32LE", "A\U0001F600\uFEFF", "A\0\0\0\0\xF6\x01\0\xFF\xFE\0\0"s},
    {"UTF-16", "A\u20AC", kHostIsBigEndian ? "\0A\x20\xAC"s : "A\0\xAC\x20"s},
    {"UTF-32", "A\u20AC", kHostIsBigEndian ? "\0\0\0A\0\0\x20\xAC"s : "A\0\0\0\xAC\x20\0\0"s},
};

}  // namespace

TEST_CASE("every encoding reads and writes a known sample") {
    CHECK(kSamples.size() == knownTextEncodings().size());
    for (const Sample& sample : kSamples) {
        CAPTURE(sample.name);
        const TextEncoding encoding = named(sample.name);
        CHECK(decoded(sample.bytes, encoding) == sample.text);
        CHECK(encoded(sample.text, encoding) == sample.bytes);
    }
}

TEST_CASE("every encoding reads and writes the empty text") {
    for (const TextEncoding encoding : knownTextEncodings()) {
        CAPTURE(encoding);
        CHECK(decoded("", encoding) == "");
        CHECK(decodeText(Data(), encoding) == Data());
        CHECK(encoded("", encoding) == "");
        CHECK(encoded({}, encoding) == "");
    }
}

TEST_CASE("exactly the bytes without a meaning are refused") {
    struct Row {
        const char* name;
        std::set<unsigned> undefined;
    };
    const std::vector<Row> rows = {
        {"ASCII", range(0x80, 0xFF)},
        {"UTF-8", range(0x80, 0xFF)},
        {"ISO-8859-1", {}},
        {"ISO-8859-2", {}},
        {"ISO-8859-15", {}},
        {"KOI8-R", {}},
        {"windows-1250", {0x81, 0x83, 0x88, 0x90, 0x98}},
        {"windows-1251", {0x98}},
        {"windows-1252", {0x81, 0x8D, 0x8F, 0x90, 0x9D}},
        {"windows-1253",
         {0x81, 0x88, 0x8A, 0x8C, 0x8D, 0x8E, 0x8F, 0x90, 0x98, 0x9A, 0x9C, 0x9D, 0x9E, 0x9F, 0xAA, 0xD2,
          0xFF}},
        {"windows-1254", {0x81, 0x8D, 0x8E, 0x8F, 0x90, 0x9D, 0x9E}},
        {"macintosh", {}},
        // Leading bytes alone are no text; the bytes from 80 on without a second one are control characters
        // here and half-width letters there.
        {"EUC-JP", together({0x8E, 0x8F}, range(0xA0, 0xFF))},
        {"Shift_JIS", together(range(0x80, 0xA0), range(0xE0, 0xFF))},
        {"ISO-2022-JP", together({0x1B}, range(0x80, 0xFF))},
        {"UTF-16", range(0, 0xFF)},
        {"UTF-16BE", range(0, 0xFF)},
        {"UTF-16LE", range(0, 0xFF)},
        {"UTF-32", range(0, 0xFF)},
        {"UTF-32BE", range(0, 0xFF)},
        {"UTF-32LE", range(0, 0xFF)},
    };
    CHECK(rows.size() == knownTextEncodings().size());
    for (const Row& row : rows) {
        CAPTURE(row.name);
        CHECK(undefinedBytes(named(row.name)) == row.undefined);
    }
}

TEST_CASE("every byte with a meaning is written again as it was read") {
    for (const TextEncoding encoding : knownTextEncodings()) {
        for (unsigned byte = 0; byte < 0x100; ++byte) {
            CAPTURE(encoding);
            CAPTURE(byte);
            const std::string bytes = {static_cast<char>(byte)};
            const auto text = decoded(bytes, encoding);
            if (text) CHECK(encoded(*text, encoding) == bytes);
        }
    }
}

TEST_CASE("every 16-bit unit is read and written again, save lone surrogates") {
    int wrong = 0;
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const bool surrogate = unit >= 0xD800 && unit <= 0xDFFF;
        const std::string big = {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
        const std::string little = {big[1], big[0]};
        const auto text = decoded(big, TextEncodingUTF16BigEndian);
        if (text.has_value() == surrogate || text != decoded(little, TextEncodingUTF16LittleEndian)) ++wrong;
        if (surrogate) continue;
        if (!text || !isValidUTF8(*text) || encoded(*text, TextEncodingUTF16BigEndian) != big) ++wrong;
    }
    CHECK(wrong == 0);
}

TEST_CASE("bytes that are no UTF-16 or UTF-32 are refused as a whole") {
    struct Row {
        const char* name;
        std::string bytes;
    };
    const std::vector<Row> rows = {
        {"UTF-16BE", "\0A\0"s},                   // half a unit
        {"UTF-16LE", "A\0B"s},                    //
        {"UTF-16BE", "\0A\xD8\x3D"s},             // the second surrogate is missing
        {"UTF-16BE", "\xD8\x3D\0A"s},             //
        {"UTF-16BE", "\xD8\x3D\xD8\x3D\xDE\0"s},  //
        {"UTF-16BE", "\xDE\0\0A"s},               // the first is missing
        {"UTF-16BE", "\xDE\0\xD8\x3D"s},          // the wrong way round
        {"UTF-16LE",
         "\x3D\xD8"
         "A\0"s},
        {"UTF-16LE",
         "\0\xDE"
         "A\0"s},
        {"UTF-32BE", "\0\0\0A\0\0\0"s},
        {"UTF-32BE", "\0\0\xD8\0"s},
        {"UTF-32BE", "\0\0\xDF\xFF"s},
        {"UTF-32BE", "\0\x11\0\0"s},
        {"UTF-32BE", "\xFF\xFF\xFF\xFF"s},
        {"UTF-32LE", "\0\xD8\0\0"s},
        {"UTF-32LE", "\0\0\x11\0"s},
        {"UTF-16", "\xFE\xFF\0"s},
        {"UTF-16", "\xFF"s},
        {"UTF-32", "\0\0\xFE\xFF\0\0\0"s},
        {"UTF-32", "\0\0\xFE"s},
    };
    for (const Row& row : rows) {
        CAPTURE(row.name);
        CAPTURE(row.bytes.size());
        CHECK_FALSE(decoded(row.bytes, named(row.name)));
    }
}

TEST_CASE("multi-byte text that is cut or wrong is refused") {
    CHECK_FALSE(decoded("a\xC5", named("EUC-JP")));
    CHECK_FALSE(decoded("\xC5 ", named("EUC-JP")));
    CHECK_FALSE(decoded("a\x93", named("Shift_JIS")));
    CHECK_FALSE(decoded("\x93 ", named("Shift_JIS")));
    CHECK_FALSE(decoded("a\x1B$BE", named("ISO-2022-JP")));
    CHECK_FALSE(decoded("a\x1B$", named("ISO-2022-JP")));
    CHECK_FALSE(
        decoded("a\x1B"
                "b",
                named("ISO-2022-JP")));
}

TEST_CASE("valid UTF-8 is shared, not copied") {
    const Data data = Data::copy("M\xC3\xBCller");
    const auto text = decodeText(data, TextEncodingUTF8);
    REQUIRE(text);
    CHECK(static_cast<const void*>(text->bytes().data()) == data.bytes().data());
    CHECK_FALSE(text->isView());
}

TEST_CASE("the text of a view is a view until it is made independent") {
    std::string bytes = "abc";
    for (const TextEncoding encoding : {TextEncodingUTF8, TextEncodingASCII, TextEncodingWindows1252}) {
        CAPTURE(encoding);
        const auto text = decodeText(Data::view(bytes), encoding);
        REQUIRE(text);
        CHECK(text->isView());
        CHECK_FALSE(text->owned().isView());
    }
}

TEST_CASE("ASCII bytes in an encoding that extends ASCII are shared") {
    const Data data = Data::copy("<OFX>plain \\ ~ text</OFX>");
    for (const char* name :
         {"ASCII", "ISO-8859-1", "ISO-8859-2", "ISO-8859-15", "KOI8-R", "windows-1250", "windows-1251",
          "windows-1252", "windows-1253", "windows-1254", "macintosh", "EUC-JP", "Shift_JIS"}) {
        CAPTURE(name);
        const auto text = decodeText(data, named(name));
        REQUIRE(text);
        CHECK(static_cast<const void*>(text->bytes().data()) == data.bytes().data());
        // The shared bytes are what a conversion gives: with another character they are converted.
        for (unsigned byte = 0; byte < 0x80; ++byte) {
            const std::string ascii = {static_cast<char>(byte)};
            if (name == "ASCII"s) continue;
            const std::string high = name == "EUC-JP"s      ? "\xC5\xEC"s
                                     : name == "Shift_JIS"s ? "\xB1"s
                                                            : "\xC9"s;
            const auto converted = decoded(ascii + high, named(name));
            REQUIRE(converted);
            CHECK(converted->substr(0, 1) == ascii);
            CHECK(converted->size() > 2);
        }
    }
}

TEST_CASE("the bytes of ISO-2022-JP are never taken for ASCII") {
    CHECK(decoded("\x1B$BEl5~\x1B(B", named("ISO-2022-JP")) == "\u6771\u4EAC");
    CHECK(decoded("plain", named("ISO-2022-JP")) == "plain");
}

TEST_CASE("a leading mark of UTF-8 is dropped once") {
    CHECK(decoded("\xEF\xBB\xBF"
                  "abc",
                  TextEncodingUTF8) == "abc");
    CHECK(decoded("\xEF\xBB\xBF", TextEncodingUTF8) == "");
    CHECK(decoded("\xEF\xBB\xBF\xEF\xBB\xBF"
                  "a",
                  TextEncodingUTF8) ==
          "\xEF\xBB\xBF"
          "a");
    CHECK(decoded("a\xEF\xBB\xBF", TextEncodingUTF8) == "a\xEF\xBB\xBF");
    CHECK_FALSE(decoded("\xEF\xBB", TextEncodingUTF8));
    CHECK_FALSE(decoded("\xEF\xBB\xBF\xFF", TextEncodingUTF8));
}

TEST_CASE("UTF-8 is strict") {
    for (const std::string_view bytes :
         {"\xFF", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "a\xC3", "\xE9t\xE9"}) {
        CAPTURE(bytes);
        CHECK_FALSE(decoded(bytes, TextEncodingUTF8));
        CHECK_FALSE(encoded(bytes, TextEncodingUTF8));
        CHECK_FALSE(encoded(bytes, TextEncodingUTF16BigEndian));
        CHECK_FALSE(encoded(bytes, TextEncodingISOLatin1));
    }
}

TEST_CASE("UTF-16 goes by its mark, else by the host's byte order") {
    CHECK(decoded("\xFE\xFF\0A"s, TextEncodingUTF16) == "A");
    CHECK(decoded("\xFF\xFE"
                  "A\0"s,
                  TextEncodingUTF16) == "A");
    CHECK(decoded(kHostIsBigEndian ? "\0A"s : "A\0"s, TextEncodingUTF16) == "A");
    CHECK(decoded("\xFE\xFF", TextEncodingUTF16) == "");
    CHECK(decoded("\xFE\xFF\xFE\xFF", TextEncodingUTF16) == "\uFEFF");
    CHECK(decoded("\0\0\xFE\xFF\0\0\0A"s, named("UTF-32")) == "A");
    CHECK(decoded("\xFF\xFE\0\0A\0\0\0"s, named("UTF-32")) == "A");
}

TEST_CASE("encodings with a byte order of their own keep a mark as a character") {
    CHECK(decoded("\xFE\xFF\0A"s, TextEncodingUTF16BigEndian) ==
          "\uFEFF"
          "A");
    CHECK(decoded("\xFF\xFE"
                  "A\0"s,
                  TextEncodingUTF16LittleEndian) ==
          "\uFEFF"
          "A");
    CHECK(decoded("\0\0\xFE\xFF\0\0\0A"s, TextEncodingUTF32BigEndian) ==
          "\uFEFF"
          "A");
}

TEST_CASE("no mark is written, but one in the text is kept") {
    CHECK(encoded("A", TextEncodingUTF8) == "A");
    CHECK(encoded("A", TextEncodingUTF16) == (kHostIsBigEndian ? "\0A"s : "A\0"s));
    CHECK(encoded("\uFEFF", TextEncodingUTF16) == (kHostIsBigEndian ? "\xFE\xFF"s : "\xFF\xFE"s));
    CHECK(encoded("\uFEFF", TextEncodingUTF8) == "\xEF\xBB\xBF");
}

TEST_CASE("a character that the encoding cannot hold fails the whole") {
    struct Row {
        const char* name;
        std::string text;
    };
    const std::vector<Row> rows = {
        {"ASCII", "\u00E4"},
        {"ASCII", "a\U000E0041"},  // a tag character; C libraries are known to drop it
        {"ISO-8859-1", "\u20AC"},
        {"ISO-8859-1", "\U000E0041"},
        {"windows-1252", "abc\u0141"},
        {"windows-1252", "\u0081"},
        {"windows-1252", "\u00E4\U000E0041"},
        {"windows-1252", "\uFEFF"},
        {"macintosh", "\u00A4"},
        {"Shift_JIS", "\u00A5"},  // not the backslash that stands in its place
        {"EUC-JP", "\U0001F600"},
        {"ISO-2022-JP", "\u00E4"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.name);
        CAPTURE(row.text);
        CHECK_FALSE(encoded(row.text, named(row.name)));
    }
}

TEST_CASE("NUL is a character like others in every encoding") {
    for (const TextEncoding encoding : knownTextEncodings()) {
        CAPTURE(encoding);
        const auto bytes = encodeText("a\0b"s, encoding);
        REQUIRE(bytes);
        CHECK(decodeText(*bytes, encoding) == Data::view("a\0b"s));
    }
}

TEST_CASE("long texts are converted in pieces without a seam") {
    // Characters of one to four bytes, so that pieces end at every place inside of them.
    std::string text;
    for (int i = 0; text.size() < 200000; ++i)
        text += i % 3 == 0 ? "\U0001F600" : i % 5 == 0 ? "\u20AC" : "x";
    for (const char* name : {"UTF-16BE", "UTF-16LE", "UTF-32BE", "UTF-16", "UTF-32"}) {
        CAPTURE(name);
        const auto bytes = encodeText(text, named(name));
        REQUIRE(bytes);
        CHECK(decodeText(*bytes, named(name)) == Data::view(text));
    }
    const std::string latin(100001, '\xE4');
    const auto decodedLatin = decoded(latin, TextEncodingISOLatin1);
    REQUIRE(decodedLatin);
    CHECK(decodedLatin->size() == 2 * latin.size());
    CHECK(encoded(*decodedLatin, TextEncodingISOLatin1) == latin);
    CHECK_FALSE(decoded(std::string(100000, '\xE4') + "\x81", TextEncodingWindows1252));
}

TEST_CASE("an encoding that is not known decodes, encodes and is called nothing") {
    for (const TextEncoding encoding :
         {TextEncodingNone, TextEncoding{2}, TextEncoding{0x90000101}, ~TextEncoding{0}}) {
        CAPTURE(encoding);
        CHECK_FALSE(decoded("a", encoding));
        CHECK_FALSE(decoded("", encoding));
        CHECK_FALSE(encoded("a", encoding));
        CHECK_FALSE(nameOfTextEncoding(encoding));
    }
}

TEST_CASE("encodings have their usual names") {
    struct Row {
        TextEncoding encoding;
        std::string_view name;
    };
    constexpr std::array rows = {
        Row{1, "ASCII"},
        Row{3, "EUC-JP"},
        Row{4, "UTF-8"},
        Row{5, "ISO-8859-1"},
        Row{8, "Shift_JIS"},
        Row{9, "ISO-8859-2"},
        Row{10, "UTF-16"},
        Row{11, "windows-1251"},
        Row{12, "windows-1252"},
        Row{13, "windows-1253"},
        Row{14, "windows-1254"},
        Row{15, "windows-1250"},
        Row{21, "ISO-2022-JP"},
        Row{30, "macintosh"},
        Row{0x8000020f, "ISO-8859-15"},
        Row{0x80000a02, "KOI8-R"},
        Row{0x8c000100, "UTF-32"},
        Row{0x90000100, "UTF-16BE"},
        Row{0x94000100, "UTF-16LE"},
        Row{0x98000100, "UTF-32BE"},
        Row{0x9c000100, "UTF-32LE"},
    };
    CHECK(rows.size() == knownTextEncodings().size());
    for (const Row& row : rows) {
        CAPTURE(row.name);
        CHECK(nameOfTextEncoding(row.encoding) == row.name);
        CHECK(textEncodingNamed(row.name) == row.encoding);
    }
}

TEST_CASE("encodings are found by their other names, without case, hyphens, underscores, blanks and years") {
    struct Row {
        TextEncoding encoding;
        std::vector<std::string_view> names;
    };
    const std::vector<Row> rows = {
        {TextEncodingASCII,
         {"ascii", "US-ASCII", "us-ascii", "USASCII", "UsAscii", "ISO646-US", "us_ascii", "ANSI_X3.4-1968",
          "cp367"}},
        {TextEncodingUTF8, {"utf-8", "UTF8", "utf8", "utf_8", "cp65001", "65001"}},
        {TextEncodingISOLatin1,
         {"iso-8859-1", "8859-1", "ISO8859-1", "iso8859-1", "ISO_8859-1", "LATIN1", "Latin-1", "ISO8859_1",
          "iso88591", "8859_1", "cp819", "CP-819", "IBM819", "l1", "iso-latin-1", "ISO 8859-1",
          "ISO_8859-1:1987"}},
        {TextEncodingUTF16, {"utf-16", "UTF16"}},
        {TextEncodingUTF16BigEndian, {"utf-16be", "UTF16BE"}},
        {TextEncodingUTF16LittleEndian, {"Utf-16Le", "UTF16LE"}},
        {TextEncodingUTF32BigEndian, {"utf-32be", "UTF32BE"}},
        {TextEncodingWindows1252,
         {"1252", "CP1252", "cp1252", "WINDOWS-1252", "Windows-1252", "win-1252", "WIN1252", "windows1252",
          "windows_1252", "Cp-1252", "x-cp1252", "-1252-", "Windows 1252", " 1252 "}},
        {0x9c000100, {"utf-32le", "UTF32LE"}},
        {0x8c000100, {"utf-32", "UTF32"}},
        {9, {"8859-2", "ISO8859-2", "ISO_8859-2", "LATIN2", "LATIN-2"}},
        {0x8000020f,
         {"iso-8859-15", "ISO8859-15", "ISO8859_15", "iso885915", "8859-15", "latin9", "LATIN-9", "l9",
          "cp923"}},
        {0x80000a02, {"koi8-r", "KOI8R", "koi8_r", "koi8", "cp20866"}},
        {15, {"1250", "cp1250", "win-1250"}},
        {11, {"1251", "CP1251", "win-1251"}},
        {13, {"1253", "CP1253"}},
        {14, {"1254", "CP1254"}},
        {30, {"MacRoman", "x-mac-roman"}},
        {3, {"eucjp", "EUC_JP"}},
        {8, {"sjis", "SHIFT-JIS", "SHIFTJIS", "CP932", "932", "ms932", "windows-31j", "x-sjis"}},
        {21, {"iso-2022-jp", "ISO2022-JP", "ISO2022JP"}},
    };
    CHECK(rows.size() == knownTextEncodings().size());
    for (const Row& row : rows) {
        for (const std::string_view name : row.names) {
            CAPTURE(name);
            CHECK(textEncodingNamed(name) == row.encoding);
        }
    }
}

TEST_CASE("other names are no encoding") {
    for (const std::string_view name :
         {"", " ", "UTF", "UTF-8\t", "UTF-80", "NONE", "125", "12522", "-", "_", "-_-", "ISO-8859",
          "ISO-8859-11", "ISO.8859.1", "L10", "CP", "WIN", ":", ":UTF-8"}) {
        CAPTURE(name);
        CHECK(textEncodingNamed(name) == TextEncodingNone);
    }
    CHECK(textEncodingNamed("UTF-8\0"s) == TextEncodingNone);
}

TEST_CASE("the known encodings are distinct and always in the same order") {
    const auto encodings = knownTextEncodings();
    CHECK(std::set(encodings.begin(), encodings.end()).size() == encodings.size());
    CHECK(encodings == knownTextEncodings());
    CHECK(std::ranges::find(encodings, TextEncodingNone) == encodings.end());
}
