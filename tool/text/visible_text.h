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

/// The same for a text of several lines, in which line feeds, tabs and blanks stay.
std::string visibleLines(std::string_view text);

/// The same for a part of a line, in which blanks stay, and nothing else of what is no visible character.
std::string visiblePart(std::string_view text);

}  // namespace tool
