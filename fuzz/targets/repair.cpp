// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <brackwell/repair.h>

#include "support/invalid_elements.h"
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

void tryScope(std::string_view bytes, RepairScope scope) {
    const RepairedText repaired = repairOFXText(bytes, scope);
    require(changed(bytes, repaired.changes) == repaired.text, "the changes make the repaired text");
    const std::optional<ParseDictionary> tree = treeOf(bytes);
    const bool isOut = tree && !(*tree)["OFX"].isNothing() && scope == RepairScope::unread;
    if (!isValidUTF8(bytes) || isOFCText(bytes) || isOut)
        require(repaired.changes.empty(), "what is out of scope is left as it is");
    for (const RepairRemark& remark : repaired.remaining)
        require(remark.offset < repaired.text.size() && !remark.reason.empty(),
                "a remark says where and why");
    const bool isJudged = tree.has_value() && scope == RepairScope::structure && !isOut;
    if (isJudged || !repaired.changes.empty())
        require(tests::untold(repaired).empty(), "what stands where it cannot is told");
    if (repaired.changes.empty()) return;
    require(!summaryOf(repaired.changes).empty(), "changes have a summary");
    require(treeOf(repaired.text).has_value(), "what was repaired is read");
    const RepairedText again = repairOFXText(repaired.text, scope);
    require(again.changes.empty(), "a second repair changes nothing");
    if (scope == RepairScope::structure)
        require(again.remaining == repaired.remaining, "what is left is told again");
}

}  // namespace

void tryBytes(std::string_view bytes) {
    tryScope(bytes, RepairScope::unread);
    tryScope(bytes, RepairScope::structure);
}

}  // namespace brackwell::fuzz
