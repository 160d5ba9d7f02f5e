// SPDX-License-Identifier: Apache-2.0
#include "archives/cbor.h"

#include <limits>

#include "numbers/as_size.h"

namespace brackwell::cbor {

namespace {

// The lower five bits of a head are its argument, or say how many bytes with the argument follow: these
// numbers mean 1, 2, 4 and 8. The numbers above are reserved or begin items of indefinite length.
constexpr unsigned kOneByteFollows = 24;
constexpr unsigned kEightBytesFollow = 27;

constexpr unsigned kMajorShift = 5;
constexpr unsigned kLowerBits = (1U << kMajorShift) - 1;

/// The smallest argument that needs this many bytes.
constexpr std::uint64_t smallestArgument(unsigned size) noexcept {
    return size == 1 ? kOneByteFollows : std::uint64_t{1} << size * 4;
}

}  // namespace

void appendHead(std::string& bytes, Major major, std::uint64_t argument) {
    const unsigned upper = static_cast<unsigned>(major) << kMajorShift;
    if (argument < kOneByteFollows) {
        bytes += static_cast<char>(upper | argument);
        return;
    }
    unsigned lower = kOneByteFollows;
    unsigned size = 1;
    while (size < 8 && argument >= smallestArgument(size * 2)) {
        ++lower;
        size *= 2;
    }
    bytes += static_cast<char>(upper | lower);
    for (; size != 0; --size) bytes += static_cast<char>(argument >> 8 * (size - 1) & 0xFFU);
}

void appendInteger(std::string& bytes, std::int64_t value) {
    if (value >= 0) {
        appendHead(bytes, Major::unsignedInteger, static_cast<std::uint64_t>(value));
    } else {
        appendHead(bytes, Major::negativeInteger, static_cast<std::uint64_t>(-1 - value));
    }
}

void appendText(std::string& bytes, std::string_view text) {
    appendHead(bytes, Major::text, text.size());
    bytes += text;
}

std::optional<Head> takeHead(std::string_view& bytes) noexcept {
    if (bytes.empty()) return std::nullopt;
    const unsigned first = static_cast<unsigned char>(bytes.front());
    const unsigned lower = first & kLowerBits;
    const auto major = static_cast<Major>(first >> kMajorShift);
    if (major > Major::tag || lower > kEightBytesFollow) return std::nullopt;
    bytes.remove_prefix(1);
    if (lower < kOneByteFollows) return Head{major, lower};

    const unsigned size = 1U << (lower - kOneByteFollows);
    if (bytes.size() < size) return std::nullopt;
    std::uint64_t argument = 0;
    for (const char byte : bytes.substr(0, size)) argument = argument << 8 | static_cast<unsigned char>(byte);
    // Only the shortest form is taken, so that equal values have equal bytes.
    if (argument < smallestArgument(size)) return std::nullopt;
    bytes.remove_prefix(size);
    return Head{major, argument};
}

std::optional<std::uint64_t> takeArgument(std::string_view& bytes, Major major) noexcept {
    const auto head = takeHead(bytes);
    if (!head || head->major != major) return std::nullopt;
    return head->argument;
}

std::optional<std::int64_t> takeInteger(std::string_view& bytes) noexcept {
    const auto head = takeHead(bytes);
    if (!head || head->argument > std::uint64_t{std::numeric_limits<std::int64_t>::max()})
        return std::nullopt;
    const auto value = static_cast<std::int64_t>(head->argument);
    if (head->major == Major::unsignedInteger) return value;
    if (head->major == Major::negativeInteger) return -1 - value;
    return std::nullopt;
}

std::optional<std::string_view> takeString(std::string_view& bytes, Major major) noexcept {
    const auto size = takeArgument(bytes, major);
    if (!size || *size > bytes.size()) return std::nullopt;
    const std::string_view content = bytes.substr(0, asSize(*size));
    bytes.remove_prefix(content.size());
    return content;
}

// Counts the items that are still to come instead of recursing into them.
bool skipItem(std::string_view& bytes) noexcept {
    std::uint64_t pending = 1;
    do {
        --pending;
        const auto head = takeHead(bytes);
        if (!head) return false;
        switch (head->major) {
            case Major::unsignedInteger:
            case Major::negativeInteger:
                continue;
            case Major::bytes:
            case Major::text:
                if (head->argument > bytes.size()) return false;
                bytes.remove_prefix(asSize(head->argument));
                continue;
            case Major::array:
            case Major::map:
                // Each entry takes at least a byte; a count within the input's size cannot overflow.
                if (head->argument > bytes.size()) return false;
                pending += head->major == Major::map ? 2 * head->argument : head->argument;
                break;
            case Major::tag:
                ++pending;
                break;
        }
        // Each of them has at least a byte, so a hostile count ends here.
        if (pending > bytes.size()) return false;
    } while (pending > 0);
    return true;
}

}  // namespace brackwell::cbor
