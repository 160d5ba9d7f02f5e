// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace brackwell::opening {

/// A tag in the text of a document.
struct TagPlace {
    std::string_view
        name;  ///< as it stands in the tag, blanks at its ends aside; "/" before that of a close tag
    std::size_t begin = 0;  ///< of "<"
    std::size_t end = 0;    ///< behind ">"
};

/// The close tag at which a document could not be read further, and the innermost element that was open
/// there.
struct NestingError {
    TagPlace close;
    std::optional<TagPlace> open;
};

/// Walks through the tags of a document, header included, as the parser does, and stops where that
/// stops; nothing for a document that reads. Takes linear time.
std::optional<NestingError> findNestingError(std::string_view document);

}  // namespace brackwell::opening
