// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "open/finding_list.h"

namespace brackwell::opening {

/// What says in which encoding a text is.
enum class EncodingOrigin : std::uint8_t {
    mark,   ///< its byte order mark
    bytes,  ///< they are valid in it, and begin a document
    guess,  ///< nothing but its header, or what documents mostly are in
};

/// Adds a finding when a document was read in another text encoding than its header names, or its header
/// names none and the encoding is a guess. `text` is what was read.
void findEncodingDoubts(FindingList& findings, TextEncoding used,
                        const std::optional<ParseDictionary>& header, std::string_view text,
                        EncodingOrigin origin);

}  // namespace brackwell::opening
