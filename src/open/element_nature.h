// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "elements/structure.h"
#include "tree/element_names.h"

namespace brackwell::opening {

/// How an element's name relates to what is read.
enum class NameKind : std::uint8_t {
    read,         ///< a class reads it where it belongs, or another finding says that none does
    treeOnly,     ///< in the standard, and no class reads it
    notCapitals,  ///< in the standard once it is in capitals
    extension,    ///< a private one: by the standard's convention it has a dot in it
    unknown,      ///< not in the standard
    noName,       ///< what is between the brackets cannot be a name, so it is not a tag
};

inline constexpr std::size_t kNameKindCount = static_cast<std::size_t>(NameKind::noName) + 1;

/// A name with the element that it is, or would be in capitals; elements::kUnknown: none.
struct ElementNature {
    NameKind kind = NameKind::unknown;
    elements::Element element = elements::kUnknown;
};
ElementNature natureOf(std::string_view name);

/// The same for a name that trees have a number for.
const ElementNature& natureOfKnown(reading::NameID name) noexcept;

/// True when no class reads this known element in this parent, where it may be, although one reads it
/// elsewhere.
bool isUnreadIn(std::string_view child, std::string_view parent) noexcept;

/// The element that may stand in a parent and whose name differs from this one in a letter; "" when there is
/// none.
std::string_view similarElement(std::string_view name, elements::Element parent) noexcept;

}  // namespace brackwell::opening
