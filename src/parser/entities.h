// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

namespace brackwell::reading {

/// Writes the text with "&lt;", "&gt;" and "&amp;" replaced to `out`, which has room for as many bytes
/// as the text has, and returns how many were written. No other entity is known; what a replacement
/// makes is not looked at again.
std::size_t unescape(std::string_view text, char* out) noexcept;

}  // namespace brackwell::reading
