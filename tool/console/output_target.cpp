// SPDX-License-Identifier: Apache-2.0
#include "console/output_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <string_view>

#include "console/document_file.h"

namespace tool {
namespace {

using namespace std::string_view_literals;
using Kind = OutputTarget::Kind;

// ---------------------------------------------------------------------------------------------
// What a name leads to

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

// ---------------------------------------------------------------------------------------------
// What must stay

bool isSameFile(const std::string& input, const std::string& output) {
    struct stat first = {};
    struct stat second = {};
    return ::stat(input == "-" ? "/dev/stdin" : input.c_str(), &first) == 0 && S_ISREG(first.st_mode) &&
           ::stat(output.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
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

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == path.npos ? std::string() : path.substr(0, slash + 1);
}

std::string objectionTo(const std::string& name, const std::vector<std::string>& inputs,
                        const OutputRules& rules) {
    if (name == kStandardOutput) return {};
    const bool isInput =
        std::ranges::any_of(inputs, [&name](const std::string& input) { return isSameFile(input, name); });
    if (isInput && !rules.mayReplaceInput) return "is also an input file; choose another name";
    if (rules.replacesDocuments) return {};
    if (isInput) return "is also an input file; choose another name, or replace the document with --force";
    const OutputTarget target = outputTarget(name);
    if (target.kind != Kind::file) return {};
    const bool isNamedLikeOne = hasNameOfDocument(name) || hasNameOfDocument(target.path);
    if (!isNamedLikeOne && !mayBeDocument(target.path)) return {};
    return std::string(isNamedLikeOne ? "has the name of an OFX document" : "may be an OFX document") +
           ", which would be lost; choose another name, or replace the document with --force";
}

}  // namespace tool
