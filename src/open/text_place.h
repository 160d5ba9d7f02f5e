// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <cstddef>
#include <string_view>

namespace brackwell::opening {

/// Counts lines and columns on the way through a text, so that many places cost one walk.
class PlaceCursor {
public:
    explicit PlaceCursor(std::string_view text) noexcept : text_(text) {}
    /// The place of an offset that is not before the last one.
    TextPlace advanceTo(std::size_t offset) noexcept;

private:
    void advanceByBlock() noexcept;
    bool isLineFeed(std::size_t at) const noexcept { return at < text_.size() && text_[at] == '\n'; }

    std::string_view text_;
    std::size_t at_ = 0;
    TextPlace place_;
};

}  // namespace brackwell::opening
