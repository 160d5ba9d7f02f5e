// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "repair/markup.h"

namespace brackwell::repair {

/// Exchanges the names of neighbouring tags that stand in each other's place, by what the standard lets
/// stand where:
/// - an open tag right before the close tag of what it would stand in, and cannot;
/// - the open tag of an aggregate right after that of an element that belongs in it.
void uncross(std::vector<Tag>& tags);

}  // namespace brackwell::repair
