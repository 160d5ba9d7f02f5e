// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brackwell::reading {

/// Where "<", ">" and "&" stand in a block of 64 bytes: one bit each, the first byte lowest. The
/// portable one serves where the processor has no SSE2, and as the measure of the other.
std::uint64_t markupInBlock(const char* block) noexcept;
std::uint64_t markupInBlockPortably(const char* block) noexcept;

/// Finds the ends of tags in a text from front to back. It first writes down where all markup
/// characters of some blocks stand, without a branch that depends on the text, and then hands them out.
/// For elements of 5 to 30 bytes a search for each tag would cost as much as the tag.
class TagScanner {
public:
    explicit TagScanner(std::string_view text) noexcept : text_(text) {}

    /// The next "<", or the text's end; `sawAmpersand` is set when there is a "&" before it.
    std::size_t nextOpen(bool& sawAmpersand) noexcept {
        for (;;) {
            const std::size_t at = next();
            if (at == text_.size() || text_[at] == '<') return at;
            sawAmpersand |= text_[at] == '&';
        }
    }

    /// The next ">", or the text's end.
    std::size_t nextClose() noexcept {
        for (;;) {
            const std::size_t at = next();
            if (at == text_.size() || text_[at] == '>') return at;
        }
    }

    /// Where the next markup characters stand; null when it is not written down for so many.
    const std::uint32_t* ahead(std::size_t count) const noexcept {
        return count_ - at_ >= count ? positions_.data() + at_ : nullptr;
    }
    /// Passes over characters that ahead has shown.
    void skip(std::size_t count) noexcept { at_ += count; }

private:
    static constexpr std::size_t kBlock = 64;
    static constexpr std::size_t kCapacity = 512;

    std::size_t next() noexcept {
        if (at_ == count_ && !refill()) return text_.size();
        return positions_[at_++];
    }
    bool refill() noexcept;
    std::uint64_t nextBlock() noexcept;

    std::string_view text_;
    std::size_t scanned_ = 0;  ///< how much of the text has been looked at
    std::size_t at_ = 0;
    std::size_t count_ = 0;
    std::array<std::uint32_t, kCapacity> positions_;
};

}  // namespace brackwell::reading
