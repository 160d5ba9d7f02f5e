// SPDX-License-Identifier: Apache-2.0
#include "reading/header_reader.h"

#include <algorithm>

namespace brackwell {
namespace reading {

void HeaderCollector::set(std::string_view name, std::string_view value) {
    const NameID id = names_.number(name);
    places_.resize(std::max<std::size_t>(places_.size(), names_.end()), kNone);
    if (places_[id] != kNone) {
        values_[places_[id]].second = value;
        return;
    }
    places_[id] = static_cast<std::uint32_t>(values_.size());
    values_.emplace_back(id, value);
}

ParseDictionary HeaderCollector::finish() const {
    ParseDictionaryBuilder builder;
    for (const auto& [id, value] : values_) builder.leaf(names_.name(id), value);
    return builder.finish();
}

}  // namespace reading

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kBlanks = " \t"sv;

std::string_view trimCharacters(std::string_view text, std::string_view characters) noexcept {
    const std::size_t first = text.find_first_not_of(characters);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

/// The position of `wanted` at or after `from`, or the end of the text.
std::size_t findOrEnd(std::string_view text, std::string_view wanted, std::size_t from) noexcept {
    return std::min(text.find(wanted, from), text.size());
}

/// Reads the encoding of an XML declaration that begins at the start of the text; returns where
/// reading goes on.
std::size_t readXmlDeclaration(std::string_view text, reading::HeaderCollector& header) {
    constexpr std::string_view begin = "<?xml"sv;
    constexpr std::string_view encoding = "encoding=\""sv;
    const std::size_t end = findOrEnd(text, "?>"sv, begin.size());
    const std::size_t found = text.substr(0, end).find(encoding, begin.size());
    // An encoding in single quotes is not recorded.
    if (found == std::string_view::npos) return end;
    const std::size_t value = found + encoding.size();
    // Without a closing quote the value runs on, to the next quote anywhere or to the end: intended.
    const std::size_t quote = findOrEnd(text, "\""sv, value);
    header.set("ENCODING"sv, text.substr(value, quote - value));
    return quote;
}

/// Reads one NAME="value" of the "<?OFX" instruction; anything else is passed over.
void readAttribute(std::string_view piece, reading::HeaderCollector& header) {
    const std::size_t equals = piece.find('=');
    if (equals == std::string_view::npos) return;
    const std::string_view name = piece.substr(0, equals);
    const std::string_view rest = piece.substr(equals + 1);
    const std::string_view value = trimCharacters(rest.substr(0, rest.find('=')), "\""sv);
    if (!name.empty() && !value.empty()) header.set(name, value);
}

void readAttributes(std::string_view instruction, reading::HeaderCollector& header) {
    while (!instruction.empty()) {
        const std::size_t end = std::min(instruction.find_first_of(" \n"sv), instruction.size());
        readAttribute(instruction.substr(0, end), header);
        instruction.remove_prefix(std::min(end + 1, instruction.size()));
    }
}

}  // namespace

ParseDictionary TvOFXParser::parseSGMLHeader(std::string_view text) {
    reading::HeaderCollector header;
    const std::size_t end = text.find("<OFX>"sv);
    if (end == std::string_view::npos) return {};
    for (const std::string_view line : splitLines(text.substr(0, end))) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos || line.find(':', colon + 1) != std::string_view::npos) continue;
        const std::string_view name = trimCharacters(line.substr(0, colon), kBlanks);
        if (!name.empty()) header.set(name, trimCharacters(line.substr(colon + 1), kBlanks));
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

    std::size_t at = text.starts_with("<?xml"sv) ? readXmlDeclaration(text, collector) : 0;
    at = std::min(findOrEnd(text, begin, at) + begin.size(), text.size());
    const std::size_t bodyIndex = findOrEnd(text, end, at);
    const std::string_view instruction = text.substr(at, bodyIndex - at);
    readAttributes(instruction, collector);
    *header = collector.finish();
    // Without an instruction the search ran to the end of the text and the body is empty: intended.
    return instruction.empty() ? bodyIndex : std::min(bodyIndex + end.size(), text.size());
}

}  // namespace brackwell
