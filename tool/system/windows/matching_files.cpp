// SPDX-License-Identifier: Apache-2.0
#include "system/matching_files.h"

#include <windows.h>

#include <algorithm>

#include "system/windows/wide_text.h"

namespace tool::system {

std::vector<std::string> filesMatching(const std::string& pattern) {
    const std::size_t folder = pattern.find_last_of("/\\") + 1;  // 0 where there is none
    std::vector<std::string> files;
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW(wide(pattern).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return {pattern};
    do {
        files.push_back(pattern.substr(0, folder) + narrow(found.cFileName));
    } while (::FindNextFileW(search, &found) != 0);
    ::FindClose(search);
    std::ranges::sort(files);
    return files;
}

}  // namespace tool::system
