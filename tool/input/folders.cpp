// SPDX-License-Identifier: Apache-2.0
#include "input/folders.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "console/document_file.h"
#include "input/archives.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

bool isToBeRead(const std::string& name) {
    return hasNameOfDocument(name) || (hasNameOfArchive(name) && isArchive(name)) || holdsDocument(name);
}

bool isHidden(const fs::path& path) { return path.filename().string().starts_with('.'); }

/// Puts an entry of a folder where it belongs; folders go to those that wait.
void sortIn(const fs::directory_entry& entry, FolderContent& content, std::vector<fs::path>& waiting) {
    const std::string name = entry.path().string();
    std::error_code unknown;
    const bool isSeen = !isHidden(entry.path());
    if (isSeen && entry.is_directory(unknown) && !entry.is_symlink(unknown))
        waiting.push_back(entry.path());
    else if (isSeen && entry.is_regular_file(unknown) && isToBeRead(name))
        content.documents.push_back(name);
    else
        content.passedOver.push_back(name);
}

}  // namespace

FolderContent contentOf(const std::string& folder, const std::string& results) {
    FolderContent content;
    std::error_code unknown;
    std::vector<fs::path> waiting{fs::path(folder)};
    while (!waiting.empty()) {
        const fs::path path = waiting.back();
        waiting.pop_back();
        if (!results.empty() && path != fs::path(folder) && fs::equivalent(path, results, unknown)) {
            content.leftOut = path.string();
            continue;
        }
        std::error_code error;
        for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error))
            sortIn(*entry, content, waiting);
        if (error) content.unread.push_back(path.string());
    }
    for (auto* names : {&content.documents, &content.passedOver, &content.unread}) std::ranges::sort(*names);
    return content;
}

bool isFolder(const std::string& name) {
    std::error_code unknown;
    return fs::is_directory(name, unknown);
}

}  // namespace tool
