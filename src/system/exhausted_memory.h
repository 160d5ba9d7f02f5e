// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <new>

namespace brackwell::system {

/// Memory is exhausted, or what is wanted is more than there can be. Where there are no exceptions, this ends
/// the program, as the standard library does there.
[[noreturn]] inline void failForMemory() {
#if defined(__cpp_exceptions)
    throw std::bad_alloc();
#else
    std::abort();
#endif
}

}  // namespace brackwell::system
