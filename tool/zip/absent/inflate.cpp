// SPDX-License-Identifier: Apache-2.0
#include "zip/inflate.h"

namespace tool::zip {

const bool canInflate = false;

Inflated inflate(std::span<char> /*room*/, const std::function<std::string_view()>& /*nextPiece*/) {
    return {};
}

std::uint32_t checksumOf(std::string_view /*bytes*/) { return 0; }

}  // namespace tool::zip
