// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "bookkeeping/book.h"

/// \file
/// Texts of documents and of people in the formats of plain-text accounting, which have no escapes for most
/// of what they take for marks. A character that a place cannot have is replaced by its full-width form,
/// which looks the same and means nothing: ';' by U+FF1B.

namespace tool {

/// What a format can name an account: nothing when this is one, otherwise what is wrong with it.
std::string faultOfAccountName(std::string_view name, BookFormat format);

/// What all formats can name a commodity, after a text of a document: capital letters, digits, and "-._"
/// between them, at most 24 characters, the first a letter. "" for a text without letters and digits.
std::string commodityNameOf(std::string_view text);
/// True for such a name.
bool isCommodityName(std::string_view name) noexcept;

/// A text of a document as a part of a name of an account.
std::string accountPartOf(std::string_view text);

/// A text in one line, with full-width forms for those of its characters that are among `marks`.
std::string withoutMarks(std::string_view text, std::string_view marks);

/// A text between quotes of Beancount.
std::string inQuotes(std::string_view text);

}  // namespace tool
