// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace brackwell::opening {

/// The bytes of a file, or why there are none.
struct Source {
    Data bytes;
    OpenError error;
};

OpenError tooLargeError(std::size_t maximumSize);

Source readFile(const std::string& path, std::size_t maximumSize);

/// True for a text like "https://example.com/july.ofx", which may be a path as well.
bool isURLOfOtherScheme(std::string_view text) noexcept;

/// Why nothing is found at such a URL.
OpenError otherSchemeError(std::string_view url);

/// The path that a "file:" URL of RFC 8089 names; an error for one that names no file of this computer.
/// Any other text is a path already.
struct PathOrError {
    std::string path;
    OpenError error;
};
PathOrError pathOf(std::string_view pathOrURL);

}  // namespace brackwell::opening
