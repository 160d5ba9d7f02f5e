// SPDX-License-Identifier: Apache-2.0
#include "view/page.h"

#include <algorithm>

#include "console/output.h"
#include "console/terminal.h"
#include "text/display_width.h"
#include "text/visible_text.h"

namespace tool {
namespace {

/// Where the texts of facts begin, on a page that is wide enough to indent them.
constexpr std::size_t kLabelWidth = 18;
constexpr std::size_t kWideEnough = 50;

/// Takes from a text as many whole words as go into so many columns, but one at least.
std::string_view takeLine(std::string_view& text, std::size_t width) {
    std::size_t end = std::min(text.find(' '), text.size());
    while (end < text.size()) {
        const std::size_t next = std::min(text.find(' ', end + 1), text.size());
        if (displayWidth(text.substr(0, next)) > width) break;
        end = next;
    }
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

}  // namespace

Page::Page(Output& output)
    : output_(output),
      width_(terminalWidth(output.descriptor())),
      hasColour_(wantsColour(output.descriptor())) {}

bool Page::isGood() const noexcept { return output_.isGood(); }

void Page::heading(std::string_view text) {
    if (!isEmpty_) emptyLine();
    line(hasColour_ ? "\x1b[1m" + visibleText(text) + "\x1b[0m" : visibleText(text));
}

void Page::fact(std::string_view label, brackwell::OptionalText text) {
    const std::string visible = visibleText(text.value_or(""));
    if (visible.empty()) return;
    const std::size_t indent = width_ < kWideEnough ? 2 : kLabelWidth;
    std::string start = visibleText(label);
    const std::size_t labelWidth = displayWidth(start);
    start.append(labelWidth < indent ? indent - labelWidth : 1, ' ');
    std::string_view rest = visible;
    while (!rest.empty()) {
        const std::size_t used = std::max(indent, displayWidth(start));
        line(start.append(takeLine(rest, width_ - std::min(used, width_))));
        start.assign(indent, ' ');
    }
}

void Page::line(std::string_view text) {
    output_.write(text);
    output_.write('\n');
    isEmpty_ = false;
}

}  // namespace tool
