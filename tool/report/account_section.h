// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "report/report.h"

namespace tool {

class HtmlWriter;

/// An account: facts, plots, months. Its number is its place in the report.
void writeAccount(HtmlWriter& html, const AccountFigures& figures, std::size_t number, const Report& report);
/// The plot and the months of all accounts in a currency.
void writeCurrency(HtmlWriter& html, const CurrencyFigures& figures, std::size_t number);

}  // namespace tool
