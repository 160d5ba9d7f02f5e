// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include <algorithm>
#include <cstring>

#include "memory/large_pages.h"
#include "system/input_file.h"

namespace brackwell {

namespace {

/// What is set aside at first for a file that does not tell its size.
constexpr std::size_t kMinimumCapacity = 4096;

/// Memory for a file's bytes; it is not filled first, as the file's bytes will fill it.
struct Buffer {
    explicit Buffer(std::size_t room) : start(makeSharedArray<char>(room)), capacity(room) {}

    /// Doubles the capacity, which keeps all copying together linear.
    void grow() {
        Buffer larger(capacity * 2);
        std::memcpy(larger.start.get(), start.get(), size);
        larger.size = size;
        *this = std::move(larger);
    }

    std::shared_ptr<char[]> start;
    std::size_t capacity;
    std::size_t size = 0;
};

}  // namespace

Data Data::adopt(std::string bytes) {
    if (bytes.empty()) return {};
    auto owner = std::make_shared<const std::string>(std::move(bytes));
    const std::string_view view = *owner;
    return {std::move(owner), view};
}

Data Data::copy(std::string_view bytes) {
    if (bytes.empty()) return {};
    auto owner = makeSharedArray<char>(bytes.size());
    std::memcpy(owner.get(), bytes.data(), bytes.size());
    const std::string_view view(owner.get(), bytes.size());
    return {std::move(owner), view};
}

Data Data::view(std::string_view bytes) noexcept { return {nullptr, bytes}; }

std::optional<Data> Data::fromFile(const std::string& path) {
    const system::InputFile file(path);
    if (!file.isOpen()) return std::nullopt;

    // The room for one byte more lets the end be seen without a second buffer.
    Buffer buffer(std::max(file.expectedSize() + 1, kMinimumCapacity));
    for (;;) {
        if (buffer.size == buffer.capacity) buffer.grow();
        const auto count = file.read(buffer.start.get() + buffer.size, buffer.capacity - buffer.size);
        if (!count) return std::nullopt;
        if (*count == 0) break;
        buffer.size += *count;
    }

    const std::string_view bytes(buffer.start.get(), buffer.size);
    if (buffer.size < buffer.capacity / 2) return copy(bytes);
    return Data(std::move(buffer.start), bytes);
}

Data Data::from(std::size_t offset) const noexcept {
    if (offset >= size()) return {};
    return {owner_, bytes().substr(offset)};
}

Data Data::slice(std::size_t offset, std::size_t size) const noexcept {
    if (offset >= this->size() || size == 0) return {};
    return {owner_, bytes().substr(offset, size)};
}

Data Data::owned() const { return isView() ? copy(bytes()) : *this; }

}  // namespace brackwell
