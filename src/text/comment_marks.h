// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace brackwell {

/// @{
/// What a comment of XML begins and ends with. No OFX has comments, but files have them.
inline constexpr std::string_view kCommentBegin = "<!--";
inline constexpr std::string_view kCommentEnd = "-->";
/// @}

}  // namespace brackwell
