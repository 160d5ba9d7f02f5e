// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>

namespace brackwell::elements {

/// Called for a mistake in a table that the compiler makes: it cannot call this, so it shows the call with
/// the reason instead of compiling.
[[noreturn]] inline void refuse(const char* /*reason*/) noexcept { std::abort(); }

}  // namespace brackwell::elements
