// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

#include <string>

namespace brackwell::tests {

/// The elements of a tree of any depth in document order, <NAME>"text" for a leaf and <NAME>{...} for an
/// aggregate, without the source texts that the parser adds to transactions. Two trees with the same text
/// differ in these at most.
std::string elementsText(const ParseDictionary& tree);

}  // namespace brackwell::tests
