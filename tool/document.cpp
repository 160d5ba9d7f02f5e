// SPDX-License-Identifier: Apache-2.0
#include "document.h"

#include <unistd.h>

#include <array>
#include <cerrno>

namespace tool {
namespace {

using brackwell::Data;
using brackwell::TextEncoding;
using brackwell::TvOFXParser;

std::optional<Data> readStandardInput() {
    std::string bytes;
    std::array<char, 1 << 16> piece;
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, piece.data(), piece.size());
        if (count == 0) return Data::adopt(std::move(bytes));
        if (count > 0)
            bytes.append(piece.data(), static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return std::nullopt;
    }
}

// ---------------------------------------------------------------------------------------------
// Encodings that the library does not try

/// The bytes behind a mark of any encoding, or all of them.
Data withoutMark(const Data& data) noexcept {
    using namespace std::string_view_literals;
    for (const std::string_view mark :
         {"\xEF\xBB\xBF"sv, "\xBF\xBB\xBF"sv, "\x00\x00\xFE\xFF"sv, "\xFE\xFF"sv, "\xFF\xFE"sv})
        if (data.bytes().starts_with(mark)) return data.from(mark.size());
    return data;
}

/// What the header says of the text's encoding; "" when it says nothing.
std::string encodingNameIn(std::string_view text) {
    brackwell::ParseDictionary header;
    if (text.starts_with("OFXHEADER:")) {
        header = TvOFXParser::parseSGMLHeader(text);
        return std::string(header["CHARSET"].text().value_or(""));
    }
    // What comes before the instruction is handed over: that may have an ENCODING of its own.
    if (text.starts_with("<?xml")) TvOFXParser::parseXmlHeader(text.substr(0, text.find("<?OFX")), &header);
    return std::string(header["ENCODING"].text().value_or(""));
}

/// The encodings to try on bytes that the library could not decode; none when they do not look like OFX.
std::vector<TextEncoding> encodingsToTry(const Data& data) {
    const auto latin = brackwell::decodeText(data, brackwell::TextEncodingISOLatin1);
    if (!latin || !TvOFXParser::stringHasValidOfxHeaderPrefix(latin->bytes())) return {};
    const TextEncoding named =
        brackwell::textEncodingNamed(encodingNameIn(brackwell::trimWhiteSpace(latin->bytes())));
    std::vector<TextEncoding> encodings;
    if (named != brackwell::TextEncodingNone) encodings.push_back(named);
    if (named != brackwell::TextEncodingWindows1252) encodings.push_back(brackwell::TextEncodingWindows1252);
    return encodings;
}

// ---------------------------------------------------------------------------------------------
// Parsing

/// True when the bytes were no text in this encoding.
bool isUndecoded(const Document& document) noexcept {
    return document.outcome == Document::Outcome::malformed &&
           document.encoding == brackwell::TextEncodingNone;
}

/// The header of a document whose body does not parse: without an error place, the parser gives it.
brackwell::TvOFXParserResult parseHeader(const Data& data, TextEncoding encoding) {
    TvOFXParser parser(data);
    parser.setStringEncoding(encoding);
    const std::shared_ptr<brackwell::TvOFXParserResult> result = parser.parseWithError();
    return result ? *result : brackwell::TvOFXParserResult();
}

void parse(Document& document, const Data& data, TextEncoding encoding) {
    TvOFXParser parser(data);
    parser.setStringEncoding(encoding);
    brackwell::Error error;
    const std::shared_ptr<brackwell::TvOFXParserResult> result = parser.parseWithError(&error);
    document.encoding = parser.stringEncoding();
    if (!result) {
        document.outcome = Document::Outcome::malformed;
        document.complaint = error.description;
        if (document.encoding != brackwell::TextEncodingNone) document.content = parseHeader(data, encoding);
    } else if (!result->ofxData) {
        document.outcome = Document::Outcome::notOFX;
        document.complaint = "not an OFX document";
    } else {
        document.outcome = Document::Outcome::read;
        document.complaint.clear();
        document.content = *result;
    }
}

}  // namespace

Document readDocument(const std::string& name, TextEncoding encoding) {
    Document document;
    document.name = name;
    const std::optional<Data> data = name == "-" ? readStandardInput() : Data::fromFile(name);
    if (!data) {
        document.complaint =
            name == "-" ? "Standard input cannot be read." : "The file at " + name + " was not found.";
        return document;
    }
    parse(document, *data, encoding);
    if (encoding != brackwell::TextEncodingNone || !isUndecoded(document)) return document;
    // A mark that the library leaves in place is no text in another encoding than its own.
    const Data unmarked = withoutMark(*data);
    for (const TextEncoding other : encodingsToTry(unmarked)) {
        parse(document, unmarked, other);
        if (isUndecoded(document)) continue;
        document.note =
            "read as " + std::string(brackwell::nameOfTextEncoding(document.encoding).value_or(""));
        break;
    }
    return document;
}

}  // namespace tool
