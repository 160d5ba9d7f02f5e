// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace tool {

/// Appends a text with its capital letters as small ones, so that texts can be compared without case:
/// Latin, Greek, Cyrillic, Armenian and full-width letters, character for character ("ß" is not "ss").
/// What is not UTF-8 is appended as U+FFFD.
void appendFoldedCase(std::string& folded, std::string_view text);

}  // namespace tool
