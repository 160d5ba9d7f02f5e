// SPDX-License-Identifier: Apache-2.0
#include "console/messages.h"

#include <unistd.h>

#include <cstdio>

#include "text/visible_text.h"

namespace tool {

void say(std::string_view subject, std::string_view text) {
    std::string line;
    line.append(subject).append(": ").append(text);
    if (::isatty(STDERR_FILENO) != 0) line = visibleLines(line);
    line += '\n';
    // Where even this cannot be written, there is nobody left to tell.
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace tool
