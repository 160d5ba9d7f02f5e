// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace brackwell::tests {

/// The files of the folder that BRACKWELL_CORPUS names, or nothing when it names none.
inline std::optional<std::vector<std::string>> corpusFiles() {
    const char* folder = std::getenv("BRACKWELL_CORPUS");
    if (folder == nullptr || *folder == '\0') return std::nullopt;
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace brackwell::tests
