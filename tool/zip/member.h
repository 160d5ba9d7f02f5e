// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "zip/archive_file.h"

namespace tool::zip {

/// A file in an archive: where it is and how it is packed. That is all it takes to read it, so no archive has
/// to stay open.
struct Member {
    std::uint64_t place = 0;       ///< of its own header in the archive
    std::uint64_t packedSize = 0;  ///< in the archive
    std::uint64_t size = 0;        ///< unpacked
    std::uint32_t checksum = 0;    ///< of what is unpacked
    unsigned method = 0;           ///< how it is packed
    bool isEncrypted = false;
};

/// Why a member cannot be read.
enum class MemberFault : unsigned char { none, encrypted, unknownMethod, damaged };

struct MemberBytes {
    std::string bytes;
    MemberFault fault = MemberFault::none;
};

/// The first bytes of a member, all of them where it has no more than that. All of them have to be what the
/// archive says of them: so many, with that checksum. Never unpacks more than it says, or than is asked for.
MemberBytes bytesOf(ArchiveFile& archive, const Member& member, std::size_t most);

}  // namespace tool::zip
