// SPDX-License-Identifier: Apache-2.0
#include "report/html_writer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <system_error>

#include "console/output.h"
#include "text/plain_run.h"
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

/// How many bytes come before one where an escape may begin.
std::size_t sizeUntilEscape(std::string_view text) noexcept {
    const auto mayEscape = [](char c) { return kMayEscape[static_cast<unsigned char>(c)]; };
    return static_cast<std::size_t>(std::ranges::find_if(text, mayEscape) - text.begin());
}

}  // namespace

bool HtmlWriter::isGood() const noexcept { return output_.isGood(); }

void HtmlWriter::writePlain(std::string_view markup) { output_.write(markup); }

void HtmlWriter::writeValue(std::string_view text) {
    if (isVisible(text))
        writeEscaped(text);
    else
        writeEscaped(visibleText(text));
}

void HtmlWriter::writeValue(ExactText exact) {
    if (plainRun(exact.text) == exact.text.size())
        writeEscaped(exact.text);
    else
        writeEscaped(visiblePart(exact.text, "\t\n\r"));
}

void HtmlWriter::writeEscaped(std::string_view visible) {
    std::size_t written = 0;
    for (std::size_t at = 0; (at += sizeUntilEscape(visible.substr(at))) != visible.size();) {
        const Escape escape = escapeOf(visible.substr(at));
        if (!escape.entity.empty()) {
            output_.write(visible.substr(written, at - written));
            output_.write(escape.entity);
            written = at + escape.size;
        }
        at += escape.size;
    }
    output_.write(visible.substr(written));
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
