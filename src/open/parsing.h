// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "parser/body_parser.h"

namespace brackwell::opening {

/// What the parser made of bytes.
struct Parsed {
    enum class Outcome : std::uint8_t {
        read,       ///< there is a tree
        notOFX,     ///< a text that does not begin like OFX
        malformed,  ///< a text whose body does not parse
        undecoded,  ///< no text in the encoding, or nothing at all
    };
    Outcome outcome = Outcome::undecoded;
    TextEncoding encoding = TextEncodingNone;  ///< that was used; none when the bytes were no text
    Data data;                                 ///< the bytes without a byte order mark
    Data text;                                 ///< decoded, with an owner; empty when the bytes were no text
    TvOFXParserResult content;                 ///< of a malformed document the header
    reading::BodyFailure failure;              ///< of a malformed document, with places in the text

    /// True when there is the element in which everything else is looked for.
    bool hasRoot() const noexcept;
};

Parsed parse(const Data& data, TextEncoding encoding);

/// Makes the tree once more of a text that was read.
void parseAgain(Parsed& parsed);

/// What parse() makes in an encoding that somebody chose: of UTF-16 and UTF-32 the byte order is that of the
/// mark.
Parsed parseChosen(const Data& data, TextEncoding encoding);

/// The same, and for bytes that are no text, with the encoding that the document itself names and those that
/// documents have in practice. `isGuessed` becomes true when one of these reads them. Of several byte order
/// marks in a row, as programs leave that put one before another, the last one counts.
Parsed parseInAnyEncoding(const Data& data, bool repairs, bool& isGuessed);

/// The encoding in which a repair finds a document in bytes that do not begin like one; none when it finds
/// none. The parser takes such bytes for ASCII, and for no text when they are not.
TextEncoding encodingOfHiddenDocument(const Data& data);

/// What the header of a document says of the text's encoding; "" when it says nothing. Of XML only the
/// declaration counts: the instruction after it may have an ENCODING of its own.
std::string encodingNameIn(std::string_view text);

/// The same of a text that is no OFX 1, as a part of it.
std::string_view encodingNameInXML(std::string_view text) noexcept;

/// The bytes after a byte order mark of any encoding, or all of them.
Data withoutMark(const Data& data) noexcept;

}  // namespace brackwell::opening
