// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// \file
/// Which files are documents: an output must not take their place, and a folder or an archive stands for
/// those in it.

namespace tool {

/// True when a file may be what the reading commands read, in any form, encoding and case, also after other
/// text: what begins like an OFX document, has one within its first 64 KiB, or is of OFX's forerunner; also
/// for what is compressed, and when it cannot be looked into.
bool mayBeDocument(const std::string& path);

/// What is looked through of a file for a document in it.
inline constexpr std::size_t kLookedThrough = 1 << 16;

/// True when the first bytes of a file, so many where it has them, are of such a document.
bool isDocument(std::string_view bytes);

/// True when a file is such a document, or cannot be looked into; false for what is compressed.
bool holdsDocument(const std::string& path);

/// True for the names that downloads have, such as "july.qfx", whatever is in the file.
bool hasNameOfDocument(std::string_view path) noexcept;

}  // namespace tool
