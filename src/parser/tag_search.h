// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
#include <string_view>

#include "memory/byte_block.h"

namespace brackwell::reading {

/// The end of a text that runs to the next tag.
struct TextEnd {
    std::size_t position;    ///< where the "<" stands, or the end of all
    bool hasEntity = false;  ///< a "&" stands before it
};

/// The searches in what is too short for a block. Nothing is found past the end.
TextEnd findOpenByBytes(std::string_view text, std::size_t from) noexcept;
std::size_t findCloseByBytes(std::string_view text, std::size_t from) noexcept;
std::size_t findInkByBytes(std::string_view text, std::size_t from) noexcept;

/// The next "<" at or after `from`.
template <class Block = ByteBlock>
TextEnd findOpen(std::string_view text, std::size_t from) noexcept {
    unsigned ampersands = 0;
    for (; from + Block::size <= text.size(); from += Block::size) {
        const Block block(text.data() + from);
        const unsigned opens = block.equal('<');
        ampersands |= block.equal('&') & ((opens & (0 - opens)) - 1);  // those before the first "<"
        if (opens != 0) return {from + static_cast<unsigned>(std::countr_zero(opens)), ampersands != 0};
    }
    const TextEnd end = findOpenByBytes(text, from);
    return {end.position, end.hasEntity || ampersands != 0};
}

/// Where the next "<", ">" or "&" stands at or after `from`; somewhere past `last` when none stands up to
/// there. A block can be read at `last`, too.
template <class Block = ByteBlock>
const char* findMarkup(const char* from, const char* last) noexcept {
    for (; from <= last; from += Block::size)
        if (const unsigned found = Block(from).markup(); found != 0)
            return from + static_cast<unsigned>(std::countr_zero(found));
    return last + 1;
}

/// Where the next byte stands that is neither a blank nor a control character, or the text's end.
template <class Block = ByteBlock>
std::size_t findInk(std::string_view text, std::size_t from) noexcept {
    for (; from + Block::size <= text.size(); from += Block::size)
        if (const unsigned found = Block(text.data() + from).atLeast('!'); found != 0)
            return from + static_cast<unsigned>(std::countr_zero(found));
    return findInkByBytes(text, from);
}

/// Where the next ">" stands at or after `from`, or the text's end.
template <class Block = ByteBlock>
std::size_t findClose(std::string_view text, std::size_t from) noexcept {
    for (; from + Block::size <= text.size(); from += Block::size)
        if (const unsigned closes = Block(text.data() + from).equal('>'); closes != 0)
            return from + static_cast<unsigned>(std::countr_zero(closes));
    return findCloseByBytes(text, from);
}

}  // namespace brackwell::reading
