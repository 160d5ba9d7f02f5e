// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ctime>

namespace brackwell::benchmarks {

/// Seconds that this thread has had a processor for. Unlike the clock on the wall it stands still while
/// another program runs in its place, so a busy machine does not make a reader look slow.
inline double cpuSeconds() noexcept {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace brackwell::benchmarks
