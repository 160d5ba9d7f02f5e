// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <array>

namespace brackwell::opening {

inline constexpr std::size_t kFindingKindCount = static_cast<std::size_t>(FindingKind::repaired) + 1;

/// Collects the findings of one document. Of a kind, only so many are kept one by one; the rest are one
/// finding together, so that no document makes a list that nobody reads.
class FindingList {
public:
    static constexpr std::size_t kMostOfAKind = 20;

    void add(FindingKind kind, FindingSeverity severity, std::string text, std::size_t count = 1,
             std::optional<std::size_t> offset = std::nullopt);

    /// True while a finding of this kind is kept by itself. Of any other only count and severity are kept, so
    /// that neither its text nor its place has to be made.
    bool keeps(FindingKind kind) const noexcept {
        return countOfKind_[static_cast<std::size_t>(kind)] < kMostOfAKind;
    }

    /// What was collected, the severest first and then by place, with lines and columns in `text`.
    std::vector<Finding> finish(std::string_view text) &&;

private:
    struct Row {
        Finding finding;
        std::optional<std::size_t> offset;
    };
    void addPlaces(std::string_view text);

    std::vector<Row> rows_;
    std::array<std::size_t, kFindingKindCount> countOfKind_{};
};

}  // namespace brackwell::opening
