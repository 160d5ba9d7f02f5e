// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

namespace brackwell::reading {

/// A tree of its own with all that is in an aggregate. It takes time and memory in proportion to the number
/// of nodes and to the part of the body that they stand in, even where their texts overlap: the source
/// texts of transactions that are not closed all reach to the same end.
ParseDictionary copyOf(const ParseDictionary& aggregate);

}  // namespace brackwell::reading
