// SPDX-License-Identifier: Apache-2.0
#include "zip/inflate.h"

// Then what it is given to read need not be changeable.
#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <limits>
#include <new>

namespace tool::zip {
namespace {

/// What operator new does without memory.
[[noreturn]] void failForMemory() {
    if (const std::new_handler handler = std::get_new_handler()) handler();
    throw std::bad_alloc();
}

/// A stream of zlib's, without the header that other formats have before it.
class RawStream {
public:
    RawStream() {
        if (::inflateInit2(&stream_, -MAX_WBITS) != Z_OK) failForMemory();
    }
    RawStream(const RawStream&) = delete;
    RawStream& operator=(const RawStream&) = delete;
    ~RawStream() { ::inflateEnd(&stream_); }

    z_stream& operator*() noexcept { return stream_; }
    z_stream* operator->() noexcept { return &stream_; }

private:
    z_stream stream_{};
};

/// As much of a size as zlib takes at a time.
uInt inOneGo(std::size_t size) noexcept {
    return static_cast<uInt>(std::min<std::size_t>(size, std::numeric_limits<uInt>::max()));
}

}  // namespace

const bool canInflate = true;

Inflated inflate(std::span<char> room, const std::function<std::string_view()>& nextPiece) {
    RawStream stream;
    Inflated result;
    std::string_view piece;
    int status = Z_OK;
    while (status == Z_OK && result.size < room.size()) {
        if (piece.empty() && (piece = nextPiece()).empty()) break;
        const uInt left = inOneGo(room.size() - result.size);
        const uInt given = inOneGo(piece.size());
        stream->next_out = reinterpret_cast<Bytef*>(room.data() + result.size);
        stream->avail_out = left;
        stream->next_in = reinterpret_cast<const Bytef*>(piece.data());
        stream->avail_in = given;
        status = ::inflate(&*stream, Z_NO_FLUSH);
        result.size += left - stream->avail_out;
        piece.remove_prefix(given - stream->avail_in);
    }
    if (status == Z_MEM_ERROR) failForMemory();
    result.isEnd = status == Z_STREAM_END;
    return result;
}

std::uint32_t checksumOf(std::string_view bytes) {
    uLong checksum = 0;
    while (!bytes.empty()) {
        const uInt count = inOneGo(bytes.size());
        checksum = ::crc32(checksum, reinterpret_cast<const Bytef*>(bytes.data()), count);
        bytes.remove_prefix(count);
    }
    return static_cast<std::uint32_t>(checksum);
}

}  // namespace tool::zip
