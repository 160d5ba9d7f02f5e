// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>

#include "target.h"

/// \file
/// The readers of both kinds of header, and what they stand on.

namespace brackwell::fuzz {
namespace {

void requireFromText(const ParseDictionary& header, std::string_view text) {
    for (const auto& [name, value] : header) {
        require(!name.empty() && value.kind() == ParseValue::Kind::text, "a header is names with texts");
        require(text.find(name) != std::string_view::npos || name == "ENCODING", "a name is of the text");
        require(text.find(*value.text()) != std::string_view::npos, "a value is of the text");
    }
}

void requireXml(std::string_view text) {
    require(TvOFXParser::parseXmlHeader(text, nullptr) == 0, "nothing is read without a place");
    ParseDictionary header;
    const std::size_t body = TvOFXParser::parseXmlHeader(text, &header);
    require(body <= text.size(), "the body begins in the text");
    requireFromText(header, text);

    ParseDictionary again = header;
    require(TvOFXParser::parseXmlHeader(text, &again) == body && again == header, "two readings agree");
    ParseDictionary filled{{"BEFORE\n", "kept"}};
    TvOFXParser::parseXmlHeader(text, &filled);
    require(filled["BEFORE\n"].text() == "kept", "what stands in a header stays");
}

void requireLines(std::string_view text) {
    std::size_t size = 0;
    for (const std::string_view line : splitLines(text)) size += line.size();
    require(size <= text.size(), "lines are parts of the text");
    const std::string_view trimmed = trimWhiteSpace(text);
    require(trimWhiteSpace(trimmed) == trimmed, "a trimmed text has nothing to trim");
    require(TvOFXParser::stringHasValidOfxHeaderPrefix(text) ==
                TvOFXParser::stringHasValidOfxHeaderPrefix(trimmed),
            "white space does not change what a text begins with");
}

}  // namespace

void tryBytes(std::string_view bytes) {
    requireXml(bytes);
    const ParseDictionary lines = TvOFXParser::parseSGMLHeader(bytes);
    requireFromText(lines, bytes);
    require(lines == TvOFXParser::parseSGMLHeader(bytes), "two readings agree");
    requireLines(bytes);
}

}  // namespace brackwell::fuzz
