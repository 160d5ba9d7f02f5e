// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <string_view>
#include <vector>

namespace brackwell::opening {

/// The documents that stand one after the other in a file, each with what stands before it. A file of one
/// document, or of none, is one part.
std::vector<TextRange> splitIntoDocuments(std::string_view text);

}  // namespace brackwell::opening
