// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/repair.h>

#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// The changes of a text as a unified diff with three lines of context, in time in proportion to the text.
std::string unifiedDiff(std::string_view nameBefore, std::string_view nameAfter, std::string_view before,
                        const std::vector<brackwell::RepairChange>& changes);

}  // namespace tool
