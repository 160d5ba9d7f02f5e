// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "open/finding_list.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// Adds findings for how the text of a document begins and ends: without its last close tag it is cut off,
/// and other text after it is named, but for what a repair has taken in: `readText` is the text after it.
/// `root` is the name of the outermost element.
void findCutsAndMargins(FindingList& findings, std::string_view text, std::string_view root,
                        std::string_view readText, const TreePlaces& places);

}  // namespace brackwell::opening
