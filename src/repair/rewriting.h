// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "repair/arrangement.h"

namespace brackwell::repair {

/// What must be changed in the text of an arranged tree so that it reads like the tree. As many tags and
/// leaves as can be stay where they are.
Edits editsFor(const Arrangement& arrangement);

}  // namespace brackwell::repair
