// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tool {

/// How many bytes at the beginning of a text are visible characters of ASCII and blanks, which most texts
/// consist of. Eight are looked at at once.
inline std::size_t plainRun(std::string_view text) noexcept {
    constexpr std::uint64_t bytes = 0x0101010101010101;
    constexpr std::uint64_t bit7 = bytes << 7;
    std::size_t run = 0;
    for (; run + sizeof bytes <= text.size(); run += sizeof bytes) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + run, sizeof word);
        // Neither sum of seven bits carries into the next byte.
        const std::uint64_t notControl = (word & ~bit7) + bytes * (0x80 - ' ');
        const std::uint64_t isDelete = (word & ~bit7) + bytes;
        if ((notControl & ~isDelete & ~word & bit7) != bit7) break;
    }
    while (run < text.size() && text[run] >= ' ' && text[run] < '\x7F') ++run;
    return run;
}

}  // namespace tool
