// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "repair/work_tree.h"

namespace brackwell::repair {

/// Puts elements that cannot stand where they are where they can, from the innermost to the outermost: into
/// what is missing around them, or further out; or gives the aggregate around them the name of the one that
/// all in it belongs in.
void placeElements(WorkTree& tree);

}  // namespace brackwell::repair
