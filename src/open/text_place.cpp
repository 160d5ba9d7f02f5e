// SPDX-License-Identifier: Apache-2.0
#include "open/text_place.h"

#include <algorithm>

namespace brackwell {

TextPlace placeInText(std::string_view text, std::size_t offset) noexcept {
    opening::PlaceCursor cursor(text);
    return cursor.advanceTo(offset);
}

TextPlace opening::PlaceCursor::advanceTo(std::size_t offset) noexcept {
    for (offset = std::min(offset, text_.size()); at_ < offset; ++at_) {
        const char c = text_[at_];
        const bool isFirstOfTwo = c == '\r' && at_ + 1 < text_.size() && text_[at_ + 1] == '\n';
        if (c == '\n' || (c == '\r' && !isFirstOfTwo)) {
            ++place_.line;
            place_.column = 1;
        } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
            ++place_.column;
        }
    }
    return place_;
}

}  // namespace brackwell
