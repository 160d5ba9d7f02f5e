// SPDX-License-Identifier: Apache-2.0
#include "failing_allocator.h"

#include <malloc.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <new>

#include "support/effort.h"

// Everything here must do without memory.

namespace brackwell::tests {
namespace {

std::atomic<std::ptrdiff_t> live{0};
std::atomic<std::size_t> asked{0};
std::atomic<std::size_t> untilRefusal{0};  ///< 0: nothing is refused
std::atomic<bool> staysExhausted{false};
std::atomic<bool> hasRefused{false};

bool isRefused() noexcept {
    asked.fetch_add(1, std::memory_order_relaxed);
    const std::size_t left = untilRefusal.load(std::memory_order_relaxed);
    if (left == 0) return false;
    if (left > 1) {
        untilRefusal.store(left - 1, std::memory_order_relaxed);
        return false;
    }
    if (!staysExhausted) untilRefusal.store(0, std::memory_order_relaxed);
    hasRefused = true;
    errno = ENOMEM;
    return true;
}

void* counted(void* block) noexcept {
    if (block != nullptr) live.fetch_add(1, std::memory_order_relaxed);
    return block;
}

void uncount(const void* block) noexcept {
    if (block != nullptr) live.fetch_sub(1, std::memory_order_relaxed);
}

}  // namespace

void refuseAllocation(std::size_t n, Refusal refusal) noexcept {
    hasRefused = false;
    asked = 0;
    staysExhausted = refusal == Refusal::fromThenOn;
    untilRefusal = n;
}

bool stopRefusing() noexcept {
    untilRefusal = 0;
    return hasRefused;
}

std::size_t allocations() noexcept { return asked; }

std::ptrdiff_t liveBlocks() noexcept { return live; }

}  // namespace brackwell::tests

using namespace brackwell::tests;

#if defined(__GLIBC__) && !defined(BRACKWELL_TESTS_SANITIZED)

bool brackwell::tests::seesMalloc() noexcept { return true; }

// Seen by the C library as well, which keeps its own functions under other names. Its operator new asks
// malloc.
#pragma GCC visibility push(default)
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): those of the C library are reserved names
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) noexcept { return isRefused() ? nullptr : counted(__libc_malloc(size)); }

void* calloc(std::size_t count, std::size_t size) noexcept {
    return isRefused() ? nullptr : counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) noexcept {
    if (block == nullptr) return malloc(size);
    if (size != 0 && isRefused()) return nullptr;
    if (size == 0) uncount(block);
    return __libc_realloc(block, size);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return isRefused() ? nullptr : counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept { return memalign(alignment, size); }

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    void* allocated = memalign(alignment, size);
    if (allocated == nullptr) return ENOMEM;
    *block = allocated;
    return 0;
}

void free(void* block) noexcept {
    uncount(block);
    __libc_free(block);
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
#pragma GCC visibility pop

#else

bool brackwell::tests::seesMalloc() noexcept { return false; }

namespace {

void* allocated(void* block) {
    if (block == nullptr) throw std::bad_alloc();
    return counted(block);
}

void release(void* block) noexcept {
    uncount(block);
    std::free(block);
}

std::size_t wholeMultiple(std::size_t size, std::size_t alignment) noexcept {
    return (size + alignment - 1) / alignment * alignment;
}

}  // namespace

// The other forms of new and delete end in these, but under AddressSanitizer, which has a form of its own of
// the one that returns nullptr; the standard library's sorting asks for memory with it.
void* operator new(std::size_t size) { return allocated(isRefused() ? nullptr : std::malloc(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return isRefused() ? nullptr : counted(std::malloc(size));
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    const auto bytes = static_cast<std::size_t>(alignment);
    return allocated(isRefused() ? nullptr : std::aligned_alloc(bytes, wholeMultiple(size, bytes)));
}
void operator delete(void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::align_val_t) noexcept { release(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { release(block); }

#endif
