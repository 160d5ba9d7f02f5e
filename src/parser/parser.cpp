// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>

#include "memory/rollback.h"
#include "parser/document_reader.h"
#include "parser/entities.h"
#include "parser/errors.h"

namespace brackwell {

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
        reading::report(error, reading::kParserError, "Data is not OFX or unknown character encoding.");
        return nullptr;
    }
    auto result = std::make_shared<TvOFXParserResult>();
    reading::BodyFailure failure;
    const auto outcome = reading::readDocument(*decoded, *result, failure);
    if (outcome != reading::DocumentReading::malformed || error == nullptr) return result;
    reading::report(error, reading::kParserError, std::move(failure.text));
    return nullptr;
}

std::optional<Data> TvOFXParser::decode() {
    const std::optional<Data> text = reading::decodeDocument(*data_, stringEncoding_);
    return text ? std::optional(text->owned()) : std::nullopt;
}

bool TvOFXParser::stringHasValidOfxHeaderPrefix(std::string_view text) noexcept {
    return reading::formOf(text) != reading::TextForm::notOFX;
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
    reading::BodyFailure failure;
    std::optional<ParseDictionary> tree = reading::parseBody(owned, owned.bytes(), &failure);
    if (!tree) reading::report(error, reading::kParserError, std::move(failure.text));
    return tree;
}

std::optional<std::string> TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(TextArgument text) {
    if (!text) return std::nullopt;
    std::string unescaped(text->size(), '\0');
    unescaped.resize(reading::unescape(*text, unescaped.data()));
    return unescaped;
}

}  // namespace brackwell
