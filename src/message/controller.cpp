// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>
#include <brackwell/reading.h>

#include "parser/errors.h"
#include "text/ascii_digit.h"

namespace brackwell {
namespace {

/// A "%" that two hexadecimal digits do not follow is itself: paths may have one.
std::string withoutPercents(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size() && hexDigitValue(text[i + 1]) >= 0 &&
                            hexDigitValue(text[i + 2]) >= 0;
        plain += escape ? static_cast<char>(hexDigitValue(text[i + 1]) * 16 + hexDigitValue(text[i + 2]))
                        : text[i];
        if (escape) i += 2;
    }
    return plain;
}

/// The path of a file: URL on this machine; any other text is a path already.
std::string pathOf(std::string_view url) {
    for (const std::string_view begin : {"file://localhost/", "file:///"})
        if (url.starts_with(begin)) return withoutPercents(url.substr(begin.size() - 1));
    return std::string(url);
}

void reportNotFound(std::string_view file, Error* error) {
    reading::report(error, reading::kImportError, "The file at " + std::string(file) + " was not found.");
}

}  // namespace

std::shared_ptr<TvOFXMessage> TovanaOFXController::importOFXFileFromURL(TextArgument url, Error* error) {
    return importOFXFileFromURL(url, TextEncodingNone, nullptr, nullptr, error);
}

std::shared_ptr<TvOFXMessage> TovanaOFXController::importOFXFileFromURL(
    TextArgument url, TextEncoding encoding, std::shared_ptr<const NumberFormatter> numberFormatter,
    std::shared_ptr<const DateFormatter> dateFormatter, Error* error) {
    if (!url) return nullptr;
    const std::optional<Data> data = Data::fromFile(pathOf(*url));
    if (!data) reportNotFound(*url, error);
    return importOFXFileFromData(data, encoding, std::move(numberFormatter), std::move(dateFormatter), error);
}

std::shared_ptr<TvOFXMessage> TovanaOFXController::importFile(
    const std::string& path, TextEncoding encoding, std::shared_ptr<const NumberFormatter> numberFormatter,
    std::shared_ptr<const DateFormatter> dateFormatter, Error* error) {
    const std::optional<Data> data = Data::fromFile(path);
    if (!data) reportNotFound(path, error);
    return importOFXFileFromData(data, encoding, std::move(numberFormatter), std::move(dateFormatter), error);
}

std::shared_ptr<TvOFXMessage> TovanaOFXController::importOFXFileFromData(const std::optional<Data>& data,
                                                                         Error* error) {
    return importOFXFileFromData(data, TextEncodingNone, nullptr, nullptr, error);
}

std::shared_ptr<TvOFXMessage> TovanaOFXController::importOFXFileFromData(
    const std::optional<Data>& data, TextEncoding encoding,
    std::shared_ptr<const NumberFormatter> numberFormatter,
    std::shared_ptr<const DateFormatter> dateFormatter, Error* error) {
    if (!data) return nullptr;
    TvOFXParser parser(data);
    parser.setStringEncoding(encoding);
    Error parserError;  // always given, so that an error in the body ends the import
    const std::shared_ptr<TvOFXParserResult> result = parser.parseWithError(&parserError);
    if (!result) {
        if (error != nullptr) *error = std::move(parserError);
        return nullptr;
    }
    auto message = std::make_shared<TvOFXMessage>();
    message->processParserResult(*result, std::move(numberFormatter), std::move(dateFormatter));
    return message;
}

}  // namespace brackwell
