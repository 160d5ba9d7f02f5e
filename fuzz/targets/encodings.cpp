// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include "lines.h"
#include "target.h"

/// \file
/// A line with the name of an encoding, or without one for all of them, then bytes. They are decoded, and
/// encoded where they are UTF-8.

namespace brackwell::fuzz {
namespace {

/// True when decoding takes the beginning of the encoded text for a mark.
bool beginsLikeMark(std::string_view text) {
    return text.starts_with("\uFEFF") || text.starts_with("\uFFFE");
}

void requireEncoded(std::string_view text, TextEncoding encoding) {
    const std::optional<Data> bytes = encodeText(text, encoding);
    if (!bytes || beginsLikeMark(text)) return;
    const std::optional<Data> decoded = decodeText(*bytes, encoding);
    require(decoded && decoded->bytes() == text, "what was encoded is decoded as the same text");
}

void requireDecoded(std::string_view bytes, TextEncoding encoding) {
    const std::optional<Data> text = decodeText(Data::view(bytes), encoding);
    if (!text) return;
    require(isValidUTF8(text->bytes()), "decoded text is UTF-8");
    const std::optional<Data> again = decodeText(Data::copy(bytes), encoding);
    require(again == text, "decoding twice gives the same text");
    require(encodeText(text->bytes(), encoding).has_value(), "what was decoded can be encoded");
    requireEncoded(text->bytes(), encoding);
}

void requireNamed(TextEncoding encoding) {
    const OptionalText name = nameOfTextEncoding(encoding);
    require(name && textEncodingNamed(*name) == encoding, "an encoding is found by its name");
}

}  // namespace

void tryBytes(std::string_view bytes) {
    Lines lines(bytes);
    const TextEncoding named = textEncodingNamed(lines.next());
    const auto encodings = named == TextEncodingNone ? knownTextEncodings() : std::vector{named};
    for (const TextEncoding encoding : encodings) {
        requireNamed(encoding);
        requireDecoded(lines.rest(), encoding);
        requireEncoded(lines.rest(), encoding);
    }
}

}  // namespace brackwell::fuzz
