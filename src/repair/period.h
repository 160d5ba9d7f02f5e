// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "repair/tree.h"

namespace brackwell::repair {

/// True when the first of two leaves is a begin (DTSTART) on a day before that of the second, or an end
/// (DTEND) on a day after it. Nothing is known of a date that does not begin with eight digits.
bool widensPeriod(const Tree& tree, NodeID leaf, NodeID other) noexcept;

}  // namespace brackwell::repair
