// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "open/finding_list.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Adds findings for positions whose units and price do not make their market value, and for investment
/// transactions whose parts do not make their total, both beyond rounding.
void findContradictions(FindingList& findings, const std::vector<InvestmentStatement>& statements,
                        const SecurityList& securities, const TreePlaces& places);

}  // namespace brackwell::opening
