// SPDX-License-Identifier: Apache-2.0
#include "system/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#if defined(_WIN32)
#include <io.h>

#include <filesystem>
#else
#include <unistd.h>
#endif

namespace brackwell::system {

namespace {

bool hasNUL(const std::string& path) noexcept { return path.find('\0') != std::string::npos; }

}  // namespace

#if defined(_WIN32)

InputFile::InputFile(const std::string& path) : error_(hasNUL(path) ? ENOENT : 0) {
    if (error_ != 0) return;
    const std::u8string text(path.begin(), path.end());
    descriptor_ = ::_wopen(std::filesystem::path(text).c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
    if (!isOpen()) error_ = errno;
}

InputFile::~InputFile() {
    if (isOpen()) ::_close(descriptor_);
}

std::size_t InputFile::expectedSize() const noexcept {
    struct ::_stat64 status = {};
    if (::_fstat64(descriptor_, &status) != 0 || status.st_size < 0) return 0;
    return static_cast<std::size_t>(status.st_size);
}

std::optional<std::size_t> InputFile::read(char* place, std::size_t room) const noexcept {
    const auto wanted =
        static_cast<unsigned>(std::min(room, static_cast<std::size_t>(std::numeric_limits<int>::max())));
    const int count = ::_read(descriptor_, place, wanted);
    return count < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(count));
}

FileStatus statusOf(const std::string& path) {
    if (hasNUL(path)) return {};
    struct ::_stat64 status = {};
    const std::u8string text(path.begin(), path.end());
    if (::_wstat64(std::filesystem::path(text).c_str(), &status) != 0) return {};
    const bool hasSize = (status.st_mode & _S_IFREG) != 0;
    return {(status.st_mode & _S_IFDIR) != 0, hasSize ? static_cast<std::uint64_t>(status.st_size) : 0};
}

std::string pathOfURL(std::string path) {
    const bool hasDrive = path.size() > 2 && path[2] == ':';  // "/C:/july.ofx"
    return hasDrive ? path.substr(1) : path;
}

#else

InputFile::InputFile(const std::string& path) : error_(hasNUL(path) ? ENOENT : 0) {
    if (error_ != 0) return;
    do {
        descriptor_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    } while (descriptor_ < 0 && errno == EINTR);
    if (!isOpen()) error_ = errno;
}

InputFile::~InputFile() {
    if (isOpen()) ::close(descriptor_);
}

std::size_t InputFile::expectedSize() const noexcept {
    struct stat status = {};
    if (::fstat(descriptor_, &status) != 0 || status.st_size < 0) return 0;
    return static_cast<std::size_t>(status.st_size);
}

std::optional<std::size_t> InputFile::read(char* place, std::size_t room) const noexcept {
    ssize_t count = 0;
    do {
        count = ::read(descriptor_, place, room);
    } while (count < 0 && errno == EINTR);
    return count < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(count));
}

FileStatus statusOf(const std::string& path) {
    if (hasNUL(path)) return {};
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) return {};
    const bool hasSize = S_ISREG(status.st_mode);
    return {S_ISDIR(status.st_mode), hasSize ? static_cast<std::uint64_t>(status.st_size) : 0};
}

std::string pathOfURL(std::string path) { return path; }

#endif

}  // namespace brackwell::system
