// SPDX-License-Identifier: Apache-2.0
#include "console/output_file.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include "console/interruption.h"
#include "console/output_target.h"
#include "system/descriptors.h"
#include "system/output_files.h"

namespace tool {
namespace {

using Kind = OutputTarget::Kind;

}  // namespace

OutputFile::OutputFile(const std::string& name, bool replacesDocuments)
    : name_(name), replacesDocuments_(replacesDocuments) {
    const OutputTarget target = outputTarget(name);
    if (target.kind == Kind::missing || target.kind == Kind::file) {
        openBeside(target.path);
    } else if (target.kind == Kind::unreachable) {
        problem_ = std::strerror(target.error);
    } else {
        descriptor_ = target.kind == Kind::descriptor ? system::openDescriptor(target.path)
                                                      : system::openDevice(target.path);
        if (descriptor_ < 0) failed();
    }
}

OutputFile::~OutputFile() {
    if (descriptor_ >= 0) system::closeDescriptor(descriptor_);
    if (temporary_.empty()) return;
    system::removeFile(temporary_);
    keepWhenInterrupted();
}

bool OutputFile::finish() {
    if (isDirect()) return close();
    if (!isStored() || !close()) return false;
    // Reading may have taken long: another program may have put a document there.
    if (!replacesDocuments_) problem_ = objectionTo(name_, {}, {});
    if (!problem_.empty()) return false;
    if (!system::takePlace(temporary_, target_)) return failed();
    temporary_.clear();
    keepWhenInterrupted();
    return true;
}

/// In the same folder, so that it can be renamed, and so that the disk that it fills is the right one.
void OutputFile::openBeside(const std::string& path) {
    target_ = path;
    std::string name = folderOf(path) + ".brackwell-XXXXXX";
    const SignalsHeld held;
    descriptor_ = system::makeTemporary(name);
    if (descriptor_ >= 0) {
        temporary_.swap(name);
        removeWhenInterrupted(temporary_);
    } else {
        const bool isForbidden = errno == EACCES || errno == EPERM || errno == EROFS;
        failed(isForbidden ? "cannot create a file in its folder: " : "");
    }
}

/// Without this, a power failure shortly after the rename could leave an empty file and nothing of the one
/// before. The folder itself is not waited for: until it is stored, the file before is whole.
bool OutputFile::isStored() { return system::store(descriptor_) || failed(); }

/// Some file systems, those of networks among them, say only now that there was no room.
bool OutputFile::close() { return system::closeDescriptor(std::exchange(descriptor_, -1)) || failed(); }

bool OutputFile::failed(std::string_view before) {
    problem_ = std::string(before) + std::strerror(errno);
    return false;
}

}  // namespace tool
