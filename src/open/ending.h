// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "open/finding_list.h"

namespace brackwell::opening {

/// Adds findings for how the text of a document begins and ends: without its last close tag it is cut off,
/// and other text before or after it is named. `root` is the name of its outermost element.
void findCutsAndMargins(FindingList& findings, std::string_view text, std::string_view root);

}  // namespace brackwell::opening
