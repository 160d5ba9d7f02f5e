// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "report/report.h"

namespace tool {

class HtmlWriter;

/// A table of the accounts, when there are several, with sums by currency.
void writeOverview(HtmlWriter& html, const Report& report);

}  // namespace tool
