// SPDX-License-Identifier: Apache-2.0
#include "input/folders.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>

#include "console/document_file.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

/// How many names a line has of what was passed over.
constexpr std::size_t kMostNames = 5;

bool isHidden(const fs::path& path) { return path.filename().string().starts_with('.'); }

/// Puts an entry of a folder where it belongs; folders go to those that wait.
void sortIn(const fs::directory_entry& entry, FolderContent& content, std::vector<fs::path>& waiting) {
    const std::string name = entry.path().string();
    std::error_code unknown;
    const bool isWanted = !isHidden(entry.path());
    if (isWanted && entry.is_directory(unknown) && !entry.is_symlink(unknown))
        waiting.push_back(entry.path());
    else if (isWanted && entry.is_regular_file(unknown) && (hasNameOfDocument(name) || holdsDocument(name)))
        content.documents.push_back(name);
    else
        content.passedOver.push_back(name);
}

/// "a.pdf, b.txt and 3 more", without the folder that all of them are in.
std::string someOf(const std::vector<std::string>& names, const std::string& folder) {
    const std::size_t cut = (fs::path(folder) / "").string().size();
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), kMostNames); ++i)
        text.append(i > 0 ? ", " : "").append(names[i], cut);
    if (names.size() > kMostNames) text += " and " + std::to_string(names.size() - kMostNames) + " more";
    return text;
}

void takeFolder(const std::string& folder, NamedFiles& named) {
    FolderContent content = contentOf(folder);
    for (const std::string& name : content.unread)
        named.errors.push_back({name, "The folder may not be looked into, so what is in it was left out."});
    if (content.documents.empty())
        named.errors.push_back({folder, "There is no OFX document in this folder."});
    if (const std::size_t count = content.passedOver.size(); count > 0)
        named.notes.push_back(
            {folder, std::to_string(count) + (count == 1 ? " file is" : " files are") +
                         " not read, as no OFX document: " + someOf(content.passedOver, folder) + "."});
    std::ranges::move(content.documents, std::back_inserter(named.files));
}

}  // namespace

FolderContent contentOf(const std::string& folder) {
    FolderContent content;
    std::vector<fs::path> waiting{fs::path(folder)};
    while (!waiting.empty()) {
        const fs::path path = waiting.back();
        waiting.pop_back();
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

NamedFiles withoutFolders(const std::vector<std::string>& names) {
    NamedFiles named;
    for (const std::string& name : names)
        if (name != "-" && isFolder(name))
            takeFolder(name, named);
        else
            named.files.push_back(name);
    return named;
}

}  // namespace tool
