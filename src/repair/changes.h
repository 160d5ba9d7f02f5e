// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

#include "repair/edit.h"
#include "repair/faults.h"

namespace brackwell::repair {

/// Edits of a text as changes, with lines and columns.
std::vector<RepairChange> changesOf(std::string_view text, Edits edits);

/// The faults of a text's tree as remarks, with lines and columns.
std::vector<RepairRemark> remarksOf(const Tree& tree);

}  // namespace brackwell::repair
