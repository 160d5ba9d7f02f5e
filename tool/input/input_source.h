// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "zip/member.h"

namespace tool {

/// What is read as one file: one of the file system, standard input, or one in an archive.
struct InputSource {
    std::string name;     ///< as on the command line, or "downloads.zip/july.ofx"; "-" is standard input
    std::string archive;  ///< the one that it is in; "" when it is in none
    zip::Member member;   ///< of that archive

    bool isInArchive() const noexcept { return !archive.empty(); }
    /// The file of the file system that is read.
    const std::string& path() const noexcept { return isInArchive() ? archive : name; }
};

}  // namespace tool
