// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "open/finding_list.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Adds findings for bank and card transactions without amount or date, and for balances without amount:
/// their element is missing, or has no text. One whose text cannot be read is not meant.
void findMissingValues(FindingList& findings, const reading::Document& document, const TreePlaces& places);

}  // namespace brackwell::opening
