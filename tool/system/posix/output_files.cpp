// SPDX-License-Identifier: Apache-2.0
#include "system/output_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>

namespace tool::system {
namespace {

/// True for the number of an open descriptor that a path is another name of.
bool isDescriptorAt(int number, const std::string& path) noexcept {
    struct stat held = {};
    struct stat named = {};
    return ::fstat(number, &held) == 0 && ::stat(path.c_str(), &named) == 0 && held.st_dev == named.st_dev &&
           held.st_ino == named.st_ino;
}

}  // namespace

const std::string_view kSeparators = "/";

int makeTemporary(std::string& name) noexcept { return ::mkostemp(name.data(), O_CLOEXEC); }

/// Not every file system can be asked.
bool store(int descriptor) noexcept { return ::fsync(descriptor) == 0 || errno == EINVAL; }

bool takePlace(const std::string& file, const std::string& of) noexcept {
    return ::rename(file.c_str(), of.c_str()) == 0;
}

void removeFile(const std::string& path) noexcept { ::unlink(path.c_str()); }

int openDevice(const std::string& path) noexcept {
    return ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
}

int openDescriptor(const std::string& path) noexcept {
    int number = -1;
    const std::size_t slash = path.rfind('/');
    const std::size_t begin = slash == path.npos ? 0 : slash + 1;
    std::from_chars(path.data() + begin, path.data() + path.size(), number);
    if (number >= 0 && isDescriptorAt(number, path)) return ::fcntl(number, F_DUPFD_CLOEXEC, 0);
    return ::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY);
}

std::optional<FileIdentity> identityOf(const std::string& name) noexcept {
    struct stat status = {};
    if (::stat(name == "-" ? "/dev/stdin" : name.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

}  // namespace tool::system
