// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>

#include "system/large_pages.h"

namespace brackwell {

/// Allocates like std::allocator, with large pages where there is much to allocate.
template <class Value>
struct LargePageAllocator {
    using value_type = Value;

    LargePageAllocator() noexcept = default;
    template <class Other>
    explicit(false) LargePageAllocator(const LargePageAllocator<Other>&) noexcept {}

    Value* allocate(std::size_t count) {
        Value* memory = std::allocator<Value>().allocate(count);
        system::preferLargePages(static_cast<void*>(memory), count * sizeof(Value));
        return memory;
    }
    void deallocate(Value* memory, std::size_t count) noexcept {
        std::allocator<Value>().deallocate(memory, count);
    }
    template <class Other>
    bool operator==(const LargePageAllocator<Other>&) const noexcept {
        return true;
    }
};

/// An array that all who share it keep alive; nothing is cleared that its values do not clear themselves.
template <class Value>
std::shared_ptr<Value[]> makeSharedArray(std::size_t count) {
#if defined(__cpp_lib_smart_ptr_for_overwrite)
    return std::allocate_shared_for_overwrite<Value[]>(LargePageAllocator<Value>(), count);
#else
    // The standard library of g++ 11: two blocks instead of one, and small pages.
    return std::shared_ptr<Value[]>(new Value[count]);
#endif
}

}  // namespace brackwell
