// SPDX-License-Identifier: Apache-2.0
#include "parser/document_reader.h"

#include <array>
#include <bit>
#include <cstddef>

#include "text/byte_order_marks.h"

namespace brackwell::reading {
namespace {

using namespace std::string_view_literals;

struct Mark {
    std::string_view bytes;
    TextEncoding encoding;
};
/// The mark of UTF-8 is missing, since the UTF-8 decoder drops it: intended. FF FE 00 00 counts as UTF-16.
constexpr std::array<Mark, 4> kMarks{{{kParserUTF8Mark, TextEncodingUTF8},
                                      {kUTF32BigEndianMark, TextEncodingUTF32BigEndian},
                                      {kUTF16BigEndianMark, TextEncodingUTF16BigEndian},
                                      {kUTF16LittleEndianMark, TextEncodingUTF16LittleEndian}}};

constexpr TextEncoding kHostUTF16 =
    std::endian::native == std::endian::little ? TextEncodingUTF16LittleEndian : TextEncodingUTF16BigEndian;

/// Removes a mark, which sets the encoding when none is set.
void removeMark(Data& data, TextEncoding& encoding) noexcept {
    for (const Mark& mark : kMarks) {
        if (!data.bytes().starts_with(mark.bytes)) continue;
        data = data.from(mark.bytes.size());
        if (encoding == TextEncodingNone) encoding = mark.encoding;
        return;
    }
}

TextForm formOfTrimmed(std::string_view text) noexcept {
    if (text.starts_with("<?xml"sv) || text.starts_with("<?XML"sv) || text.starts_with("<?OFX"sv))
        return TextForm::xml;
    if (text.starts_with("OFXHEADER:"sv)) return TextForm::sgml;
    return text.starts_with("<OFX>"sv) ? TextForm::bare : TextForm::notOFX;
}

TagPlace moved(TagPlace place, std::size_t by) noexcept { return {place.begin + by, place.end + by}; }

}  // namespace

TextForm formOf(std::string_view text) noexcept { return formOfTrimmed(trimWhiteSpace(text)); }

std::optional<Data> decodeDocument(Data& data, TextEncoding& encoding) {
    removeMark(data, encoding);
    if (encoding != TextEncodingNone) {
        // Its mark is gone; another one after it decides nothing.
        std::optional<Data> text = decodeText(data, encoding == TextEncodingUTF16 ? kHostUTF16 : encoding);
        if (!text) encoding = TextEncodingNone;
        return text;
    }
    for (const TextEncoding tried : {TextEncodingUTF8, TextEncodingUTF16}) {
        encoding = tried;
        std::optional<Data> text = decodeText(data, tried);
        if (text && formOf(text->bytes()) != TextForm::notOFX) return text;
    }
    std::optional<Data> text = decodeText(data, TextEncodingASCII);
    encoding = text ? TextEncodingASCII : TextEncodingNone;
    return text;
}

DocumentReading readDocument(const Data& text, TvOFXParserResult& result, BodyFailure& failure) {
    const std::string_view document = trimWhiteSpace(text.bytes());
    const TextForm form = formOfTrimmed(document);
    if (form == TextForm::notOFX) return DocumentReading::notOFX;

    std::size_t bodyIndex = 0;
    if (form == TextForm::xml) bodyIndex = TvOFXParser::parseXmlHeader(document, &result.ofxHeader.emplace());
    if (form == TextForm::sgml) result.ofxHeader = TvOFXParser::parseSGMLHeader(document);

    const std::string_view body = document.substr(bodyIndex);
    result.ofxData = parseBody(text, body, &failure);
    if (result.ofxData) return DocumentReading::read;
    const auto begin = static_cast<std::size_t>(body.data() - text.bytes().data());
    failure.close = moved(failure.close, begin);
    if (failure.open) failure.open = moved(*failure.open, begin);
    return DocumentReading::malformed;
}

}  // namespace brackwell::reading
