// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "open/finding_list.h"

namespace brackwell::opening {

/// Collects the findings of all documents of a file, in their order. The limit of a kind is that of a file,
/// not of each document: a file may hold thousands of them.
class FileFindings {
public:
    /// One without a text stands for more of its kind.
    void add(Finding finding);

    /// What was collected. How many more there are of a kind is said after the last one of it that is kept.
    std::vector<Finding> finish() &&;

private:
    std::vector<Finding> kept_;
    std::array<std::size_t, kFindingKindCount> keptOfKind_{};
    FindingRest rest_;
};

}  // namespace brackwell::opening
