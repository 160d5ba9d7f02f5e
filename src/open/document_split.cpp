// SPDX-License-Identifier: Apache-2.0
#include "open/document_split.h"

#include <algorithm>

#include "platform/ascii_case.h"

namespace brackwell::opening {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kRootEnd = "</OFX>";
constexpr std::string_view kHeader = "OFXHEADER:";

/// True where a document begins. The root tag is looked for in any case, as a repair finds it.
bool beginsDocument(std::string_view text) noexcept {
    for (const std::string_view begin : {kHeader, "<?xml"sv, "<?OFX"sv, "<OFX>"sv})
        if (equalsIgnoringCase(text.substr(0, begin.size()), begin)) return true;
    return false;
}

/// The next place at or after `from` where a document begins, or the end of the text.
std::size_t findDocument(std::string_view text, std::size_t from) noexcept {
    for (std::size_t at = from; at < text.size(); ++at) {
        at = std::min(text.find_first_of("<Oo", at), text.size());
        if (at < text.size() && beginsDocument(text.substr(at))) return at;
    }
    return text.size();
}

/// True for a header at the beginning of a line: one that stands before the end of the document before it
/// shows that this one was cut off.
bool beginsLine(std::string_view text, std::size_t at) noexcept {
    return at == 0 || text[at - 1] == '\n' || text[at - 1] == '\r';
}

/// Where the document that begins at or after `from` ends: after its root, or before the next header.
std::size_t endOfDocument(std::string_view text, std::size_t from) noexcept {
    bool isInBody = false;
    for (std::size_t at = from; at < text.size(); ++at) {
        at = std::min(text.find_first_of("<Oo", at), text.size());
        const std::string_view here = text.substr(at);
        if (equalsIgnoringCase(here.substr(0, kRootEnd.size()), kRootEnd)) return at + kRootEnd.size();
        if (isInBody && here.starts_with(kHeader) && beginsLine(text, at)) return at;
        isInBody = isInBody || equalsIgnoringCase(here.substr(0, 5), "<OFX>");
    }
    return text.size();
}

}  // namespace

std::vector<TextRange> splitIntoDocuments(std::string_view text) {
    std::vector<TextRange> parts;
    for (std::size_t begin = 0; parts.empty() || begin < text.size();) {
        const std::size_t end = endOfDocument(text, findDocument(text, begin));
        const bool isLast = findDocument(text, end) == text.size();
        parts.push_back({begin, isLast ? text.size() : end});
        if (isLast) break;
        begin = end;
    }
    return parts;
}

}  // namespace brackwell::opening
