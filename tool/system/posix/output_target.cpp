// SPDX-License-Identifier: Apache-2.0
#include "console/output_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace tool {
namespace {

using Kind = OutputTarget::Kind;

/// As many as the system follows.
constexpr int kMostLinks = 40;

/// True for a link that stands for an open descriptor. Its text need not be where it leads.
bool isDescriptor(const std::string& link) {
    std::array<char, PATH_MAX> folder{};
    return ::realpath((folderOf(link) + ".").c_str(), folder.data()) != nullptr &&
           std::string_view(folder.data()).starts_with("/proc/");
}

/// Replaces the path of a link by where it leads; false when that cannot be read.
bool follow(std::string& link) {
    std::array<char, PATH_MAX> text{};
    const ssize_t size = ::readlink(link.c_str(), text.data(), text.size());
    if (size < 0) return false;
    const bool isAbsolute = text[0] == '/';
    link = (isAbsolute ? "" : folderOf(link)).append(text.data(), static_cast<std::size_t>(size));
    return true;
}

/// What is no link, by its status.
OutputTarget targetAt(const std::string& path, const struct stat& status) {
    if (S_ISDIR(status.st_mode)) return {Kind::unreachable, EISDIR, {}};
    if (!S_ISREG(status.st_mode)) return {Kind::device, 0, path};
    // A file that its owner protects would be replaced all the same: that asks for rights on the folder only.
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) return {Kind::unreachable, errno, {}};
    return {Kind::file, 0, path};
}

}  // namespace

OutputTarget outputTarget(const std::string& name) {
    std::string path = name;
    for (int i = 0; i < kMostLinks; ++i) {
        struct stat status = {};
        if (::lstat(path.c_str(), &status) != 0) {
            const bool isMissing = errno == ENOENT;
            return isMissing ? OutputTarget{Kind::missing, 0, path}
                             : OutputTarget{Kind::unreachable, errno, {}};
        }
        if (!S_ISLNK(status.st_mode)) return targetAt(path, status);
        if (isDescriptor(path)) return {Kind::descriptor, 0, path};
        if (!follow(path)) return {Kind::unreachable, errno, {}};
    }
    return {Kind::unreachable, ELOOP, {}};
}

}  // namespace tool
