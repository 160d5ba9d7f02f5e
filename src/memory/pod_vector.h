// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

#include "system/exhausted_memory.h"
#include "system/large_pages.h"

namespace brackwell::reading {

/// A growing array of plain values, addressed with 32 bits. It grows with realloc, which moves the
/// pages of a large block instead of copying them, so growing never holds two copies in memory; and
/// it never touches what it has only reserved.
template <class Value>
class PodVector {
    static_assert(std::is_trivially_copyable_v<Value> && std::is_trivially_destructible_v<Value>);

public:
    PodVector() noexcept = default;
    PodVector(PodVector&& other) noexcept { swap(other); }
    PodVector& operator=(PodVector&& other) noexcept {
        swap(other);
        return *this;
    }
    PodVector(const PodVector&) = delete;
    PodVector& operator=(const PodVector&) = delete;
    ~PodVector() { std::free(values_); }

    std::uint32_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    Value* data() noexcept { return values_; }
    const Value* data() const noexcept { return values_; }
    Value& operator[](std::uint32_t index) noexcept { return values_[index]; }
    const Value& operator[](std::uint32_t index) const noexcept { return values_[index]; }
    Value& back() noexcept { return values_[size_ - 1]; }
    const Value& back() const noexcept { return values_[size_ - 1]; }

    void push(const Value& value) {
        if (size_ == capacity_) grow(1);
        values_[size_++] = value;
    }
    /// Makes room for `count` values after the last one and returns where they begin.
    Value* append(std::size_t count) {
        if (count > capacity_ - size_) grow(count);
        Value* begin = values_ + size_;
        size_ += static_cast<std::uint32_t>(count);
        return begin;
    }
    void pop() noexcept { --size_; }
    /// Fewer values, or more that were written into the room that is reserved.
    void setSize(std::uint32_t size) noexcept { size_ = size; }
    std::uint32_t capacity() const noexcept { return capacity_; }
    void reserve(std::size_t count) {
        if (count <= capacity_ - size_) return;
        checkRoomFor(count);
        reallocate(size_ + count);
    }
    /// Gives back what was reserved in vain, if that is worth it. Without the memory to do so it stays.
    void giveBackRoom() noexcept {
        if (size_ == 0 || capacity_ - size_ < capacity_ / 8) return;
        if (void* moved = std::realloc(static_cast<void*>(values_), size_ * sizeof(Value))) {
            values_ = static_cast<Value*>(moved);
            capacity_ = size_;
        }
    }

private:
    static constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max();

    void swap(PodVector& other) noexcept {
        std::swap(values_, other.values_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }
    [[gnu::noinline, gnu::cold]] void grow(std::size_t more) {
        checkRoomFor(more);
        const std::size_t needed = size_ + more;
        const std::size_t doubled = std::size_t{capacity_} * 2;
        reallocate(std::min(needed > doubled ? needed + 16 : doubled, kMost));
    }
    void checkRoomFor(std::size_t more) const {
        if (more > kMost - size_) system::failForMemory();
    }
    void reallocate(std::size_t capacity) {
        void* moved = std::realloc(static_cast<void*>(values_), capacity * sizeof(Value));
        if (moved == nullptr) system::failForMemory();
        system::preferLargePages(moved, capacity * sizeof(Value));
        values_ = static_cast<Value*>(moved);
        capacity_ = static_cast<std::uint32_t>(capacity);
    }

    Value* values_ = nullptr;
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;
};

}  // namespace brackwell::reading
