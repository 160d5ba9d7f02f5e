// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string_view>

#include "elements/structure.h"

namespace brackwell::opening {

/// The names of an element and of the aggregate around it.
struct PlaceNames {
    std::string_view child;
    std::string_view parent;
};

/// Of these the standard allows one, and all are read.
inline constexpr auto kReadOften = std::to_array<PlaceNames>({{"INVTRANLIST", "INVSTMTRS"},
                                                              {"INVPOSLIST", "INVSTMTRS"},
                                                              {"SECLIST", "SECLISTMSGSRSV1"},
                                                              {"SECLISTMSGSRSV1", "OFX"}});

/// A known element in a parent.
struct Place {
    elements::Element child = elements::kUnknown;
    elements::Element parent = elements::kUnknown;
    bool isRepeated = false;  ///< it is not the first of its name there
};

/// True unless the element is not read because of where it stands. Nearly all classes read the elements of
/// their own aggregate only; those of investments take theirs from whatever is in it.
bool standsWhereItIsRead(const Place& place) noexcept;

/// False for an element that stands once more where one is read.
bool countsThere(const Place& place) noexcept;

}  // namespace brackwell::opening
