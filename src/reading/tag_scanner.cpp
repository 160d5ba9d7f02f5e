// SPDX-License-Identifier: Apache-2.0
#include "reading/tag_scanner.h"

#include <bit>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace brackwell::reading {

std::uint64_t markupInBlockPortably(const char* block) noexcept {
    std::uint64_t mask = 0;
    for (unsigned i = 0; i < 64; ++i) {
        const bool isMarkup = block[i] == '<' || block[i] == '>' || block[i] == '&';
        mask |= std::uint64_t{isMarkup} << i;
    }
    return mask;
}

#ifdef __SSE2__

std::uint64_t markupInBlock(const char* block) noexcept {
    static_assert(('<' | 2) == '>');
    const __m128i tagBit = _mm_set1_epi8(2);
    const __m128i tag = _mm_set1_epi8('>');
    const __m128i ampersand = _mm_set1_epi8('&');
    std::uint64_t mask = 0;
    for (unsigned i = 0; i < 4; ++i) {
        __m128i bytes;
        std::memcpy(&bytes, block + 16 * i, sizeof bytes);
        const __m128i found =
            _mm_or_si128(_mm_cmpeq_epi8(_mm_or_si128(bytes, tagBit), tag), _mm_cmpeq_epi8(bytes, ampersand));
        mask |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(found))} << (16 * i);
    }
    return mask;
}

#else

std::uint64_t markupInBlock(const char* block) noexcept { return markupInBlockPortably(block); }

#endif

namespace {

/// std::popcount calls into a library where the processor is not known to count bits.
constexpr std::size_t countBits(std::uint64_t bits) noexcept {
    bits -= bits >> 1 & 0x5555555555555555;
    bits = (bits & 0x3333333333333333) + (bits >> 2 & 0x3333333333333333);
    return ((bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0F) * 0x0101010101010101 >> 56;
}

/// Writes the positions of the bits to `out`, eight at a time whether there are so many or not: writing
/// too many costs less than guessing wrongly how many there are.
std::size_t writePositions(std::uint64_t bits, std::size_t base, std::uint32_t* out) noexcept {
    constexpr std::size_t step = 8;
    constexpr std::uint64_t never = std::uint64_t{1} << 63;  // keeps the count of zeros defined
    const std::size_t count = countBits(bits);
    for (std::size_t written = 0; written < count; written += step)
        for (std::size_t i = written; i < written + step; ++i) {
            out[i] =
                static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(std::countr_zero(bits | never));
            bits &= bits - 1;
        }
    return count;
}

}  // namespace

bool TagScanner::refill() noexcept {
    at_ = 0;
    count_ = 0;
    while (scanned_ < text_.size() && count_ + kBlock <= kCapacity) {
        const std::size_t base = scanned_;
        count_ += writePositions(nextBlock(), base, positions_.data() + count_);
    }
    return count_ != 0;
}

std::uint64_t TagScanner::nextBlock() noexcept {
    const std::size_t left = text_.size() - scanned_;
    const char* block = text_.data() + scanned_;
    scanned_ += kBlock;
    if (left >= kBlock) return markupInBlock(block);
    std::array<char, kBlock> padded{};
    std::memcpy(padded.data(), block, left);
    return markupInBlock(padded.data());
}

}  // namespace brackwell::reading
