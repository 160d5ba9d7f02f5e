// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brackwell::opening {

inline constexpr std::size_t kFindingKindCount = static_cast<std::size_t>(FindingKind::repaired) + 1;

/// Findings that are not kept one by one: of each kind, how much they stand for and how much they matter.
class FindingRest {
public:
    void add(FindingKind kind, FindingSeverity severity, std::size_t count) noexcept {
        Part& part = parts_[static_cast<std::size_t>(kind)];
        part.count += count;
        part.severity = std::max(part.severity, severity);
    }
    /// All of a kind as one finding without a text; nothing when there are none.
    std::optional<Finding> of(FindingKind kind) const {
        const Part& part = parts_[static_cast<std::size_t>(kind)];
        if (part.count == 0) return std::nullopt;
        return Finding{kind, part.severity, 0, 0, part.count, {}};
    }

private:
    struct Part {
        std::size_t count = 0;
        FindingSeverity severity = FindingSeverity::note;
    };
    std::array<Part, kFindingKindCount> parts_{};
};

/// Collects the findings of one document. Of each kind, the first kMostOfAKind are kept; the rest are only
/// counted, so that no document makes a list too long for anybody to read.
class FindingList {
public:
    static constexpr std::size_t kMostOfAKind = 20;

    void add(FindingKind kind, FindingSeverity severity, std::string text, std::size_t count = 1,
             std::optional<std::size_t> offset = std::nullopt);

    /// True while a further finding of this kind is kept. After that only count and severity are, so the
    /// caller need not make text and place.
    bool keeps(FindingKind kind) const noexcept {
        return countOfKind_[static_cast<std::size_t>(kind)] < kMostOfAKind;
    }

    /// What was collected, the severest first and then by place, with lines and columns in `text`. The
    /// uncounted rest of a kind comes last, as a finding without a text; FileFindings gives it one.
    std::vector<Finding> finish(std::string_view text) &&;

private:
    struct Row {
        Finding finding;
        std::optional<std::size_t> offset;
    };
    void addPlaces(std::string_view text);

    std::vector<Row> rows_;
    std::array<std::size_t, kFindingKindCount> countOfKind_{};
    FindingRest rest_;
};

}  // namespace brackwell::opening
