// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <malloc.h>

#include <limits>

namespace brackwell::benchmarks {

/// From now on nothing that is released goes back to the system: who asks next works on pages that are
/// already there. Otherwise how soon the C library gives memory back, and takes it anew page by page,
/// follows from the largest block that was released before, whoever did it.
inline void keepMemory() noexcept {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

}  // namespace brackwell::benchmarks
