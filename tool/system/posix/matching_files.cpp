// SPDX-License-Identifier: Apache-2.0
#include "system/matching_files.h"

#include <glob.h>

namespace tool::system {

std::vector<std::string> filesMatching(const std::string& pattern) {
    std::vector<std::string> files;
    ::glob_t found{};
    if (::glob(pattern.c_str(), GLOB_TILDE, nullptr, &found) == 0)
        files.assign(found.gl_pathv, found.gl_pathv + found.gl_pathc);
    else
        files.push_back(pattern);
    ::globfree(&found);
    return files;
}

}  // namespace tool::system
