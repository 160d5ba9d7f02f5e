// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <string>
#include <string_view>

namespace tool {

/// What a person should know of a document whose close tags do not match: both places with the lines
/// around them, the likely cause, and what to do. Lines that end in line feeds, no wider than so many
/// columns where they quote the document, without its secrets.
std::string explainNesting(std::string_view document, std::size_t width);

/// What a person should know of a text that does not begin like OFX; nothing when there is no document in it.
std::string explainBegin(std::string_view text);

/// The parser's complaint about such a document, with a mask for a tag in it that is part of a secret: the
/// parser takes character data for a tag.
std::string withoutSecrets(std::string complaint, std::string_view document);

/// What a person should know of bytes that were no text: where they stop being UTF-8, and which encodings
/// would read them.
std::string explainBytes(const brackwell::Data& bytes);

}  // namespace tool
