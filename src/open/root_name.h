// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace brackwell::opening {

/// The name of the first element of a text, as it is written; empty when the text has none. Comments,
/// instructions and declarations are no elements.
std::string_view firstElementName(std::string_view text) noexcept;

/// The name without the prefix of a namespace.
std::string_view withoutPrefix(std::string_view name) noexcept;

/// The name of the element that holds a document, as its close tag has it: OFX, with the prefix that the
/// document gives it, or where that is missing the first element, whose name is `first`.
std::string_view rootNameOf(std::string_view text, std::string_view first) noexcept;

}  // namespace brackwell::opening
