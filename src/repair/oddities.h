// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "repair/tree.h"

namespace brackwell::repair {

/// How much of a tree's text does not stand where a well-formed document has it: tags that can be none, texts
/// between elements, and texts of leaves that hold what is left of a tag, or that an element cuts short which
/// nobody knows.
std::size_t odditiesOf(const Tree& tree);

}  // namespace brackwell::repair
