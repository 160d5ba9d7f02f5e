// SPDX-License-Identifier: Apache-2.0
#include "open/finding_list.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

#include "open/text_place.h"

namespace brackwell::opening {

void FindingList::add(FindingKind kind, FindingSeverity severity, std::string text, std::size_t count,
                      std::optional<std::size_t> offset) {
    if (++countOfKind_[static_cast<std::size_t>(kind)] <= kMostOfAKind)
        rows_.push_back({{kind, severity, 0, 0, count, std::move(text)}, offset});
    else
        rest_.add(kind, severity, count);
}

void FindingList::addPlaces(std::string_view text) {
    // In the order of the places, so that one pass over the text finds all lines.
    std::vector<std::size_t> order(rows_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, [this](std::size_t row) { return rows_[row].offset; });
    PlaceCursor cursor(text);
    for (const std::size_t number : order) {
        Row& row = rows_[number];
        if (!row.offset) continue;
        const TextPlace place = cursor.advanceTo(*row.offset);
        row.finding.line = place.line;
        row.finding.column = place.column;
    }
}

std::vector<Finding> FindingList::finish(std::string_view text) && {
    addPlaces(text);
    std::vector<Finding> findings;
    for (Row& row : rows_) findings.push_back(std::move(row.finding));
    std::ranges::stable_sort(findings, [](const Finding& a, const Finding& b) {
        return std::tuple(b.severity, a.line, a.column) < std::tuple(a.severity, b.line, b.column);
    });
    for (std::size_t kind = 0; kind < kFindingKindCount; ++kind)
        if (const auto rest = rest_.of(static_cast<FindingKind>(kind))) findings.push_back(*rest);
    return findings;
}

}  // namespace brackwell::opening
