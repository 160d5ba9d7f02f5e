// SPDX-License-Identifier: Apache-2.0
#include "zip/archive_file.h"

#include <filesystem>
#include <system_error>

#include "system/descriptors.h"

namespace tool::zip {

ArchiveFile::ArchiveFile(const std::string& path) : descriptor_(system::openForReading(path)) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (descriptor_ >= 0 && !error) size_ = size;
}

ArchiveFile::~ArchiveFile() {
    if (descriptor_ >= 0) system::closeDescriptor(descriptor_);
}

std::string ArchiveFile::read(std::uint64_t place, std::size_t count) {
    if (count > size_) return {};  // before there is room for them
    std::string bytes(count, '\0');
    if (!readInto(bytes.data(), place, count)) bytes.clear();
    return bytes;
}

bool ArchiveFile::readInto(char* room, std::uint64_t place, std::size_t count) noexcept {
    if (place > size_ || count > size_ - place || !system::seekTo(descriptor_, place)) return false;
    while (count > 0) {
        const std::ptrdiff_t got = system::readFrom(descriptor_, room, count);
        if (got <= 0) return false;
        room += got;
        count -= static_cast<std::size_t>(got);
    }
    return true;
}

}  // namespace tool::zip
