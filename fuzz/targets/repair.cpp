// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <brackwell/repair.h>

#include <algorithm>

#include "target.h"

/// \file
/// The repair of a document's text, and the import of what comes of it.

namespace brackwell::fuzz {
namespace {

/// The tree of a document whose body can be parsed.
std::optional<ParseDictionary> treeOf(std::string_view text) {
    TvOFXParser parser(Data::view(text));
    parser.setStringEncoding(TextEncodingUTF8);
    Error error;
    const auto result = parser.parseWithError(&error);
    return result ? result->ofxData : std::nullopt;
}

/// True when a text may have its names in lower case.
bool mayBeInLowerCase(std::string_view text) {
    constexpr std::string_view root = "OFX";
    const auto isSame = [](char a, char b) { return a == b || a == b - 'A' + 'a'; };
    for (auto at = text.begin(); at != text.end(); ++at) {
        at = std::search(at, text.end(), root.begin(), root.end(), isSame);
        if (at == text.end()) break;
        if (!std::string_view(at, text.end()).starts_with(root)) return true;
    }
    return false;
}

/// The text with every change made at its place.
std::string changed(std::string_view text, const std::vector<RepairChange>& changes) {
    std::string result;
    std::size_t done = 0;
    for (const RepairChange& change : changes) {
        require(change.offset >= done, "changes stand in their order and do not overlap");
        require(text.substr(change.offset).starts_with(change.was), "what was changed stood there");
        require(!describe(change.kind).empty() && change.line > 0 && change.column > 0,
                "a change says where");
        result.append(text.substr(done, change.offset - done)).append(change.now);
        done = change.offset + change.was.size();
    }
    return result.append(text.substr(done));
}

}  // namespace

void tryBytes(std::string_view bytes) {
    const RepairedText repaired = repairOFXText(bytes);
    require(changed(bytes, repaired.changes) == repaired.text, "the changes make the repaired text");
    const std::optional<ParseDictionary> tree = treeOf(bytes);
    const bool findsNothing = tree && (*tree)["OFX"].isNothing() && mayBeInLowerCase(bytes);
    if (!isValidUTF8(bytes) || (tree && !findsNothing))
        require(repaired.changes.empty(), "what is read already is left as it is");
    if (repaired.changes.empty()) return;
    require(treeOf(repaired.text).has_value(), "what was repaired is read");
    require(repairOFXText(repaired.text).changes.empty(), "a second repair changes nothing");
}

}  // namespace brackwell::fuzz
