// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "report/report.h"

namespace tool {

class HtmlWriter;

/// All transactions of all accounts under the filter that the script drives, the newest first unless
/// another order is wanted.
void writeTransactions(HtmlWriter& html, const Report& report);

}  // namespace tool
