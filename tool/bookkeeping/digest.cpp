// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/digest.h"

namespace tool {

std::string digestText(std::uint64_t digest) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4) text += digits[digest >> shift & 0xF];
    return text;
}

}  // namespace tool
