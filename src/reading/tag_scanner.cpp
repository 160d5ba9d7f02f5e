// SPDX-License-Identifier: Apache-2.0
#include "reading/tag_scanner.h"

#include <array>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace brackwell::reading {

BlockMasks classifyBlockPortably(const char* block) noexcept {
    BlockMasks masks;
    for (unsigned i = 0; i < 64; ++i) {
        masks.open |= std::uint64_t{block[i] == '<'} << i;
        masks.close |= std::uint64_t{block[i] == '>'} << i;
        masks.ampersand |= std::uint64_t{block[i] == '&'} << i;
    }
    return masks;
}

#ifdef __SSE2__

namespace {

/// Four times 16 bytes.
struct Bytes {
    __m128i part[4];
};

std::uint64_t equalBytes(const Bytes& bytes, char wanted) noexcept {
    const __m128i pattern = _mm_set1_epi8(wanted);
    std::uint64_t mask = 0;
    for (unsigned i = 0; i < 4; ++i) {
        const int part = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes.part[i], pattern));
        mask |= std::uint64_t{static_cast<unsigned>(part)} << (16 * i);
    }
    return mask;
}

}  // namespace

BlockMasks classifyBlock(const char* block) noexcept {
    Bytes bytes;
    std::memcpy(&bytes, block, sizeof bytes);
    return {equalBytes(bytes, '<'), equalBytes(bytes, '>'), equalBytes(bytes, '&')};
}

#else

BlockMasks classifyBlock(const char* block) noexcept { return classifyBlockPortably(block); }

#endif

BlockMasks TagScanner::classifyTail() const noexcept {
    std::array<char, kBlock> padded{};
    std::memcpy(padded.data(), text_.data() + block_, text_.size() - block_);
    return classifyBlock(padded.data());
}

}  // namespace brackwell::reading
