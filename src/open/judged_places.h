// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string_view>

#include "elements/structure.h"

namespace brackwell::opening {

/// A known element in a parent.
struct Place {
    elements::Element child = elements::kUnknown;
    elements::Element parent = elements::kUnknown;
    bool isRepeated = false;  ///< it is not the first of its name there
};

/// True for an aggregate whose class reads only the elements that belong there.
bool isStrict(elements::Element parent) noexcept;

/// The names of an element and of the aggregate around it.
struct PlaceNames {
    std::string_view child;
    std::string_view parent;
};
/// Elements that are read although the standard does not allow them there.
inline constexpr auto kReadAnyway = std::to_array<PlaceNames>({{"SVCSTATUS", "ACCTINFO"}});

/// True unless the element is not read because of where it stands. Nearly all classes read the elements of
/// their own aggregate only; those of investments take theirs from whatever is in it.
bool standsWhereItIsRead(const Place& place) noexcept;

/// False for an element that is repeated although only one is allowed.
bool countsThere(const Place& place) noexcept;

/// True for lists of investments, of which the standard has one, and the elements of all are read.
bool isReadOften(const Place& place) noexcept;

}  // namespace brackwell::opening
