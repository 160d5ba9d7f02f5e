// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "zip/archive_file.h"
#include "zip/member.h"

/// \file
/// What is in an archive. The list stands at its end, and is read once and in one go, whatever it holds: an
/// archive takes time in proportion to its size.

namespace tool::zip {

/// A member with what the archive says of it besides.
struct Entry {
    std::string name;  ///< in bytes, as the names of files are; one that ends in a slash is a folder's
    Member member;
    bool isLink = false;
};

/// Why there is no list.
enum class DirectoryFault : unsigned char {
    none,
    damaged,  ///< or cut off
    isPart,   ///< the archive was split
    tooLong,
};

struct Directory {
    std::vector<Entry> entries;  ///< in the order of the list
    DirectoryFault fault = DirectoryFault::none;
};

Directory directoryOf(ArchiveFile& archive);

}  // namespace tool::zip
