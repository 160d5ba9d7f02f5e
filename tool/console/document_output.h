// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "console/output.h"
#include "text/visible_text.h"

namespace tool {

/// Writes a document, or a part of one; on a terminal, so that it can be looked at.
inline void writeDocument(Output& output, std::string_view bytes) {
    if (output.isTerminal())
        output.write(visibleLines(bytes));
    else
        output.write(bytes);
}

}  // namespace tool
