// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

class Output;

/// What a person reads: headings, labelled facts and lines, as wide as the terminal. All texts that are
/// handed in may come from a document; what a terminal might obey is made visible.
class TextPage {
public:
    explicit TextPage(Output& output);

    std::size_t width() const noexcept { return width_; }
    bool hasColour() const noexcept { return hasColour_; }
    bool isGood() const noexcept;

    /// Begins a section; an empty line stands before every one but the first.
    void heading(std::string_view text);
    /// "Label      text", wrapped; nothing when there is no text, or an empty one.
    void fact(std::string_view label, brackwell::OptionalText text);
    void fact(std::string_view label, const std::string& text) { fact(label, brackwell::OptionalText(text)); }
    /// A text of its own, wrapped.
    void paragraph(std::string_view text);
    /// A line that fits, of text that has been made visible before.
    void line(std::string_view text);
    void emptyLine() { line(""); }

private:
    Output& output_;
    std::size_t width_;
    bool hasColour_;
    bool isEmpty_ = true;
};

}  // namespace tool
