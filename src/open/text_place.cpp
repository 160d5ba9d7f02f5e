// SPDX-License-Identifier: Apache-2.0
#include "open/text_place.h"

#include <algorithm>
#include <bit>

#include "memory/byte_block.h"

namespace brackwell {

TextPlace placeInText(std::string_view text, std::size_t offset) noexcept {
    opening::PlaceCursor cursor(text);
    return cursor.advanceTo(offset);
}

namespace opening {
namespace {

/// How many bits are set. The instruction for it is not on every processor; few are set, or all from the
/// lowest on.
unsigned bitsIn(unsigned bits) noexcept {
    if ((bits & (bits + 1)) == 0) return static_cast<unsigned>(std::countr_one(bits));
    unsigned count = 0;
    for (; bits != 0; bits &= bits - 1) ++count;
    return count;
}

}  // namespace

TextPlace PlaceCursor::advanceTo(std::size_t offset) noexcept {
    offset = std::min(offset, text_.size());
    while (at_ + reading::ByteBlock::size <= offset) advanceByBlock();
    for (; at_ < offset; ++at_) {
        const char c = text_[at_];
        if (c == '\n' || (c == '\r' && !isLineFeed(at_ + 1))) {
            ++place_.line;
            place_.column = 1;
        } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
            ++place_.column;
        }
    }
    return place_;
}

/// Does the same for 16 bytes at once.
void PlaceCursor::advanceByBlock() noexcept {
    const reading::ByteBlock block(text_.data() + at_);
    at_ += reading::ByteBlock::size;
    const unsigned feeds = block.equal('\n');
    const unsigned afterFeed = feeds | (isLineFeed(at_) ? 1U << reading::ByteBlock::size : 0);
    const unsigned breaks = feeds | (block.equal('\r') & ~(afterFeed >> 1));
    // All bytes but those that continue a character.
    const unsigned begins = ~block.atLeast('\x80') | block.atLeast('\xC0');
    const unsigned counted = (begins & 0xFFFFU) >> std::bit_width(breaks);
    if (breaks != 0) place_.column = 1;
    place_.column += bitsIn(counted);
    place_.line += bitsIn(breaks);
}

}  // namespace opening

}  // namespace brackwell
