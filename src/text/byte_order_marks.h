// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace brackwell {

/// @{
/// The byte order marks of Unicode's encodings. The last one begins like the third.
inline constexpr std::string_view kUTF8Mark{"\xEF\xBB\xBF", 3};
inline constexpr std::string_view kUTF16BigEndianMark{"\xFE\xFF", 2};
inline constexpr std::string_view kUTF16LittleEndianMark{"\xFF\xFE", 2};
inline constexpr std::string_view kUTF32BigEndianMark{"\0\0\xFE\xFF", 4};
inline constexpr std::string_view kUTF32LittleEndianMark{"\xFF\xFE\0\0", 4};
/// @}

/// What the prescribed parser takes for the mark of UTF-8, whose first byte is another one.
inline constexpr std::string_view kParserUTF8Mark{"\xBF\xBB\xBF", 3};

}  // namespace brackwell
