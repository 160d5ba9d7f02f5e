// SPDX-License-Identifier: Apache-2.0
#include "json/writer.h"

#include <array>
#include <charconv>
#include <cstring>
#include <string>

#include "console/output.h"
#include "text/characters.h"
#include "text/visible_text.h"

namespace tool {
namespace {

/// What stands for each byte inside a string: itself (0), "\u00xx" ('u'), or a backslash and a letter.
constexpr std::array<char, 256> kEscapes = [] {
    std::array<char, 256> escapes{};
    for (std::size_t i = 0; i < 0x20; ++i) escapes[i] = 'u';
    escapes['\b'] = 'b';
    escapes['\t'] = 't';
    escapes['\n'] = 'n';
    escapes['\f'] = 'f';
    escapes['\r'] = 'r';
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    return escapes;
}();

char escapeOf(char c) noexcept { return kEscapes[static_cast<unsigned char>(c)]; }

/// Writes a character of up to 16 bits as "\\uxxxx".
void writeUnicodeEscape(Output& output, char32_t code) {
    constexpr std::string_view digits = "0123456789abcdef";
    output.write("\\u");
    for (int shift = 12; shift >= 0; shift -= 4) output.write(digits[code >> shift & 0xF]);
}

void writeEscape(Output& output, char c) {
    const char letter = escapeOf(c);
    if (letter == 'u') return writeUnicodeEscape(output, static_cast<unsigned char>(c));
    const std::array<char, 2> escape{'\\', letter};
    output.write({escape.data(), escape.size()});
}

/// False when none of eight bytes has an escape; true when one may have.
bool mayHaveEscape(const char* bytes) noexcept {
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t highBits = ones * 0x80;
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    const auto hasZero = [](std::uint64_t bits) { return (bits - ones) & ~bits & highBits; };
    const std::uint64_t control = (word - ones * 0x20) & ~word & highBits;
    return (control | hasZero(word ^ ones * '"') | hasZero(word ^ ones * '\\')) != 0;
}

/// How many bytes at the beginning of a text stand for themselves.
std::size_t plainBytes(std::string_view text) noexcept {
    std::size_t size = 0;
    while (text.size() - size >= sizeof(std::uint64_t) && !mayHaveEscape(text.data() + size))
        size += sizeof(std::uint64_t);
    while (size < text.size() && escapeOf(text[size]) == 0) ++size;
    return size;
}

template <class Integer>
std::string_view digitsOf(Integer value, std::array<char, 20>& storage) noexcept {
    const auto [end, failure] = std::to_chars(storage.data(), storage.data() + storage.size(), value);
    return {storage.data(), static_cast<std::size_t>(end - storage.data())};
}

}  // namespace

void JsonWriter::key(std::string_view name) {
    separate();
    quoted(name);
    output_.write(':');
    endKey();
}

void JsonWriter::field(std::string_view name) {
    separate();
    output_.write('"');
    output_.write(name);
    output_.write("\":");
    endKey();
}

void JsonWriter::text(std::string_view value) {
    separate();
    quoted(value);
    needsComma_ = true;
}

void JsonWriter::number(std::uint64_t value) {
    std::array<char, 20> storage;
    plain(digitsOf(value, storage));
}

void JsonWriter::number(std::int64_t value) {
    std::array<char, 20> storage;
    plain(digitsOf(value, storage));
}

bool JsonWriter::isGood() const noexcept { return output_.isGood(); }

void JsonWriter::begin(char bracket) {
    separate();
    output_.write(bracket);
    needsComma_ = false;
    ++depth_;
}

void JsonWriter::end(char bracket) {
    --depth_;
    if (isIndented_ && needsComma_) beginLine();
    output_.write(bracket);
    needsComma_ = true;
}

void JsonWriter::plain(std::string_view value) {
    separate();
    output_.write(value);
    needsComma_ = true;
}

void JsonWriter::separate() {
    if (needsComma_) output_.write(',');
    if (!isIndented_) return;
    if (!isAfterKey_ && depth_ != 0) beginLine();
    isAfterKey_ = false;
}

void JsonWriter::endKey() {
    needsComma_ = false;
    if (!isIndented_) return;
    output_.write(' ');
    isAfterKey_ = true;
}

void JsonWriter::beginLine() {
    constexpr std::string_view step = "  ";
    output_.write('\n');
    for (std::size_t i = 0; i != depth_; ++i) output_.write(step);
}

void JsonWriter::quoted(std::string_view value) {
    std::string storage;
    value = asUTF8(value, storage);
    if (output_.isTerminal()) return quotedOnTerminal(value);
    output_.write('"');
    for (;;) {
        const std::size_t plain = plainBytes(value);
        output_.write(value.substr(0, plain));
        if (plain == value.size()) break;
        writeEscape(output_, value[plain]);
        value.remove_prefix(plain + 1);
    }
    output_.write('"');
}

/// Escapes also what JSON may have as it stands, but a terminal might obey.
void JsonWriter::quotedOnTerminal(std::string_view value) {
    output_.write('"');
    while (!value.empty()) {
        const Character character = firstCharacter(value);
        if (character.size == 1 && escapeOf(value.front()) != 0)
            writeEscape(output_, value.front());
        else if (isTerminalCommand(character.code))
            writeUnicodeEscape(output_, character.code);
        else
            output_.write(value.substr(0, character.size));
        value.remove_prefix(character.size);
    }
    output_.write('"');
}

}  // namespace tool
