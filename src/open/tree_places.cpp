// SPDX-License-Identifier: Apache-2.0
#include "open/tree_places.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace brackwell::opening {

TreePlaces::TreePlaces(const reading::Document& document, const std::vector<RepairChange>& changes)
    : document_(document), changes_(changes) {
    begins_.reserve(changes.size());
    std::size_t copied = 0;  // before the repair
    std::size_t at = 0;      // after it
    for (const RepairChange& change : changes) {
        at += change.offset - copied;
        begins_.push_back(at);
        at += change.now.size();
        copied = change.offset + change.was.size();
    }
}

std::size_t TreePlaces::originalOffset(std::size_t offset) const noexcept {
    const auto next = std::ranges::upper_bound(begins_, offset);
    if (next == begins_.begin()) return offset;
    const auto number = static_cast<std::size_t>(next - begins_.begin()) - 1;
    const RepairChange& change = changes_[number];
    const std::size_t afterBegin = offset - begins_[number];
    if (afterBegin < change.now.size()) return change.offset;
    return change.offset + change.was.size() + afterBegin - change.now.size();
}

std::optional<std::size_t> TreePlaces::offsetOf(std::uint32_t node) const {
    // A tag is usually close to the first text after it. The search has a limit, since each finding has one;
    // without a tag in reach, the finding gets the place of the text.
    constexpr std::size_t farthest = 4096;
    std::optional<std::size_t> place;
    for (std::uint32_t at = node; at < document_.size() && !place; ++at)
        if (!document_.node(at).isAggregate()) place = document_.sourceOffset(document_.node(at));
    if (!place) return std::nullopt;
    const std::size_t begin = *place > farthest ? *place - farthest : 0;
    const std::string_view before = document_.source().bytes().substr(begin, *place - begin);
    const std::string tag = "<" + std::string(document_.name(document_.node(node)));
    const std::size_t found = before.rfind(tag);
    return originalOffset(found != before.npos ? begin + found : *place);
}

}  // namespace brackwell::opening
