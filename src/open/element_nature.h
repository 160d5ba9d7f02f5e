// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "elements/structure.h"
#include "tree/element_names.h"

namespace brackwell::opening {

/// What the name of an element is to those who read it.
enum class NameKind : std::uint8_t {
    read,         ///< a class reads it where it belongs, or its absence from all classes is said elsewhere
    treeOnly,     ///< of the standard, and no class reads it
    notCapitals,  ///< of the standard when it is put into capitals
    extension,    ///< a private one: by the standard's convention it has a dot in it
    unknown,      ///< none that the standard has
    noName,       ///< what stands between the brackets can be no name, so it is no tag
};

inline constexpr std::size_t kNameKindCount = static_cast<std::size_t>(NameKind::noName) + 1;

/// A name with the element that it is, or would be in capitals; elements::kUnknown: none.
struct ElementNature {
    NameKind kind = NameKind::unknown;
    elements::Element element = elements::kUnknown;
};
ElementNature natureOf(std::string_view name);

/// The same of a name that trees have a number for.
const ElementNature& natureOfKnown(reading::NameID name) noexcept;

/// True when a known element, which stands where it may, is read there by no class, although one reads it
/// elsewhere.
bool isUnreadIn(std::string_view child, std::string_view parent) noexcept;

/// The element that may stand in a parent and whose name differs from this one in a letter; "" when there is
/// none.
std::string_view similarElement(std::string_view name, elements::Element parent) noexcept;

}  // namespace brackwell::opening
