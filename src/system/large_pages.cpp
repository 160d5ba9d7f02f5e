// SPDX-License-Identifier: Apache-2.0
#include "system/large_pages.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace brackwell::system {

#if defined(__linux__) && defined(MADV_HUGEPAGE)

void preferLargePages(void* memory, std::size_t size) noexcept {
    // Two large pages of 2 MiB: a block of this size contains at least one, wherever it begins.
    constexpr std::size_t worthIt = std::size_t{4} << 20;
    if (size < worthIt) return;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const std::uintptr_t inPage = reinterpret_cast<std::uintptr_t>(memory) % page;
    // A hint: if the system ignores it, the memory works just the same.
    static_cast<void>(madvise(static_cast<char*>(memory) - inPage, size + inPage, MADV_HUGEPAGE));
}

#else

void preferLargePages(void* /*memory*/, std::size_t /*size*/) noexcept {}

#endif

}  // namespace brackwell::system
