// SPDX-License-Identifier: Apache-2.0
#include "input/named_files.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "input/archives.h"
#include "input/folders.h"
#include "text/counted.h"
#include "text/visible_text.h"

namespace tool {
namespace {

/// How many names a line has of what was passed over.
constexpr std::size_t kMostNames = 5;

/// "a.pdf, b.txt and 3 more", without the folder of so many bytes that all of them are in. No name can look
/// like a line of its own.
std::string someOf(const std::vector<std::string>& names, std::size_t folder = 0) {
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), kMostNames); ++i)
        text.append(i > 0 ? ", " : "").append(visiblePart(std::string_view(names[i]).substr(folder)));
    if (names.size() > kMostNames) text += " and " + std::to_string(names.size() - kMostNames) + " more";
    return text;
}

std::string passedOverText(const std::vector<std::string>& names, std::size_t folder = 0) {
    return counted(names.size(), "file is", "files are") +
           " passed over (hidden, a link to a folder, or no OFX document): " + someOf(names, folder) + ".";
}

// ---------------------------------------------------------------------------------------------
// Archives

void noteLeftOut(const std::string& path, const ArchiveContent& content, NamedFiles& named) {
    if (!content.unread.empty())
        named.errors.push_back({path, counted(content.unread.size(), "file was", "files were") +
                                          " left out, since nobody can look into: " + someOf(content.unread) +
                                          "."});
    if (!content.passedOver.empty()) named.notes.push_back({path, passedOverText(content.passedOver)});
    if (!content.archives.empty())
        named.notes.push_back({path, counted(content.archives.size(), "archive is", "archives are") +
                                         " not looked into, as in an archive: " + someOf(content.archives) +
                                         ". Unpack this one first."});
}

/// What an archive stands for that was named itself.
void takeArchive(const std::string& path, FileCount count, NamedFiles& named) {
    ArchiveContent content = contentOfArchive(path);
    std::vector<InputSource>& documents = content.documents;
    if (!content.error.empty())
        named.errors.push_back({path, content.error});
    else if (documents.empty())
        named.errors.push_back({path,
                                "There is no OFX document in this file, a ZIP archive or an office "
                                "document."});
    else if (count == FileCount::one && documents.size() > 1) {
        named.errors.push_back(
            {path, "This command reads one document, and there are " + std::to_string(documents.size()) +
                       " in this archive. Name one: " + visiblePart(documents.front().name) + "."});
        return;
    }
    noteLeftOut(path, content, named);
    std::ranges::move(documents, std::back_inserter(named.files));
}

/// What an archive in a folder stands for; false when that is nothing, and nothing is to be said of it.
bool takeArchiveInFolder(const std::string& path, NamedFiles& named) {
    ArchiveContent content = contentOfArchive(path);
    if (!content.error.empty()) named.errors.push_back({path, content.error});
    const bool isOfInterest =
        !content.documents.empty() || !content.unread.empty() || !content.archives.empty();
    if (isOfInterest) noteLeftOut(path, content, named);
    std::ranges::move(content.documents, std::back_inserter(named.files));
    return isOfInterest || !content.error.empty();
}

// ---------------------------------------------------------------------------------------------
// Folders

void takeFolder(const std::string& folder, const std::string& results, NamedFiles& named) {
    FolderContent content = contentOf(folder, results);
    if (!content.leftOut.empty())
        named.notes.push_back({content.leftOut, "This folder is not read, since the results go there."});
    const std::size_t before = named.files.size();
    for (const std::string& name : content.unread)
        named.errors.push_back({name, "The folder may not be looked into, so what is in it was left out."});
    for (std::string& name : content.documents)
        if (!isArchive(name))
            named.files.push_back({std::move(name), {}, {}});
        else if (!takeArchiveInFolder(name, named))
            content.passedOver.push_back(name);
    if (named.files.size() == before && content.unread.empty())
        named.errors.push_back({folder, "There is no OFX document in this folder."});
    if (content.passedOver.empty()) return;
    std::ranges::sort(content.passedOver);
    const std::size_t cut = (std::filesystem::path(folder) / "").string().size();
    named.notes.push_back({folder, passedOverText(content.passedOver, cut)});
}

void takeNamed(const std::string& name, FileCount count, const std::string& results, NamedFiles& named) {
    if (name == "-") return named.files.push_back({name, {}, {}});
    if (count == FileCount::any && isFolder(name)) return takeFolder(name, results, named);
    if (isArchive(name)) return takeArchive(name, count, named);
    if (isArchiveForOthers(name))
        named.notes.push_back({name, "This build of brackwell reads no ZIP archives."});
    std::error_code unknown;
    std::optional<InputSource> member =
        std::filesystem::exists(name, unknown) ? std::nullopt : memberNamed(name);
    named.files.push_back(member ? std::move(*member) : InputSource{name, {}, {}});
}

}  // namespace

NamedFiles namedFiles(const std::vector<std::string>& names, FileCount count, const std::string& results) {
    NamedFiles named;
    for (const std::string& name : names) takeNamed(name, count, results, named);
    return named;
}

}  // namespace tool
