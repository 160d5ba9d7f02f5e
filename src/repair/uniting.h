// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "repair/work_tree.h"

namespace brackwell::repair {

/// Makes one of aggregates that stand twice where one may, and parts wrappers that hold several responses and
/// statements that go on with another account.
void uniteRepeated(WorkTree& tree);

}  // namespace brackwell::repair
