// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

#include "repair/edit.h"

namespace brackwell::repair {

/// What comes before the first element of a document, and what must be changed there so that the
/// import recognises the document and finds its header.
struct Front {
    bool isDocument = false;  ///< something that can be an OFX document was found
    std::size_t begin = 0;    ///< of the document, header included
    Edits edits;
};

/// Where what the import recognises begins in a text: after a byte order mark and white space.
std::size_t recognisedBegin(std::string_view text) noexcept;

/// Looks for a document in a text that the import does not recognise.
Front findFront(std::string_view text);

/// Looks at the header of one that it recognises: fields that share a line, or a declaration of XML without
/// the instruction that makes it OFX.
Edits headerEdits(std::string_view text);

/// True for a document of OFX's forerunner: its root is OFC.
bool isOFC(std::string_view text) noexcept;

}  // namespace brackwell::repair
