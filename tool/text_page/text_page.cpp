// SPDX-License-Identifier: Apache-2.0
#include "text_page/text_page.h"

#include <cstddef>

#include "console/output.h"
#include "console/terminal.h"
#include "text/characters.h"
#include "text/display_width.h"
#include "text/visible_text.h"

namespace tool {
namespace {

/// Where the texts of facts begin, on a page that is wide enough to indent them.
constexpr std::size_t kLabelWidth = 18;
constexpr std::size_t kWideEnough = 50;

/// How many bytes of a text go into so many columns: one character at least.
std::size_t fittingBytes(std::string_view text, std::size_t width) noexcept {
    std::size_t bytes = 0;
    for (std::size_t used = 0; bytes < text.size();) {
        const Character character = firstCharacter(text.substr(bytes));
        used += characterWidth(character.code);
        if (used > width && bytes > 0) break;
        bytes += character.size;
    }
    return bytes;
}

/// Takes from a text what goes into so many columns, whole words where that is possible.
std::string_view takeLine(std::string_view& text, std::size_t width) noexcept {
    const std::size_t fitting = fittingBytes(text, width);
    std::size_t end = fitting;
    if (end < text.size() && text[end] != ' ') {
        const std::size_t blank = text.rfind(' ', end);
        if (blank != std::string_view::npos) end = blank;
    }
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end < text.size() && text[end] == ' ' ? end + 1 : end);
    return line;
}

}  // namespace

TextPage::TextPage(Output& output)
    : output_(output), width_(terminalWidth(output.descriptor())), hasColour_(output.hasColour()) {}

bool TextPage::isGood() const noexcept { return output_.isGood(); }

void TextPage::heading(std::string_view text) {
    if (!isEmpty_) emptyLine();
    const std::string visible = visibleText(text);
    for (std::string_view rest = visible; !rest.empty();) {
        const std::string_view part = takeLine(rest, width_);
        line(hasColour_ ? "\x1b[1m" + std::string(part) + "\x1b[0m" : std::string(part));
    }
}

void TextPage::fact(std::string_view label, brackwell::OptionalText text) {
    const std::string visible = visibleText(text.value_or(""));
    if (visible.empty()) return;
    const std::size_t indent = width_ < kWideEnough ? 2 : kLabelWidth;
    std::string start = visibleText(label);
    const std::size_t labelWidth = displayWidth(start);
    const std::size_t firstWord = displayWidth(visible.substr(0, visible.find(' ')));
    if (labelWidth + 1 + firstWord > width_) {
        paragraph(start);
        start.assign(indent, ' ');
    } else {
        start.append(labelWidth < indent ? indent - labelWidth : 1, ' ');
    }
    for (std::string_view rest = visible; !rest.empty();) {
        line(start.append(takeLine(rest, width_ - displayWidth(start))));
        start.assign(indent, ' ');
    }
}

void TextPage::paragraph(std::string_view text) {
    const std::string visible = visibleText(text);
    for (std::string_view rest = visible; !rest.empty();) line(takeLine(rest, width_));
}

void TextPage::line(std::string_view text) {
    output_.write(text);
    output_.write('\n');
    isEmpty_ = false;
}

}  // namespace tool
