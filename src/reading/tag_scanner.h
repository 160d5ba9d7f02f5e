// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brackwell::reading {

/// Where the characters that matter stand in a block of 64 bytes, one bit each, the first byte lowest.
struct BlockMasks {
    std::uint64_t open = 0;       ///< "<"
    std::uint64_t close = 0;      ///< ">"
    std::uint64_t ampersand = 0;  ///< "&"
    bool operator==(const BlockMasks&) const = default;
};

/// Classifies 64 bytes. The portable one serves where the processor has no SSE2, and as the measure of
/// the other.
BlockMasks classifyBlock(const char* block) noexcept;
BlockMasks classifyBlockPortably(const char* block) noexcept;

/// Finds the ends of tags in a text from front to back. Every block of 64 bytes is looked at once,
/// which for elements of 5 to 30 bytes is much cheaper than a search for each tag.
class TagScanner {
public:
    explicit TagScanner(std::string_view text) noexcept : text_(text) {
        if (!text.empty()) load(0);
    }

    /// The next "<" or ">" at or after a position, or the text's end. Positions may not go back.
    std::size_t findOpen(std::size_t from) noexcept { return find(&BlockMasks::open, from); }
    std::size_t findClose(std::size_t from) noexcept { return find(&BlockMasks::close, from); }

    /// False when no "&" stands between a position and the last one found.
    bool mayHoldAmpersandSince(std::size_t from) const noexcept { return behindAmpersand_ > from; }

private:
    static constexpr std::size_t kBlock = 64;

    std::size_t find(std::uint64_t BlockMasks::*kind, std::size_t from) noexcept {
        if (from >= text_.size()) return text_.size();
        const std::size_t block = from & ~(kBlock - 1);
        if (block != block_) load(block);
        std::uint64_t bits = masks_.*kind & (~std::uint64_t{0} << (from & (kBlock - 1)));
        while (bits == 0) {
            if (text_.size() - block_ <= kBlock) return text_.size();
            load(block_ + kBlock);
            bits = masks_.*kind;
        }
        return block_ + static_cast<std::size_t>(std::countr_zero(bits));
    }

    void load(std::size_t block) noexcept {
        block_ = block;
        masks_ = text_.size() - block >= kBlock ? classifyBlock(text_.data() + block) : classifyTail();
        if (masks_.ampersand != 0)
            behindAmpersand_ = block + kBlock - static_cast<std::size_t>(std::countl_zero(masks_.ampersand));
    }
    BlockMasks classifyTail() const noexcept;

    std::string_view text_;
    std::size_t block_ = 0;
    BlockMasks masks_;
    std::size_t behindAmpersand_ = 0;  ///< the position behind the last "&" seen
};

}  // namespace brackwell::reading
