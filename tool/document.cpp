// SPDX-License-Identifier: Apache-2.0
#include "document.h"

#include <unistd.h>

#include <array>
#include <cerrno>

#include "console/terminal.h"
#include "explain/explanation.h"

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

void addNote(Document& document, std::string_view note) {
    document.note.append(document.note.empty() ? "" : "; ").append(note);
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

/// True when a document was read and has the element in which everything else is looked for.
bool hasOFX(const Document& document) noexcept {
    return document.outcome == Document::Outcome::read && !(*document.content.ofxData)["OFX"].isNothing();
}

// ---------------------------------------------------------------------------------------------
// Repair

/// The bytes that the parser does not count to the text: a mark.
std::string_view markOf(std::string_view bytes, const TvOFXParser& parser) noexcept {
    constexpr std::string_view utf8 = "\xEF\xBB\xBF";
    const bool keepsMark = parser.stringEncoding() == brackwell::TextEncodingUTF8;
    if (keepsMark && bytes.starts_with(utf8)) return utf8;
    return bytes.substr(0, bytes.size() - parser.data()->size());
}

/// Finds the encoding of data, and what is behind a mark. Its tree is not kept.
TvOFXParser parserWithEncoding(const Data& data, TextEncoding encoding) {
    TvOFXParser parser(data);
    parser.setStringEncoding(encoding);
    brackwell::Error error;
    parser.parseWithError(&error);
    return parser;
}

/// The encoding in which a repair finds a document in bytes that do not begin like one; none when it finds
/// none. The library takes such bytes for ASCII, and for no text when they are not.
TextEncoding encodingForRepair(const Data& data) {
    for (const TextEncoding encoding : {brackwell::TextEncodingUTF8, brackwell::TextEncodingWindows1252,
                                        brackwell::TextEncodingISOLatin1}) {
        const std::optional<Data> text = brackwell::decodeText(data, encoding);
        if (text && !brackwell::repairOFXText(text->bytes()).changes.empty()) return encoding;
    }
    return brackwell::TextEncodingNone;
}

/// Reads the data of a document once more with its text repaired, if there is anything to repair.
void repair(Document& document, const Data& data, TextEncoding encoding) {
    const TvOFXParser parser = parserWithEncoding(data, encoding);
    const std::optional<Data> text = brackwell::decodeText(*parser.data(), parser.stringEncoding());
    if (!text) return;
    Repair repair{std::string(markOf(document.bytes.bytes(), parser)), std::string(text->bytes()),
                  brackwell::repairOFXText(text->bytes())};
    if (repair.after.changes.empty()) return;
    parse(document, Data::view(repair.after.text), brackwell::TextEncodingUTF8);
    document.encoding = parser.stringEncoding();
    const std::size_t count = repair.after.changes.size();
    addNote(document, "repaired in " + std::to_string(count) + (count == 1 ? " place" : " places"));
    document.repair = std::move(repair);
}

/// Adds why a document was not read, or why nothing is found in it.
void explain(Document& document, const Data& data, TextEncoding encoding) {
    if (data.isEmpty()) return;
    if (isUndecoded(document)) {
        const bool isChosen = encoding != brackwell::TextEncodingNone;
        const TextEncoding hidden = isChosen ? brackwell::TextEncodingNone : encodingForRepair(data);
        const std::optional<Data> text = brackwell::decodeText(data, hidden);
        document.explanation = text ? explainBegin(text->bytes()) : explainBytes(document.bytes);
        return;
    }
    const TvOFXParser parser = parserWithEncoding(data, encoding);
    const auto text = brackwell::decodeText(*parser.data(), parser.stringEncoding());
    if (!text) return;
    if (document.outcome == Document::Outcome::notOFX) {
        document.explanation = explainBegin(text->bytes());
        return;
    }
    if (document.outcome == Document::Outcome::read) {
        const bool isInLowerCase = !brackwell::repairOFXText(text->bytes()).changes.empty();
        if (isInLowerCase)
            addNote(document, "its tags are in lower case, so nothing is found in it without --repair");
        return;
    }
    document.complaint = withoutSecrets(std::move(document.complaint), text->bytes());
    document.explanation = explainNesting(text->bytes(), terminalWidth(STDERR_FILENO));
}

/// Finds an encoding for bytes that the library could not decode. Where a repair is wished for, one in
/// which only that reads them is good, too.
void parseInOtherEncodings(Document& document, const Data& unmarked, bool repairs) {
    std::vector<TextEncoding> encodings = encodingsToTry(unmarked);
    if (repairs && encodings.empty()) encodings.push_back(encodingForRepair(unmarked));
    for (const TextEncoding other : encodings) {
        parse(document, unmarked, other);
        if (isUndecoded(document)) continue;
        addNote(document,
                "read as " + std::string(brackwell::nameOfTextEncoding(document.encoding).value_or("")));
        break;
    }
}

}  // namespace

Document readDocument(const std::string& name, TextEncoding encoding, bool repairs) {
    Document document;
    document.name = name;
    const std::optional<Data> data = name == "-" ? readStandardInput() : Data::fromFile(name);
    if (!data) {
        document.complaint =
            name == "-" ? "Standard input cannot be read." : "The file at " + name + " was not found.";
        return document;
    }
    document.bytes = *data;
    Data used = *data;
    parse(document, used, encoding);
    if (encoding == brackwell::TextEncodingNone && isUndecoded(document)) {
        // A mark that the library leaves in place is no text in another encoding than its own.
        used = withoutMark(*data);
        parseInOtherEncodings(document, used, repairs);
        encoding = document.encoding;
    }
    if (repairs && !hasOFX(document) && !isUndecoded(document)) repair(document, used, encoding);
    if (!hasOFX(document) && !document.repair) explain(document, used, encoding);
    return document;
}

}  // namespace tool
