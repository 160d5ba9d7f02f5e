// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

#include "open/finding_list.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Adds a finding for text that stands before the first element and is neither header nor markup: in `text`
/// what a repair dropped so that the document is recognised, in `readText`, the text after the repair, what
/// stands among the lines of the header, which the import passes over. `name` is that of the first element,
/// where it stands in `readText`; empty when there is none.
void findTextBefore(FindingList& findings, std::string_view text, const std::vector<RepairChange>& changes,
                    std::string_view readText, std::string_view name, const TreePlaces& places);

}  // namespace brackwell::opening
