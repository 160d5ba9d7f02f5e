// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

#include "open/finding_list.h"

namespace brackwell::opening {

/// Adds findings for what the changes of a repair have done to values: texts that were taken away and put in
/// nowhere else, and a "<" in the middle of a word, which became a part of it.
void findRepairLosses(FindingList& findings, std::string_view text, const std::vector<RepairChange>& changes);

}  // namespace brackwell::opening
