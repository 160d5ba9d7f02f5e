// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "open/finding_list.h"
#include "open/response_kind.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Adds a finding for account types (ACCTTYPE) in statements and account lists that TvOFXBankAccount has no
/// value for: newer ones of the OFX standard, such as "CD", and an institution's own.
void findUnknownAccountTypes(FindingList& findings, const KnownResponses& responses,
                             const TreePlaces& places);

}  // namespace brackwell::opening
