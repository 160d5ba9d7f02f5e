// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "open/finding_list.h"
#include "open/survey.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Adds findings for the amounts and dates of a tree that are no values, or not surely: by how they are
/// written, and by what the caller's formatters, which go first, make of them.
void findOddValues(FindingList& findings, const reading::Document& document, const Survey& survey,
                   const OpenOptions& options, const TreePlaces& places);

}  // namespace brackwell::opening
