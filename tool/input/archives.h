// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "input/input_source.h"

/// \file
/// ZIP archives among the files of the command line: each stands for the documents in it, as a folder does.
/// They are told from other files by the same rules. Nothing is ever unpacked into a file.

namespace tool {

/// True for a ZIP archive that can be read, whatever its name is. Office documents are archives, too.
bool isArchive(const std::string& path);

/// True for one that cannot, since this build reads none.
bool isArchiveForOthers(const std::string& path);

/// True for the first bytes of an archive.
bool beginLikeArchive(std::string_view bytes) noexcept;

/// True for the names that archives have.
bool hasNameOfArchive(std::string_view path) noexcept;

/// What is in an archive, each in the order of names.
struct ArchiveContent {
    std::vector<InputSource> documents;   ///< what has the name of a document, or holds one
    std::vector<std::string> passedOver;  ///< other files, hidden ones, links
    std::vector<std::string> archives;    ///< that are in this one, and not looked into
    std::vector<std::string> unread;      ///< files that could not be looked into, each with the reason
    std::string error;                    ///< why it is not known what is in it; "" when it is
};

ArchiveContent contentOfArchive(const std::string& path);

/// The member that a name such as "downloads.zip/july.ofx" stands for, whatever it holds.
std::optional<InputSource> memberNamed(const std::string& name);

/// A member may have so many bytes: more than any institution offers, and less than a computer's memory.
inline constexpr std::uint64_t kLargestMember = std::uint64_t{256} << 20U;

}  // namespace tool
