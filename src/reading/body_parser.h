// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

namespace brackwell::reading {

/// Parses a body, which lies in `source`, into a tree that shares `source`. Nothing when a close tag
/// matches nothing open; `failure`, when there is one, then says which.
std::optional<ParseDictionary> parseBody(const Data& source, std::string_view body, std::string* failure);

}  // namespace brackwell::reading
