// SPDX-License-Identifier: Apache-2.0
#include "input/archives.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "console/document_file.h"
#include "text/visible_text.h"
#include "zip/directory.h"
#include "zip/inflate.h"

namespace tool {
namespace {

/// What is unpacked of an archive may be so many times its size, and so many bytes more. Documents are packed
/// to a fifth, and long ones to a thirtieth or sixtieth; what is packed to less than this is made to exhaust
/// who unpacks it.
constexpr std::uint64_t kMostTimes = 100;
constexpr std::uint64_t kMostBytes = std::uint64_t{16} << 20U;

std::string_view listErrorOf(zip::DirectoryFault fault) noexcept {
    switch (fault) {
        case zip::DirectoryFault::none:
            break;
        case zip::DirectoryFault::damaged:
            return "The ZIP archive is cut off or damaged: the list of what is in it cannot be read. "
                   "Download it again.";
        case zip::DirectoryFault::isPart:
            return "This is one part of a ZIP archive that was split. Put the parts together first.";
        case zip::DirectoryFault::tooLong:
            return "The ZIP archive has more members than are read. Unpack it first.";
    }
    return {};
}

std::string reasonOf(zip::MemberFault fault) {
    if (fault == zip::MemberFault::encrypted) return "encrypted";
    return fault == zip::MemberFault::unknownMethod ? "packed in an unknown way" : "damaged";
}

bool fileBeginsLikeArchive(const std::string& path) {
    std::error_code unknown;
    // To open a pipe would take from it what is to be read.
    return std::filesystem::is_regular_file(path, unknown) &&
           beginLikeArchive(zip::ArchiveFile(path).read(0, 4));
}

// ---------------------------------------------------------------------------------------------
// Names

/// Where the part of a name ends that hides it; nothing where none does.
std::optional<std::size_t> endOfHidden(std::string_view name) noexcept {
    for (std::size_t begin = 0; begin < name.size();) {
        const std::size_t end = std::min(name.find('/', begin), name.size());
        const std::string_view part = name.substr(begin, end - begin);
        const bool isMove = part == "." || part == "..";
        // What a system keeps of its own beside the files.
        const bool isOfSystem = begin == 0 && part == "__MACOSX";
        if (isOfSystem || (part.starts_with('.') && !isMove)) return end;
        begin = end + 1;
    }
    return std::nullopt;
}

/// "a/b.ofx" -> "a/b (2).ofx"
std::string numbered(const std::string& name, std::size_t number) {
    const std::size_t dot = name.rfind('.');
    const bool hasEnding = dot != name.npos && name.find('/', dot) == name.npos;
    return std::string(name).insert(hasEnding ? dot : name.size(), " (" + std::to_string(number) + ")");
}

/// Gives members of one name different ones. They are in the order of names.
void numberRepeatedNames(std::vector<zip::Entry>& entries) {
    for (std::size_t first = 0, next = 1; next < entries.size(); ++next)
        if (entries[next].name == entries[first].name)
            entries[next].name = numbered(entries[next].name, next - first + 1);
        else
            first = next;
}

/// The files of an archive in the order of names, no two of one name; those that stand for folders are not
/// among them.
zip::Directory filesIn(zip::ArchiveFile& file) {
    zip::Directory directory = zip::directoryOf(file);
    std::erase_if(directory.entries, [](const zip::Entry& entry) {
        return entry.name.ends_with('/') && entry.member.size == 0;
    });
    std::ranges::stable_sort(directory.entries, {}, &zip::Entry::name);
    numberRepeatedNames(directory.entries);
    return directory;
}

// ---------------------------------------------------------------------------------------------
// What is in an archive

class ArchiveReader {
public:
    explicit ArchiveReader(const std::string& path)
        : path_(path), file_(path), left_(kMostTimes * file_.size() + kMostBytes) {}

    ArchiveContent read() {
        zip::Directory directory = filesIn(file_);
        content_.error = listErrorOf(directory.fault);
        for (zip::Entry& entry : directory.entries) {
            sortIn(entry);
            if (!content_.error.empty()) return {{}, {}, {}, {}, content_.error};
        }
        // Of a hidden folder there is one entry for each file in it.
        std::vector<std::string>& names = content_.passedOver;
        std::ranges::sort(names);
        names.erase(std::unique(names.begin(), names.end()), names.end());
        return std::move(content_);
    }

private:
    void sortIn(zip::Entry& entry) {
        const std::optional<std::size_t> hidden = endOfHidden(entry.name);
        if (hidden || entry.isLink || entry.name.ends_with('/'))
            content_.passedOver.push_back(entry.name.substr(0, hidden.value_or(entry.name.size())));
        else if (hasNameOfDocument(entry.name))
            takeDocument(entry);
        else if (hasNameOfArchive(entry.name))
            content_.archives.push_back(std::move(entry.name));
        else
            lookInto(entry);
    }

    void lookInto(zip::Entry& entry) {
        if (!mayUnpack(std::min<std::uint64_t>(entry.member.size, kLookedThrough), entry.name)) return;
        const zip::MemberBytes beginning = zip::bytesOf(file_, entry.member, kLookedThrough);
        if (beginning.fault != zip::MemberFault::none)
            content_.unread.push_back(entry.name + " (" + reasonOf(beginning.fault) + ")");
        else if (isDocument(beginning.bytes))
            takeDocument(entry);
        else
            content_.passedOver.push_back(std::move(entry.name));
    }

    void takeDocument(const zip::Entry& entry) {
        const bool isUnpacked = entry.member.size <= kLargestMember;
        if (isUnpacked && !mayUnpack(entry.member.size, entry.name)) return;
        content_.documents.push_back({path_ + "/" + entry.name, path_, entry.member});
    }

    /// Says what is wrong where too much would be unpacked.
    bool mayUnpack(std::uint64_t size, const std::string& name) {
        if (size <= left_) {
            left_ -= size;
            return true;
        }
        content_.error = "Unpacked, the ZIP archive would have more than " + std::to_string(kMostTimes) +
                         " times its size (seen at " + visiblePart(name) +
                         "), so it was left out. Unpack it first if you trust who made it.";
        return false;
    }

    const std::string& path_;
    zip::ArchiveFile file_;
    std::uint64_t left_;  ///< what may still be unpacked
    ArchiveContent content_;
};

}  // namespace

bool isArchive(const std::string& path) { return zip::canInflate && fileBeginsLikeArchive(path); }

bool isArchiveForOthers(const std::string& path) { return !zip::canInflate && fileBeginsLikeArchive(path); }

bool beginLikeArchive(std::string_view bytes) noexcept {
    // The second is one without members.
    return bytes.starts_with("PK\x03\x04") || bytes.starts_with("PK\x05\x06");
}

bool hasNameOfArchive(std::string_view path) noexcept {
    constexpr std::string_view end = ".zip";
    return path.size() >= end.size() &&
           std::ranges::equal(path.substr(path.size() - end.size()), end, {}, [](char c) {
               return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
           });
}

ArchiveContent contentOfArchive(const std::string& path) { return ArchiveReader(path).read(); }

std::optional<InputSource> memberNamed(const std::string& name) {
    for (std::size_t slash = name.find('/'); slash != name.npos; slash = name.find('/', slash + 1)) {
        const std::string path = name.substr(0, slash);
        if (!isArchive(path)) continue;
        zip::ArchiveFile file(path);
        for (const zip::Entry& entry : filesIn(file).entries)
            if (entry.name == std::string_view(name).substr(slash + 1))
                return InputSource{name, path, entry.member};
        break;
    }
    return std::nullopt;
}

}  // namespace tool
