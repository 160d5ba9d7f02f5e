// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "report/report.h"

namespace tool {

class HtmlWriter;

/// The whole page.
void writePage(HtmlWriter& html, const Report& report);

}  // namespace tool
