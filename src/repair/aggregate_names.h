// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace brackwell::repair {

/// True when the OFX standard has an aggregate of this name, in capitals or not. The few names that
/// stand for a leaf as well (CURRENCY) are not among them.
bool isAggregateName(std::string_view name) noexcept;

}  // namespace brackwell::repair
