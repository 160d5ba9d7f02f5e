// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

#include <string>
#include <vector>

namespace tool {

/// Appends a field to what is searched, in folded case. Between the texts stands a line feed, which is in no
/// word.
void appendSearchedText(std::string& text, brackwell::OptionalText field);

/// The same of all that can be looked for in a bank or card transaction.
void appendSearchedText(std::string& text, const brackwell::TvOFXStatementTransaction& transaction);

/// True when all words occur in a text; words and text are in folded case.
bool hasAllWords(const std::string& text, const std::vector<std::string>& words) noexcept;

}  // namespace tool
