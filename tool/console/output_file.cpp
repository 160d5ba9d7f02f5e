// SPDX-License-Identifier: Apache-2.0
#include "console/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "console/interruption.h"
#include "console/output_target.h"

namespace tool {
namespace {

using Kind = OutputTarget::Kind;

/// True for the number of an open descriptor that a path is another name of.
bool isDescriptorAt(int number, const std::string& path) noexcept {
    struct stat held = {};
    struct stat named = {};
    return ::fstat(number, &held) == 0 && ::stat(path.c_str(), &named) == 0 && held.st_dev == named.st_dev &&
           held.st_ino == named.st_ino;
}

/// A descriptor of this process is shared, not opened again: what others write to it comes before and after,
/// and nothing is emptied. One of another process is only added to.
int openDescriptor(const std::string& path) {
    int number = -1;
    std::from_chars(path.data() + folderOf(path).size(), path.data() + path.size(), number);
    if (number >= 0 && isDescriptorAt(number, path)) return ::fcntl(number, F_DUPFD_CLOEXEC, 0);
    return ::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY);
}

}  // namespace

OutputFile::OutputFile(const std::string& name, bool replacesDocuments)
    : name_(name), replacesDocuments_(replacesDocuments) {
    const OutputTarget target = outputTarget(name);
    if (target.kind == Kind::missing || target.kind == Kind::file) {
        openBeside(target.path);
    } else if (target.kind == Kind::unreachable) {
        problem_ = std::strerror(target.error);
    } else {
        descriptor_ = target.kind == Kind::descriptor
                          ? openDescriptor(target.path)
                          : ::open(target.path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
        if (descriptor_ < 0) failed();
    }
}

OutputFile::~OutputFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (temporary_.empty()) return;
    ::unlink(temporary_.c_str());
    keepWhenInterrupted();
}

bool OutputFile::finish() {
    if (isDirect()) return close();
    if (!isStored() || !close()) return false;
    // Reading may have taken long: another program may have put a document there.
    if (!replacesDocuments_) problem_ = objectionTo(name_, {}, {});
    if (!problem_.empty()) return false;
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) return failed();
    temporary_.clear();
    keepWhenInterrupted();
    return true;
}

/// In the same folder, so that it can be renamed, and so that the disk that it fills is the right one.
void OutputFile::openBeside(const std::string& path) {
    target_ = path;
    std::string name = folderOf(path) + ".brackwell-XXXXXX";
    const SignalsHeld held;
    descriptor_ = ::mkostemp(name.data(), O_CLOEXEC);  // with a name of its own, and mode 0600
    if (descriptor_ >= 0) {
        temporary_.swap(name);
        removeWhenInterrupted(temporary_);
    } else {
        const bool isForbidden = errno == EACCES || errno == EPERM || errno == EROFS;
        failed(isForbidden ? "cannot create a file in its folder: " : "");
    }
}

/// Without this, a power failure shortly after the rename could leave an empty file and nothing of the one
/// before. The folder itself is not waited for: until it is stored, the file before is whole. Not every file
/// system can be asked.
bool OutputFile::isStored() { return ::fsync(descriptor_) == 0 || errno == EINVAL || failed(); }

/// Some file systems, those of networks among them, say only now that there was no room.
bool OutputFile::close() {
    const int descriptor = std::exchange(descriptor_, -1);
    return ::close(descriptor) == 0 || errno == EINTR || failed();
}

bool OutputFile::failed(std::string_view before) {
    problem_ = std::string(before) + std::strerror(errno);
    return false;
}

}  // namespace tool
