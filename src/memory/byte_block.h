// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace brackwell::reading {

/// 16 bytes of a text, compared at once. The answers have one bit for each byte, the first byte lowest.
/// This one serves where the processor has no SSE2, and as the measure of the other.
class PortableByteBlock {
public:
    static constexpr std::size_t size = 16;

    explicit PortableByteBlock(const char* bytes) noexcept { std::memcpy(bytes_, bytes, size); }

    /// Which bytes are this character.
    unsigned equal(char character) const noexcept {
        unsigned bits = 0;
        for (unsigned i = 0; i < size; ++i) bits |= unsigned{bytes_[i] == character} << i;
        return bits;
    }
    /// Which bytes are "<", ">" or "&".
    unsigned markup() const noexcept { return equal('<') | equal('>') | equal('&'); }
    /// Which bytes are at least this character, as numbers from 0 to 255.
    unsigned atLeast(char character) const noexcept {
        const auto least = static_cast<unsigned char>(character);
        unsigned bits = 0;
        for (unsigned i = 0; i < size; ++i)
            bits |= unsigned{static_cast<unsigned char>(bytes_[i]) >= least} << i;
        return bits;
    }
    /// Which bytes are those of another block.
    unsigned equal(const PortableByteBlock& other) const noexcept {
        unsigned bits = 0;
        for (unsigned i = 0; i < size; ++i) bits |= unsigned{bytes_[i] == other.bytes_[i]} << i;
        return bits;
    }

private:
    char bytes_[size];
};

#ifdef __SSE2__

class ByteBlock {
public:
    static constexpr std::size_t size = 16;

    explicit ByteBlock(const char* bytes) noexcept { std::memcpy(&bytes_, bytes, size); }

    unsigned equal(char character) const noexcept { return equal(_mm_set1_epi8(character)); }
    unsigned equal(const ByteBlock& other) const noexcept { return equal(other.bytes_); }
    unsigned markup() const noexcept {
        const __m128i angle =
            _mm_cmpeq_epi8(_mm_or_si128(bytes_, _mm_set1_epi8('<' ^ '>')), _mm_set1_epi8('>'));
        const __m128i ampersand = _mm_cmpeq_epi8(bytes_, _mm_set1_epi8('&'));
        return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(angle, ampersand)));
    }
    unsigned atLeast(char character) const noexcept {
        return equal(_mm_max_epu8(bytes_, _mm_set1_epi8(character)));
    }

private:
    unsigned equal(__m128i other) const noexcept {
        return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes_, other)));
    }
    __m128i bytes_;
};

#else

using ByteBlock = PortableByteBlock;

#endif

}  // namespace brackwell::reading
