// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "open/finding_list.h"
#include "open/response_kind.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Adds a finding when different transactions of a statement have the same identifier (FITID).
void findRepeatedIdentifiers(FindingList& findings, const KnownResponses& responses,
                             const TreePlaces& places);

}  // namespace brackwell::opening
