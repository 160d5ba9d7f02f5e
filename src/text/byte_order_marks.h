// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
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

/// An encoding whose characters consist of several bytes each, and the mark that tells of it.
struct WideEncoding {
    std::string_view mark;
    const char* name;
    std::size_t unit;  ///< bytes that characters consist of at least, and in multiples of
    std::endian order;
};
/// The longer marks come first, since one of these begins like another.
inline constexpr WideEncoding kWideEncodings[] = {
    {kUTF32BigEndianMark, "UTF-32BE", 4, std::endian::big},
    {kUTF32LittleEndianMark, "UTF-32LE", 4, std::endian::little},
    {kUTF16BigEndianMark, "UTF-16BE", 2, std::endian::big},
    {kUTF16LittleEndianMark, "UTF-16LE", 2, std::endian::little},
};

/// What the prescribed parser takes for the mark of UTF-8, whose first byte is another one.
inline constexpr std::string_view kParserUTF8Mark{"\xBF\xBB\xBF", 3};

}  // namespace brackwell
