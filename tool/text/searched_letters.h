// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace tool {

/// Appends a text as it is compared in searches: in folded case (folded_case.h), and Latin letters without
/// their marks, since few keyboards have them: "Café Lumière" is "cafe lumiere". Marks that follow their
/// letter as characters of their own are dropped; "ß" is "ss", "æ" is "ae" and "œ" is "oe".
void appendSearchedLetters(std::string& letters, std::string_view text);

}  // namespace tool
