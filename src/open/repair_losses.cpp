// SPDX-License-Identifier: Apache-2.0
#include "open/repair_losses.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "open/shown_text.h"
#include "repair/remains.h"
#include "text/text_parts.h"

namespace brackwell::opening {
namespace {

/// Changes that take away what is no value.
constexpr auto kHarmless = std::to_array<RepairKind>({
    RepairKind::textBeforeDocument,
    RepairKind::comment,
    RepairKind::instruction,
    RepairKind::characterData,
    RepairKind::header,
    RepairKind::lessThan,
    RepairKind::unfinishedTag,
});

/// A text that stands in a change.
struct Value {
    std::string_view text;
    std::size_t change;
    auto operator<=>(const Value& other) const noexcept { return text <=> other.text; }
    bool operator==(const Value& other) const noexcept { return text == other.text; }
};

/// The texts between the tags of a piece of a document.
void addValues(std::vector<Value>& values, std::string_view piece, std::size_t change) {
    while (!piece.empty()) {
        const std::string_view text = piece.substr(0, piece.find('<'));
        if (!trimWhiteSpace(text).empty()) values.push_back({trimWhiteSpace(text), change});
        piece.remove_prefix(text.size());
        piece.remove_prefix(piece.find('>') == piece.npos ? piece.size() : piece.find('>') + 1);
    }
}

/// The texts that were removed and not inserted anywhere.
std::vector<Value> lostValues(const std::vector<RepairChange>& changes) {
    std::vector<Value> was;
    std::vector<Value> now;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        if (std::ranges::find(kHarmless, changes[i].kind) != kHarmless.end()) continue;
        addValues(was, changes[i].was, i);
        addValues(now, changes[i].now, i);
    }
    std::ranges::stable_sort(was);
    std::ranges::stable_sort(now);
    std::vector<Value> lost;
    std::ranges::set_difference(was, now, std::back_inserter(lost));
    return lost;
}

bool isInk(std::string_view text, std::size_t at) noexcept {
    return at < text.size() && static_cast<unsigned char>(text[at]) > ' ';
}

/// True for a "<" that has no blank on either side, nothing after it, or what may be an element's name.
bool isDoubtful(std::string_view text, std::size_t place) noexcept {
    // Close tags do not count: those that become text close a word in brackets.
    if (text.substr(place + 1).starts_with('/')) return false;
    if (isInk(text, place - 1) && isInk(text, place + 1)) return true;
    const std::string_view after = text.substr(place + 1, 64);
    const std::size_t ink = after.find_first_not_of(" \t");
    if (ink == after.npos || std::string_view("<\r\n").find(after[ink]) != std::string_view::npos)
        return true;
    return !repair::nameWithoutEnd(after).empty();
}

}  // namespace

void findRepairLosses(FindingList& findings, std::string_view text,
                      const std::vector<RepairChange>& changes) {
    if (const std::vector<Value> lost = lostValues(changes); !lost.empty()) {
        const auto first = std::ranges::min_element(lost, {}, &Value::change);
        findings.add(FindingKind::looseText, FindingSeverity::warning,
                     counted(lost.size(), "text belongs to no element", "texts belong to no element") +
                         (lost.size() == 1 ? ": " : "; the first is ") +
                         quotedUnlessSecret(text, changes[first->change].offset,
                                            changes[first->change].was.size(), first->text) +
                         ".",
                     lost.size(), changes[first->change].offset);
    }
    std::size_t count = 0;
    std::size_t place = 0;
    for (const RepairChange& change : changes) {
        if (change.kind == RepairKind::lessThan && change.offset > 0 && isDoubtful(text, change.offset) &&
            count++ == 0)
            place = change.offset;
    }
    if (count == 0) return;
    const std::size_t begin = place - afterLast(text.substr(0, place), "<>\r\n").size();
    const std::size_t end = text.find_first_of("<>\r\n", place + 1);
    findings.add(FindingKind::brokenTag, FindingSeverity::warning,
                 counted(count, "\"<\" does not start a tag and is read as text",
                         "\"<\" do not start tags and are read as text") +
                     (count == 1 ? ": " : "; the first is in ") +
                     quotedUnlessSecret(text, begin, std::min(end, text.size()) - begin) + ".",
                 count, place);
}

}  // namespace brackwell::opening
