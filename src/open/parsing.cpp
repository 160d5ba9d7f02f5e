// SPDX-License-Identifier: Apache-2.0
#include "open/parsing.h"

#include "reading/node_ref.h"

namespace brackwell::opening {
namespace {

using namespace std::string_view_literals;
using Outcome = Parsed::Outcome;

/// The bytes after a byte order mark of any encoding, or all of them.
Data withoutMark(const Data& data) noexcept {
    for (const std::string_view mark :
         {"\xEF\xBB\xBF"sv, "\xBF\xBB\xBF"sv, "\x00\x00\xFE\xFF"sv, "\xFE\xFF"sv, "\xFF\xFE"sv})
        if (data.bytes().starts_with(mark)) return data.from(mark.size());
    return data;
}

/// What the header says of the text's encoding; "" when it says nothing.
std::string encodingNameIn(std::string_view text) {
    ParseDictionary header;
    if (text.starts_with("OFXHEADER:")) {
        header = TvOFXParser::parseSGMLHeader(text);
        return std::string(header["CHARSET"].text().value_or(""));
    }
    // Only what comes before the instruction, which may have an ENCODING of its own.
    if (text.starts_with("<?xml")) TvOFXParser::parseXmlHeader(text.substr(0, text.find("<?OFX")), &header);
    return std::string(header["ENCODING"].text().value_or(""));
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

/// The header of a document whose body does not parse: without an error place, the parser gives it.
TvOFXParserResult headerOf(const Data& data, TextEncoding encoding) {
    TvOFXParser parser(data);
    parser.setStringEncoding(encoding);
    const std::shared_ptr<TvOFXParserResult> result = parser.parseWithError();
    return result ? *result : TvOFXParserResult();
}

}  // namespace

bool Parsed::hasRoot() const noexcept {
    return outcome == Outcome::read && !(*content.ofxData)["OFX"].isNothing();
}

Parsed parse(const Data& data, TextEncoding encoding) {
    TvOFXParser parser(data);
    parser.setStringEncoding(encoding);
    Error error;
    const std::shared_ptr<TvOFXParserResult> result = parser.parseWithError(&error);
    Parsed parsed;
    parsed.encoding = parser.stringEncoding();
    parsed.data = parser.data().value_or(Data());
    if (result && result->ofxData) {
        parsed.outcome = Outcome::read;
        parsed.content = std::move(*result);
    } else if (result) {
        parsed.outcome = Outcome::notOFX;
    } else if (parsed.encoding != TextEncodingNone && !data.isEmpty()) {
        parsed.outcome = Outcome::malformed;
        parsed.failure = std::move(error.description);
        parsed.content = headerOf(data, encoding);
    }
    return parsed;
}

TextEncoding encodingOfHiddenDocument(const Data& data) {
    for (const TextEncoding encoding : {TextEncodingUTF8, TextEncodingWindows1252, TextEncodingISOLatin1}) {
        const std::optional<Data> text = decodeText(data, encoding);
        if (text && !repairOFXText(text->bytes()).changes.empty()) return encoding;
    }
    return TextEncodingNone;
}

Parsed parseInAnyEncoding(const Data& data, bool repairs, bool& isGuessed) {
    Parsed parsed = parse(data, TextEncodingNone);
    if (parsed.outcome != Outcome::undecoded || data.isEmpty()) return parsed;
    // A mark that the parser leaves in place is no text in another encoding than its own.
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

Data textOf(const Parsed& parsed) {
    if (parsed.outcome == Outcome::read)
        if (const auto node = reading::NodeRef::of(*parsed.content.ofxData)) return node.document().source();
    if (parsed.encoding == TextEncodingNone) return {};
    const std::optional<Data> text = decodeText(parsed.data, parsed.encoding);
    return text ? text->owned() : Data();
}

}  // namespace brackwell::opening
