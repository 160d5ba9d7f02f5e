// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace brackwell::repair {

/// True when one name may be a misspelling of the other: shortened at an end, or with at most two letters
/// in a row that differ.
bool resembles(std::string_view a, std::string_view b) noexcept;

}  // namespace brackwell::repair
