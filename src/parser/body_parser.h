// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace brackwell::reading {

/// Where a tag stands: from its "<" to after its ">", or to the end of a text that has none.
struct TagPlace {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Why a body was not read to its end, and the places in it.
struct BodyFailure {
    std::string text;              ///< for a person, as errors of the parser have it
    TagPlace close;                ///< the close tag that matches nothing open
    std::optional<TagPlace> open;  ///< of the innermost aggregate that is open there; nothing: none is
};

/// Parses a body, which lies in `source`, into a tree that shares `source`. Nothing when a close tag
/// matches nothing open; `failure`, unless it is null, then says which.
std::optional<ParseDictionary> parseBody(const Data& source, std::string_view body, BodyFailure* failure);

}  // namespace brackwell::reading
