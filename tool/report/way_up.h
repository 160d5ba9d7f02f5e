// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "report/html_writer.h"

namespace tool {

/// The end of a section of a long page.
inline void writeWayUp(HtmlWriter& html) {
    html.write("<p class=\"up\"><a href=\"#top\">Back to top</a></p>\n");
}

}  // namespace tool
