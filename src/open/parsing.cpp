// SPDX-License-Identifier: Apache-2.0
#include "open/parsing.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <vector>

#include "parser/document_reader.h"
#include "parser/header_reader.h"
#include "repair/repair.h"
#include "text/byte_order_marks.h"

namespace brackwell::opening {
namespace {

using Outcome = Parsed::Outcome;

constexpr std::string_view kMarks[] = {kUTF8Mark, kParserUTF8Mark, kUTF32BigEndianMark, kUTF16BigEndianMark,
                                       kUTF16LittleEndianMark};

/// The bytes from the last one on of several equal byte order marks: programs that join files repeat them.
Data fromLastMark(const Data& data) noexcept {
    for (const std::string_view mark : kMarks) {
        std::size_t at = 0;
        while (data.bytes().substr(at).starts_with(mark) &&
               data.bytes().substr(at + mark.size()).starts_with(mark))
            at += mark.size();
        if (at != 0) return data.from(at);
    }
    return data;
}

/// The encoding that a byte order mark tells of, when it is a wide one.
const WideEncoding* markedEncoding(const Data& data) noexcept {
    const auto* const found = std::ranges::find_if(
        kWideEncodings, [&](const WideEncoding& wide) { return data.bytes().starts_with(wide.mark); });
    return found == std::end(kWideEncodings) ? nullptr : found;
}

Parsed parseMarked(const Data& data, const WideEncoding& wide) {
    return parse(data.from(wide.mark.size()), textEncodingNamed(wide.name));
}

bool isDocument(const Parsed& parsed) noexcept {
    return parsed.outcome == Outcome::read || parsed.outcome == Outcome::malformed;
}

/// True for bytes that begin like ASCII in UTF-16 with the high bytes first. Without a mark, the parser tries
/// the order of this machine only.
bool beginsLikeBigEndianUTF16(std::string_view bytes) noexcept {
    return bytes.size() >= 4 && bytes[0] == '\0' && bytes[1] != '\0' && bytes[2] == '\0' && bytes[3] != '\0';
}

/// The encodings to try on bytes that the parser could not decode; none when they do not look like OFX.
std::vector<TextEncoding> encodingsToTry(const Data& data) {
    const auto latin = decodeText(data, TextEncodingISOLatin1);
    if (!latin || !TvOFXParser::stringHasValidOfxHeaderPrefix(latin->bytes())) return {};
    const TextEncoding named = textEncodingNamed(encodingNameIn(trimWhiteSpace(latin->bytes())));
    std::vector<TextEncoding> encodings;
    if (named != TextEncodingNone) encodings.push_back(named);
    if (named != TextEncodingWindows1252) encodings.push_back(TextEncodingWindows1252);
    return encodings;
}

/// The outcome of reading, in the terms of this room.
constexpr Outcome outcomeOf(reading::DocumentReading reading) noexcept {
    switch (reading) {
        case reading::DocumentReading::notOFX:
            return Outcome::notOFX;
        case reading::DocumentReading::malformed:
            return Outcome::malformed;
        case reading::DocumentReading::read:
            break;
    }
    return Outcome::read;
}

}  // namespace

bool Parsed::hasRoot() const noexcept {
    return outcome == Outcome::read && reading::NodeRef::of(*content.ofxData)[reading::element("OFX")];
}

Parsed parse(const Data& data, TextEncoding encoding) {
    Parsed parsed;
    parsed.data = data;
    parsed.encoding = encoding;
    if (data.isEmpty()) return parsed;
    const std::optional<Data> text = reading::decodeDocument(parsed.data, parsed.encoding);
    if (!text) return parsed;
    parsed.text = text->owned();
    parsed.outcome = outcomeOf(reading::readDocument(parsed.text, parsed.content, parsed.failure));
    return parsed;
}

void parseAgain(Parsed& parsed) {
    parsed.outcome = outcomeOf(reading::readDocument(parsed.text, parsed.content, parsed.failure));
}

Parsed parseChosen(const Data& data, TextEncoding encoding) {
    const WideEncoding* wide = markedEncoding(data);
    const std::string_view chosen = nameOfTextEncoding(encoding).value_or("");
    // "UTF-16" is what "UTF-16BE" and "UTF-16LE" begin with. The parser takes it for that of this machine.
    const bool isTold = wide != nullptr && chosen.size() == std::string_view("UTF-16").size() &&
                        std::string_view(wide->name).starts_with(chosen);
    return isTold ? parseMarked(data, *wide) : parse(data, encoding);
}

// A repair finds a document after other text; that it has changed something shows that there is one.
TextEncoding encodingOfHiddenDocument(const Data& data) {
    for (const TextEncoding encoding : {TextEncodingUTF8, TextEncodingWindows1252, TextEncodingISOLatin1}) {
        const std::optional<Data> text = decodeText(data, encoding);
        if (text && !repair::changesOfRepair(text->bytes()).empty()) return encoding;
    }
    return TextEncodingNone;
}

std::string encodingNameIn(std::string_view text) {
    if (text.starts_with("OFXHEADER:"))
        return std::string(TvOFXParser::parseSGMLHeader(text)["CHARSET"].text().value_or(""));
    return std::string(encodingNameInXML(text));
}

std::string_view encodingNameInXML(std::string_view text) noexcept {
    return reading::encodingInDeclaration(text.substr(0, text.find("<?OFX"))).value_or("");
}

Data withoutMark(const Data& data) noexcept {
    for (const std::string_view mark : kMarks)
        if (data.bytes().starts_with(mark)) return data.from(mark.size());
    return data;
}

Parsed parseInAnyEncoding(const Data& marked, bool repairs, bool& isGuessed) {
    const Data data = fromLastMark(marked);
    Parsed parsed = parse(data, TextEncodingNone);
    if (parsed.outcome == Outcome::notOFX) {
        // The parser takes the mark of UTF-32 with the low bytes first for that of UTF-16.
        const WideEncoding* wide = markedEncoding(data);
        Parsed other;
        if (wide != nullptr)
            other = parseMarked(data, *wide);
        else if (beginsLikeBigEndianUTF16(data.bytes()))
            other = parse(data, TextEncodingUTF16BigEndian);
        if (isDocument(other)) return other;
    }
    if (parsed.outcome != Outcome::undecoded || data.isEmpty()) return parsed;
    // In any encoding but its own, a byte order mark would be read as letters.
    const Data unmarked = withoutMark(data);
    std::vector<TextEncoding> encodings = encodingsToTry(unmarked);
    if (repairs && encodings.empty()) encodings.push_back(encodingOfHiddenDocument(unmarked));
    for (const TextEncoding encoding : encodings) {
        if (encoding == TextEncodingNone) continue;
        Parsed other = parse(unmarked, encoding);
        if (other.outcome == Outcome::undecoded) continue;
        isGuessed = true;
        return other;
    }
    return parsed;
}

}  // namespace brackwell::opening
