// SPDX-License-Identifier: Apache-2.0
#include "report/html_writer.h"

#include <cstddef>
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
        default:
            return {};
    }
}

}  // namespace

bool HtmlWriter::isGood() const noexcept { return output_.isGood(); }

void HtmlWriter::writePlain(std::string_view markup) { output_.write(markup); }

void HtmlWriter::writeValue(std::string_view text) {
    // The last two code points of the basic plane are no characters, and not allowed in XML.
    constexpr std::string_view noCharacters[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF"};
    const std::string visible = visibleText(text);
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
