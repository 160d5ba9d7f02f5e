// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "open/finding_list.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Adds a finding when different transactions of an investment statement have the same identifier (FITID).
void findRepeatedInvestmentIdentifiers(FindingList& findings,
                                       const std::vector<InvestmentStatement>& statements,
                                       const TreePlaces& places);

}  // namespace brackwell::opening
