// SPDX-License-Identifier: Apache-2.0
#include "console/messages.h"

#include <unistd.h>

#include <cstdio>

#include "text/visible_text.h"

namespace tool {

void say(std::string_view subject, std::string_view text) {
    std::string line;
    line.append(subject).append(": ").append(text).append("\n");
    sayText(line);
}

void sayText(std::string_view lines) {
    const std::string visible = ::isatty(STDERR_FILENO) != 0 ? visibleLines(lines) : std::string(lines);
    // Where even this cannot be written, there is nobody left to tell.
    std::fwrite(visible.data(), 1, visible.size(), stderr);
}

}  // namespace tool
