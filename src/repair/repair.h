// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/repair.h>

#include <string_view>
#include <vector>

namespace brackwell::repair {

/// The changes that repairOFXText makes in a text that the import does not read, without what remains: to
/// find that out is another walk.
std::vector<RepairChange> changesOfRepair(std::string_view text);

}  // namespace brackwell::repair
