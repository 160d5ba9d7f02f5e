// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/// \file
/// Which files are documents that an output must not take the place of.

namespace tool {

/// True when a file may be what the reading commands read, in any form, encoding and case, also after other
/// text: what begins like an OFX document, has one within its first 64 KiB, or is of OFX's forerunner; also
/// for what is compressed, and when it cannot be looked into.
bool mayBeDocument(const std::string& path);

/// True for the names that downloads have, such as "july.qfx", whatever is in the file.
bool hasNameOfDocument(std::string_view path) noexcept;

}  // namespace tool
