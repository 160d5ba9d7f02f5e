// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

#include "open/content.h"
#include "open/finding_list.h"
#include "open/response_kind.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// The objects made of a tree.
struct Delivered {
    const KnownResponses& responses;
    const std::vector<InvestmentStatement>& investmentStatements;
    const std::vector<Security>& securities;
};

/// What the objects made of a tree deliver of it.
class Delivery {
public:
    /// `found` is what the tree holds; the objects were made from it and must outlive this one.
    Delivery(const Delivered& objects, const ContentCounts& found);

    /// How much is in the tree and in no object.
    std::size_t missing() const noexcept { return missing_; }
    /// The same of what a repair may deliver: all but what the library has no class for.
    std::size_t repairable() const noexcept { return repairable_; }

    /// Adds a finding for each cause for which something is missing.
    void addFindings(FindingList& findings, const reading::Document& document,
                     const TreePlaces& places) const;

private:
    Delivered delivered_;
    std::size_t missing_ = 0;
    std::size_t repairable_ = 0;
};

}  // namespace brackwell::opening
