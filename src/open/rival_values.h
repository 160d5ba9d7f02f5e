// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "open/finding_list.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Adds a finding for values of investments and securities that say something else than another element of
/// the same field, which is the one that is delivered.
void findRivalValues(FindingList& findings, const std::vector<InvestmentStatement>& statements,
                     const std::vector<Security>& securities, const TreePlaces& places);

}  // namespace brackwell::opening
