// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tool::zip {

/// The bytes of an archive, read where they are wanted.
class ArchiveFile {
public:
    explicit ArchiveFile(const std::string& path);
    ArchiveFile(const ArchiveFile&) = delete;
    ArchiveFile& operator=(const ArchiveFile&) = delete;
    ~ArchiveFile();

    /// How many bytes it has; 0 for a file that cannot be read.
    std::uint64_t size() const noexcept { return size_; }
    /// The bytes at a place; empty when the file does not have that many there.
    std::string read(std::uint64_t place, std::size_t count);
    /// The same into a room; false when the file does not have that many there.
    bool readInto(char* room, std::uint64_t place, std::size_t count) noexcept;

private:
    int descriptor_;  ///< -1: none
    std::uint64_t size_ = 0;
};

/// A number in some bytes of a record that has them, the low byte first.
inline std::uint64_t numberIn(std::string_view record, std::size_t place, std::size_t width) noexcept {
    std::uint64_t number = 0;
    for (std::size_t i = width; i > 0; --i)
        number = number << 8U | static_cast<unsigned char>(record[place + i - 1]);
    return number;
}

/// A size that has two bytes there.
inline std::size_t sizeIn(std::string_view record, std::size_t place) noexcept {
    const auto byte = [record](std::size_t at) {
        return static_cast<std::size_t>(static_cast<unsigned char>(record[at]));
    };
    return byte(place) | byte(place + 1) << 8U;
}

}  // namespace tool::zip
