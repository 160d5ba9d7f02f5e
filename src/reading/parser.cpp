// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>

#include <array>
#include <bit>

#include "platform/rollback.h"
#include "reading/body_parser.h"
#include "reading/entities.h"
#include "reading/errors.h"

namespace brackwell {
namespace {

using namespace std::string_view_literals;

struct Mark {
    std::string_view bytes;
    TextEncoding encoding;
};
/// The first mark is not that of UTF-8, EF BB BF, which the UTF-8 decoder drops: intended.
/// FF FE 00 00 counts as UTF-16.
constexpr std::array<Mark, 4> kMarks{{{"\xBF\xBB\xBF"sv, TextEncodingUTF8},
                                      {"\x00\x00\xFE\xFF"sv, TextEncodingUTF32BigEndian},
                                      {"\xFE\xFF"sv, TextEncodingUTF16BigEndian},
                                      {"\xFF\xFE"sv, TextEncodingUTF16LittleEndian}}};

constexpr TextEncoding kHostUTF16 =
    std::endian::native == std::endian::little ? TextEncodingUTF16LittleEndian : TextEncodingUTF16BigEndian;

enum class Shape { notOFX, xml, sgml, bare };

/// What a trimmed text is, by its beginning.
Shape shapeOf(std::string_view text) noexcept {
    if (text.starts_with("<?xml"sv) || text.starts_with("<?XML"sv) || text.starts_with("<?OFX"sv))
        return Shape::xml;
    if (text.starts_with("OFXHEADER:"sv)) return Shape::sgml;
    return text.starts_with("<OFX>"sv) ? Shape::bare : Shape::notOFX;
}

/// Removes a mark, which sets the encoding when none is set.
void removeMark(Data& data, TextEncoding& encoding) noexcept {
    for (const Mark& mark : kMarks) {
        if (!data.bytes().starts_with(mark.bytes)) continue;
        data = data.from(mark.bytes.size());
        if (encoding == TextEncodingNone) encoding = mark.encoding;
        return;
    }
}

}  // namespace

std::shared_ptr<TvOFXParser> TvOFXParser::initWithData(std::optional<Data> data) {
    return std::make_shared<TvOFXParser>(std::move(data));
}

std::shared_ptr<TvOFXParserResult> TvOFXParser::parseWithError(Error* error) {
    Rollback before(data_, stringEncoding_);
    std::shared_ptr<TvOFXParserResult> result = parse(error);
    before.keep();
    return result;
}

std::shared_ptr<TvOFXParserResult> TvOFXParser::parse(Error* error) {
    if (!data_ || data_->isEmpty()) {
        reading::report(error, reading::kParserError, "no data to parse");
        return nullptr;
    }
    const std::optional<Data> decoded = decode();
    if (!decoded) {
        stringEncoding_ = TextEncodingNone;
        reading::report(error, reading::kParserError, "Data is not OFX or unknown character encoding.");
        return nullptr;
    }
    const std::string_view text = trimWhiteSpace(decoded->bytes());
    auto result = std::make_shared<TvOFXParserResult>();
    const Shape shape = shapeOf(text);
    if (shape == Shape::notOFX) return result;

    std::size_t bodyIndex = 0;
    if (shape == Shape::xml) bodyIndex = parseXmlHeader(text, &result->ofxHeader.emplace());
    if (shape == Shape::sgml) result->ofxHeader = parseSGMLHeader(text);

    std::string failure;
    result->ofxData = reading::parseBody(*decoded, text.substr(bodyIndex), &failure);
    if (result->ofxData || error == nullptr) return result;
    reading::report(error, reading::kParserError, std::move(failure));
    return nullptr;
}

/// Removes a mark and decodes the data: with the preset encoding once, otherwise with the first that
/// gives a text that begins like OFX, and ASCII whatever it gives.
std::optional<Data> TvOFXParser::decode() {
    removeMark(*data_, stringEncoding_);
    if (stringEncoding_ != TextEncodingNone) {
        // Its mark is gone; another one behind it decides nothing.
        const TextEncoding encoding = stringEncoding_ == TextEncodingUTF16 ? kHostUTF16 : stringEncoding_;
        const std::optional<Data> text = decodeText(*data_, encoding);
        return text ? std::optional(text->owned()) : std::nullopt;
    }
    for (const TextEncoding encoding : {TextEncodingUTF8, TextEncodingUTF16}) {
        stringEncoding_ = encoding;
        const std::optional<Data> text = decodeText(*data_, encoding);
        if (text && stringHasValidOfxHeaderPrefix(text->bytes())) return text->owned();
    }
    stringEncoding_ = TextEncodingASCII;
    return decodeText(*data_, TextEncodingASCII);
}

bool TvOFXParser::stringHasValidOfxHeaderPrefix(std::string_view text) noexcept {
    return shapeOf(trimWhiteSpace(text)) != Shape::notOFX;
}

std::optional<ParseDictionary> TvOFXParser::parseDataAndIgnoreOfxHeader() const {
    if (!data_) return std::nullopt;
    const std::optional<Data> text = decodeText(*data_, TextEncodingUTF8);
    if (!text || text->isEmpty()) return std::nullopt;
    const Data owned = text->owned();
    return reading::parseBody(owned, owned.bytes(), nullptr);
}

std::optional<ParseDictionary> TvOFXParser::parseOFXDataString(std::string_view body, Error* error) {
    const Data owned = Data::copy(body);
    std::string failure;
    std::optional<ParseDictionary> tree = reading::parseBody(owned, owned.bytes(), &failure);
    if (!tree) reading::report(error, reading::kParserError, std::move(failure));
    return tree;
}

std::optional<std::string> TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(OptionalText text) {
    if (!text) return std::nullopt;
    std::string unescaped(text->size(), '\0');
    unescaped.resize(reading::unescape(*text, unescaped.data()));
    return unescaped;
}

}  // namespace brackwell
