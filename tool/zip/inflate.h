// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

/// \file
/// What a library does for archives. `zlib/` has it; `absent/` is for builds without that.

namespace tool::zip {

/// False for a build that cannot read archives: then nothing else here is of use.
extern const bool canInflate;

/// What was unpacked.
struct Inflated {
    std::size_t size = 0;
    bool isEnd = false;  ///< what is packed ends there
};

/// Unpacks what was packed by "deflate", piece by piece, until it ends, the room is full, or there is an
/// empty piece or one that is no such thing.
Inflated inflate(std::span<char> room, const std::function<std::string_view()>& nextPiece);

/// The CRC-32 of bytes.
std::uint32_t checksumOf(std::string_view bytes);

}  // namespace tool::zip
