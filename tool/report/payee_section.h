// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "report/report.h"

namespace tool {

class HtmlWriter;

/// What came from and went to each payee of bank and card accounts, a table for each currency: those that got
/// most, and the others folded away.
void writePayees(HtmlWriter& html, const Report& report);

}  // namespace tool
