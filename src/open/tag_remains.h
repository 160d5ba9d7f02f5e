// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

#include "elements/structure.h"
#include "tree/document.h"

namespace brackwell::opening {

/// True for a text that looks as if a tag in it had lost its "<": "20240105TRNAMT>-5.00". `element` is the
/// one that has the text.
bool holdsRemains(std::string_view text, elements::Element element) noexcept;

/// True when an element begins in the line of a leaf's text that has no close tag, so that the leaf has lost
/// the rest of its text to it: "<MEMO>see <REF> 123".
bool cutsText(const reading::Document& document, std::uint32_t node) noexcept;

}  // namespace brackwell::opening
