// SPDX-License-Identifier: Apache-2.0
#include "console/output_target.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "system/windows/wide_text.h"

namespace tool {
namespace {

using Kind = OutputTarget::Kind;

}  // namespace

OutputTarget outputTarget(const std::string& name) {
    std::error_code unknown;
    const std::filesystem::path named = system::wide(name);
    const std::filesystem::path last = std::filesystem::is_symlink(named, unknown)
                                           ? std::filesystem::weakly_canonical(named, unknown)
                                           : named;
    const std::string path = system::narrow(last.c_str());
    struct ::_stat64 status = {};
    if (::_wstat64(last.c_str(), &status) != 0) {
        const bool isMissing = errno == ENOENT;
        return isMissing ? OutputTarget{Kind::missing, 0, path} : OutputTarget{Kind::unreachable, errno, {}};
    }
    if ((status.st_mode & _S_IFDIR) != 0) return {Kind::unreachable, EISDIR, {}};
    if ((status.st_mode & _S_IFREG) == 0) return {Kind::device, 0, path};
    if ((status.st_mode & _S_IWRITE) == 0) return {Kind::unreachable, EACCES, {}};
    return {Kind::file, 0, path};
}

}  // namespace tool
