// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "parser/body_parser.h"

namespace brackwell::reading {

/// What a text is by how it begins, white space aside.
enum class TextForm : std::uint8_t {
    notOFX,
    xml,   ///< with a declaration or instruction
    sgml,  ///< with the lines of a header
    bare,  ///< without a header
};
TextForm formOf(std::string_view text) noexcept;

/// Takes a byte order mark away from `data`, which sets `encoding` where that is none, and decodes the rest:
/// with this encoding, or without one with the first that makes a text of it that begins like OFX, and with
/// ASCII where none does. `encoding` becomes the one that was used, and none when the data is no text in it.
std::optional<Data> decodeDocument(Data& data, TextEncoding& encoding);

enum class DocumentReading : std::uint8_t {
    read,
    notOFX,     ///< a text that does not begin like OFX; nothing of it is read
    malformed,  ///< only the header is read
};

/// Reads header and body of a decoded text, which the tree shares. Where the body is malformed, `failure`
/// says why, with places in the whole text.
DocumentReading readDocument(const Data& text, TvOFXParserResult& result, BodyFailure& failure);

}  // namespace brackwell::reading
