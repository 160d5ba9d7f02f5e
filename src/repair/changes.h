// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "repair/edit.h"
#include "repair/faults.h"

namespace brackwell::repair {

/// Edits of a text as changes, with lines and columns.
std::vector<RepairChange> changesOf(std::string_view text, Edits edits);

/// What is left in a text as remarks, with lines and columns.
std::vector<RepairRemark> remarksOf(std::string_view text, std::vector<Fault> faults, const Tree& tree);

}  // namespace brackwell::repair
