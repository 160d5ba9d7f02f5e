// SPDX-License-Identifier: Apache-2.0
#include "parser/header_reader.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "text/ascii_space.h"
#include "text/size_until.h"

namespace brackwell {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kDeclaration = "<?xml"sv;

// One character at a time is as fast as it gets for names and values of some ten characters.
bool isQuote(char c) noexcept { return c == '"'; }
bool endsAttribute(char c) noexcept { return c == ' ' || c == '\n'; }

/// The text without the characters of a kind at both ends.
template <bool (*isOfKind)(char)>
std::string_view trimmed(std::string_view text) noexcept {
    while (!text.empty() && isOfKind(text.front())) text.remove_prefix(1);
    while (!text.empty() && isOfKind(text.back())) text.remove_suffix(1);
    return text;
}

/// The position of `wanted` at or after `from`, or the end of the text.
std::size_t findOrEnd(std::string_view text, std::string_view wanted, std::size_t from) noexcept {
    return std::min(text.find(wanted, from), text.size());
}

struct Declaration {
    OptionalText encoding;
    std::size_t end;  ///< where reading goes on
};

/// The XML declaration that begins at the start of the text.
Declaration declarationOf(std::string_view text) noexcept {
    constexpr std::string_view encoding = "encoding=\""sv;
    const std::size_t end = findOrEnd(text, "?>"sv, kDeclaration.size());
    const std::size_t found = text.substr(0, end).find(encoding, kDeclaration.size());
    // An encoding in single quotes is not recorded.
    if (found == std::string_view::npos) return {std::nullopt, end};
    const std::size_t value = found + encoding.size();
    // Without a closing quote the value runs on, to the next quote anywhere or to the end: intended.
    const std::size_t quote = findOrEnd(text, "\""sv, value);
    return {text.substr(value, quote - value), quote};
}

/// Reads one NAME="value" of the "<?OFX" instruction; anything else is passed over.
void readAttribute(std::string_view piece, reading::HeaderCollector& header) {
    const std::size_t equals = piece.find('=');
    if (equals == std::string_view::npos) return;
    const std::string_view name = piece.substr(0, equals);
    const std::string_view rest = piece.substr(equals + 1);
    const std::string_view value = trimmed<isQuote>(rest.substr(0, rest.find('=')));
    if (!name.empty() && !value.empty()) header.set(name, value);
}

void readAttributes(std::string_view instruction, reading::HeaderCollector& header) {
    while (!instruction.empty()) {
        const std::size_t size = sizeUntil(instruction, endsAttribute);
        readAttribute(instruction.substr(0, size), header);
        instruction.remove_prefix(std::min(size + 1, instruction.size()));
    }
}

}  // namespace

OptionalText reading::encodingInDeclaration(std::string_view text) noexcept {
    return text.starts_with(kDeclaration) ? declarationOf(text).encoding : std::nullopt;
}

ParseDictionary TvOFXParser::parseSGMLHeader(std::string_view text) {
    reading::HeaderCollector header;
    const std::size_t end = text.find("<OFX>"sv);
    if (end == std::string_view::npos) return {};
    for (const std::string_view line : splitLines(text.substr(0, end))) {
        const std::size_t colon = line.find(':');
        // A line with two colons is not a field.
        if (colon == std::string_view::npos || line.find(':', colon + 1) != std::string_view::npos) continue;
        const std::string_view name = trimmed<isBlank>(line.substr(0, colon));
        if (!name.empty()) header.set(name, trimmed<isBlank>(line.substr(colon + 1)));
    }
    return header.finish();
}

std::size_t TvOFXParser::parseXmlHeader(std::string_view text, ParseDictionary* header) {
    constexpr std::string_view begin = "<?OFX"sv;
    constexpr std::string_view end = "?>"sv;
    if (text.empty() || header == nullptr) return 0;
    reading::HeaderCollector collector;
    std::vector<ParseDictionary::Entry> before(header->begin(), header->end());
    for (const auto& [name, value] : before) collector.set(name, value.text().value_or(""sv));

    std::size_t at = 0;
    if (text.starts_with(kDeclaration)) {
        const Declaration declaration = declarationOf(text);
        if (declaration.encoding) collector.set("ENCODING"sv, *declaration.encoding);
        at = declaration.end;
    }
    at = std::min(findOrEnd(text, begin, at) + begin.size(), text.size());
    const std::size_t bodyIndex = findOrEnd(text, end, at);
    const std::string_view instruction = text.substr(at, bodyIndex - at);
    readAttributes(instruction, collector);
    *header = collector.finish();
    // Without an instruction the search ran to the end of the text and the body is empty: intended.
    return instruction.empty() ? bodyIndex : std::min(bodyIndex + end.size(), text.size());
}

}  // namespace brackwell
