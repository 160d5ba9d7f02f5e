// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elements/structure.h"

namespace brackwell::opening {

/// A known element in a parent.
struct Place {
    elements::Element child = elements::kUnknown;
    elements::Element parent = elements::kUnknown;
    bool isRepeated = false;  ///< it is not the first of its name there
};

/// True unless the element is not read because of where it stands. Nearly all classes read the elements of
/// their own aggregate only; those of investments take theirs from whatever is in it.
bool standsWhereItIsRead(const Place& place) noexcept;

/// False for an element that is repeated although only one is allowed.
bool countsThere(const Place& place) noexcept;

/// True for lists of investments, of which the standard has one, and the elements of all are read.
bool isReadOften(const Place& place) noexcept;

}  // namespace brackwell::opening
