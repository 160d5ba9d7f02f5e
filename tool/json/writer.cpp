// SPDX-License-Identifier: Apache-2.0
#include "json/writer.h"

#include <array>
#include <charconv>
#include <string>

#include "console/output.h"
#include "text/characters.h"

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

void writeEscape(Output& output, char c) {
    constexpr std::string_view digits = "0123456789abcdef";
    if (const char letter = escapeOf(c); letter != 'u') {
        output.write('\\');
        output.write(letter);
        return;
    }
    output.write("\\u00");
    output.write(digits[static_cast<unsigned char>(c) >> 4]);
    output.write(digits[static_cast<unsigned char>(c) & 0xF]);
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
    needsComma_ = false;
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
}

void JsonWriter::end(char bracket) {
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
}

void JsonWriter::quoted(std::string_view value) {
    std::string storage;
    value = asUTF8(value, storage);
    output_.write('"');
    std::size_t written = 0;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (escapeOf(value[i]) == 0) continue;
        output_.write(value.substr(written, i - written));
        writeEscape(output_, value[i]);
        written = i + 1;
    }
    output_.write(value.substr(written));
    output_.write('"');
}

}  // namespace tool
