// SPDX-License-Identifier: Apache-2.0
#include "command_line/wrapped_help.h"

#include <algorithm>

namespace tool {
namespace {

/// Beside options a text needs some columns; where there are fewer, it stays as it is.
constexpr std::size_t kLeastText = 20;

/// True for a line with the text of an option or a command.
bool hasTextBeside(std::string_view line) noexcept {
    return line.size() > kHelpColumn && line.starts_with("  ") && line[kHelpColumn - 1] == ' ' &&
           line[kHelpColumn] != ' ';
}

/// Appends a text in lines of some width, each but the first after an indent. The helps are ASCII.
void appendLines(std::string& lines, std::string_view text, std::size_t width, std::size_t indent) {
    while (text.size() > width) {
        std::size_t end = text.rfind(' ', width);
        if (end == text.npos) end = text.find(' ');
        if (end == text.npos) break;
        lines.append(text.substr(0, end)).append(1, '\n').append(indent, ' ');
        text.remove_prefix(end + 1);
    }
    lines.append(text).append(1, '\n');
}

/// Takes the first line of a text.
std::string_view takeLine(std::string_view& text) noexcept {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

bool isProse(std::string_view line) noexcept { return !line.empty() && line.front() != ' '; }

/// A paragraph in one line. A line that ends with a colon is one of its own.
std::string takeParagraph(std::string_view line, std::string_view& rest) {
    std::string paragraph(line);
    while (!paragraph.ends_with(':') && isProse(rest)) paragraph.append(" ").append(takeLine(rest));
    return paragraph;
}

}  // namespace

std::string wrappedHelp(std::string_view help, std::size_t width) {
    if (width < kHelpColumn + kLeastText) return std::string(help);
    std::string wrapped;
    bool areExamples = false;
    while (!help.empty()) {
        const std::string_view line = takeLine(help);
        if (isProse(line)) areExamples = line == "Examples:";
        if (areExamples) {
            wrapped.append(line).append(1, '\n');
        } else if (isProse(line)) {
            appendLines(wrapped, takeParagraph(line, help), width, 0);
        } else if (hasTextBeside(line)) {
            wrapped.append(line.substr(0, kHelpColumn));
            appendLines(wrapped, line.substr(kHelpColumn), width - kHelpColumn, kHelpColumn);
        } else {
            const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
            wrapped.append(indent, ' ');
            appendLines(wrapped, line.substr(indent), width - indent, indent);
        }
    }
    return wrapped;
}

}  // namespace tool
