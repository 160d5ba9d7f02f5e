// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "report/report.h"

namespace tool {

class FindingList;
class HtmlWriter;

/// An investment account: facts, holdings of the latest statement, their kinds, income. Its number is its
/// place among the investment accounts.
void writeInvestment(HtmlWriter& html, const InvestmentFigures& figures, std::size_t number,
                     const FindingList& findings);
/// The securities that no holding or transaction names.
void writeOtherSecurities(HtmlWriter& html, const Report& report);

}  // namespace tool
