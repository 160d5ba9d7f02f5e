// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace brackwell::repair {

/// No real document nests deeper. Walks towards the root end after so many steps, which keeps hostile
/// documents from taking quadratic time.
inline constexpr std::uint32_t kDeepest = 16;

}  // namespace brackwell::repair
