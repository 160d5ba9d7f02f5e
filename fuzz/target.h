// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

/// \file
/// What a fuzz target is: one function that takes any bytes whatever, and ends the program when the
/// library does with them what it must not.

namespace brackwell::fuzz {

/// The target, defined once in each program.
void tryBytes(std::string_view bytes);

/// Ends the program, with what does not hold, unless it holds.
inline void require(bool holds, const char* sentence) {
    if (holds) return;
    std::fprintf(stderr, "violated: %s\n", sentence);
    std::abort();
}

}  // namespace brackwell::fuzz
