// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brackwell::reading {
class Document;
}

namespace brackwell::opening {

/// A part of a document for a sentence: in one line, at most `longest` bytes and an ellipsis, with a visible
/// form of every character that a terminal might obey. Whatever the length of the text, this is cheap.
std::string shownText(std::string_view text, std::size_t longest = 60);

/// The same in quotation marks.
std::string quoted(std::string_view text, std::size_t longest = 40);

/// A part of a document in quotation marks, or that it is not shown: no finding holds a password, a key or a
/// cookie, and where a document names one shortly before a broken tag, nothing is shown.
std::string quotedUnlessSecret(std::string_view document, std::size_t offset, std::size_t size);
/// The same, of which only a part is quoted.
std::string quotedUnlessSecret(std::string_view document, std::size_t offset, std::size_t size,
                               std::string_view part);

/// The name of an element as a tag, "<STMTTRN>".
std::string tagOfName(std::string_view name);
std::string tagOfNode(const reading::Document& document, std::uint32_t node);

/// "1 balance", "3 balances".
std::string counted(std::size_t count, std::string_view one, std::string_view several);

/// "1 statement, 3 transactions and 2 balances"; empty for no parts.
std::string enumerated(const std::vector<std::string>& parts);

}  // namespace brackwell::opening
