// SPDX-License-Identifier: Apache-2.0
#include "report/html_writer.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <system_error>

#include "console/output.h"
#include "text/visible_text.h"

namespace tool {
namespace {

/// What is written for a byte; "" when it stands for itself.
std::string_view entityOf(char c) noexcept {
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

}  // namespace

bool HtmlWriter::isGood() const noexcept { return output_.isGood(); }

void HtmlWriter::writePlain(std::string_view markup) { output_.write(markup); }

void HtmlWriter::writeValue(std::string_view text) { writeEscaped(visibleText(text)); }

void HtmlWriter::writeValue(ExactText exact) {
    constexpr std::string_view lineEnds = "\t\n\r";
    std::string visible;
    for (std::string_view rest = exact.text; !rest.empty();) {
        const std::size_t plain = std::min(rest.find_first_of(lineEnds), rest.size());
        visible += visiblePart(rest.substr(0, plain));
        if (plain < rest.size()) visible += rest[plain];
        rest.remove_prefix(std::min(plain + 1, rest.size()));
    }
    writeEscaped(visible);
}

void HtmlWriter::writeEscaped(std::string_view visible) {
    // The last two code points of the basic plane are no characters, and not allowed in XML.
    constexpr std::string_view noCharacters[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF"};
    std::string_view rest = visible;
    for (std::size_t i = 0; i < rest.size();) {
        std::string_view entity = entityOf(rest[i]);
        std::size_t size = 1;
        if (const std::string_view three = rest.substr(i, 3);
            three == noCharacters[0] || three == noCharacters[1]) {
            entity = "\xEF\xBF\xBD";
            size = three.size();
        }
        if (entity.empty()) {
            ++i;
            continue;
        }
        output_.write(rest.substr(0, i));
        output_.write(entity);
        rest.remove_prefix(i + size);
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
