// SPDX-License-Identifier: Apache-2.0
#include "report/html_writer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <system_error>

#include "console/output.h"
#include "text/visible_text.h"

namespace tool {
namespace {

/// What is written for a byte; "" when it stands for itself.
constexpr std::string_view entityOf(char c) noexcept {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        case '\t':
            return "&#9;";
        case '\n':
            return "&#10;";
        case '\r':
            return "&#13;";
        default:
            return {};
    }
}

/// What a text is written as from one of its bytes on, and how many bytes that stands for; "" when the byte
/// stands for itself.
struct Escape {
    std::string_view entity;
    std::size_t size = 1;
};
Escape escapeOf(std::string_view rest) noexcept {
    // The last two code points of the basic plane are no characters, and not allowed in XML.
    if (rest.starts_with("\xEF\xBF\xBE") || rest.starts_with("\xEF\xBF\xBF")) return {"\xEF\xBF\xBD", 3};
    return {entityOf(rest.front())};
}
/// By byte: whether an escape may begin there.
constexpr auto kMayEscape = [] {
    std::array<bool, 256> may{};
    for (std::size_t byte = 0; byte != may.size(); ++byte) {
        const auto c = static_cast<char>(static_cast<unsigned char>(byte));
        may[byte] = c == '\xEF' || !entityOf(c).empty();
    }
    return may;
}();

bool isLineEnd(char c) noexcept { return c == '\t' || c == '\n' || c == '\r'; }

}  // namespace

bool HtmlWriter::isGood() const noexcept { return output_.isGood(); }

void HtmlWriter::writePlain(std::string_view markup) { output_.write(markup); }

void HtmlWriter::writeValue(std::string_view text) { writeEscaped(visibleText(text)); }

void HtmlWriter::writeValue(ExactText exact) {
    std::string visible;
    for (std::string_view rest = exact.text; !rest.empty();) {
        const auto plain = static_cast<std::size_t>(std::ranges::find_if(rest, isLineEnd) - rest.begin());
        visible += visiblePart(rest.substr(0, plain));
        if (plain < rest.size()) visible += rest[plain];
        rest.remove_prefix(std::min(plain + 1, rest.size()));
    }
    writeEscaped(visible);
}

void HtmlWriter::writeEscaped(std::string_view visible) {
    std::string_view rest = visible;
    for (std::size_t i = 0; i < rest.size();) {
        const Escape escape =
            kMayEscape[static_cast<unsigned char>(rest[i])] ? escapeOf(rest.substr(i)) : Escape();
        if (escape.entity.empty()) {
            ++i;
            continue;
        }
        output_.write(rest.substr(0, i));
        output_.write(escape.entity);
        rest.remove_prefix(i + escape.size);
        i = 0;
    }
    output_.write(rest);
}

void HtmlWriter::writeValue(Coordinate coordinate) {
    std::array<char, 32> digits;
    const auto [end, failure] = std::to_chars(digits.data(), digits.data() + digits.size(), coordinate.value,
                                              std::chars_format::fixed, 1);
    // What does not fit in is far outside any drawing.
    writePlain(failure == std::errc()
                   ? std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()))
                   : "0");
}

}  // namespace tool
