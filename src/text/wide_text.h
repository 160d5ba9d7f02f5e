// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <optional>
#include <string>
#include <string_view>

/// \file
/// UTF-16 and UTF-32, of either byte order. A byte order mark is a character like any other here.

namespace brackwell {

/// @{
/// The text in UTF-8; nothing when the bytes end within a character, or one of them is a lone surrogate or
/// beyond U+10FFFF.
std::optional<std::string> decodeUTF16(std::string_view bytes, std::endian order);
std::optional<std::string> decodeUTF32(std::string_view bytes, std::endian order);
/// @}

/// @{
/// The bytes of a text that is valid UTF-8.
std::string encodeUTF16(std::string_view text, std::endian order);
std::string encodeUTF32(std::string_view text, std::endian order);
/// @}

}  // namespace brackwell
