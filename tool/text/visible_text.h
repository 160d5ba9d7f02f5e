// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace tool {

/// True for characters that a terminal might obey: control characters, and those that turn the direction of
/// writing.
bool isTerminalCommand(char32_t code) noexcept;

/// A text that can be shown on a terminal whatever document it comes from: control characters,
/// escapes and characters that turn the direction of writing are replaced by visible ones, line
/// breaks and tabs by blanks; blanks beside each other become one, and none stand at the ends.
std::string visibleText(std::string_view text);

/// True for a text that visibleText shows as it is, without looking at other characters than ASCII.
bool isVisible(std::string_view text) noexcept;

/// The same for a text in which all blanks stay, and of other white space what is named.
std::string visiblePart(std::string_view text, std::string_view staying = {});

/// The same for a text of several lines.
inline std::string visibleLines(std::string_view text) { return visiblePart(text, "\n\t"); }

}  // namespace tool
