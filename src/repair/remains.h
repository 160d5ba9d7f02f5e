// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "elements/structure.h"

/// \file
/// What is left of a tag that has lost one of its brackets.

namespace brackwell::repair {

/// The name of a tag without its "<" at the end of a text that a ">" follows, with the "/" of a close tag;
/// empty when the text ends otherwise. `before` is the element whose text this is, or kUnknown.
///
///     20240105TRNAMT     TRNAMT, after a DTPOSTED
///     see NAME           nothing: a word of the text
std::string_view nameWithoutBegin(std::string_view text, elements::Element before) noexcept;

/// The same, and also a name that is too short to be sure of, or stands directly after other capitals:
/// "AMEXFID".
std::string_view possibleNameWithoutBegin(std::string_view text, elements::Element before) noexcept;

/// The name of a leaf that what follows a "<" begins with, where no ">" ends it: "TRNAMT-5.00". Empty when
/// there is none.
std::string_view nameWithoutEnd(std::string_view inside) noexcept;

/// True when some aggregate may hold both.
bool areSiblings(elements::Element a, elements::Element b) noexcept;

}  // namespace brackwell::repair
