// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>

#include "lines.h"
#include "target.h"

/// \file
/// Indented text: the lines of the text behind tabs, and nothing else.

void brackwell::fuzz::tryBytes(std::string_view bytes) {
    const std::string pretty = TvOFXHelper::prettyPrintOfxMessageString(bytes);
    require(pretty.ends_with('\n'), "every line gets its line feed");
    Lines lines(pretty);
    Lines wanted(bytes);
    bool isLast = false;
    while (!isLast) {
        isLast = wanted.rest().find('\n') == std::string_view::npos;
        const std::string_view line = wanted.next();
        const std::string_view indented = lines.next();
        require(indented.ends_with(line), "a line stays as it was");
        const std::string_view tabs = indented.substr(0, indented.size() - line.size());
        require(tabs.find_first_not_of('\t') == std::string_view::npos, "only tabs are put before a line");
    }
    require(lines.rest().empty(), "there are as many lines as before");
}
