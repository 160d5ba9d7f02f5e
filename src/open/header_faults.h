// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

#include "open/parsing.h"

namespace brackwell::opening {

/// In how many places the header of a text hides fields.
std::size_t headerFaultsOf(const Parsed& parsed, std::string_view text);

}  // namespace brackwell::opening
