// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "open/finding_list.h"
#include "open/response_kind.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Adds a finding for each answer of the server that is a warning or an error.
void findRefusals(FindingList& findings, const TvOFXResponseList& responses, const TreePlaces& places);

/// Adds a finding when statements do not say of which account they are.
void findNamelessStatements(FindingList& findings, const KnownResponses& responses,
                            const std::vector<InvestmentStatement>& investmentStatements,
                            const TreePlaces& places);

}  // namespace brackwell::opening
