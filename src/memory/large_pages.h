// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>

namespace brackwell {

/// Asks the system to back large new memory with large pages. Handing out 120 MB in pages of 4 KiB takes
/// the system as long as importing a document of 40 MB into them takes the library; in large pages it takes
/// about half of that. Small memory, and systems that know no such wish, are left as they are.
void preferLargePages(void* memory, std::size_t size) noexcept;

/// Allocates like std::allocator, with large pages where there is much to allocate.
template <class Value>
struct LargePageAllocator {
    using value_type = Value;

    LargePageAllocator() noexcept = default;
    template <class Other>
    explicit(false) LargePageAllocator(const LargePageAllocator<Other>&) noexcept {}

    Value* allocate(std::size_t count) {
        Value* memory = std::allocator<Value>().allocate(count);
        preferLargePages(static_cast<void*>(memory), count * sizeof(Value));
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
    return std::allocate_shared_for_overwrite<Value[]>(LargePageAllocator<Value>(), count);
}

}  // namespace brackwell
