// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace tool {

/// What stands for a secret, whatever its length.
inline constexpr std::string_view kMask = "****";

}  // namespace tool
