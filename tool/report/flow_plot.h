// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "report/flow.h"

/// \file
/// A drawing as inline SVG. What is drawn stretches with the page while texts keep their size: curves and
/// bars stand in an inner drawing of fixed coordinates, texts at percentages of the outer one.

namespace tool {

class HtmlWriter;

/// Money in and out as bars, by month where these are not too many. `name` says whose; `id` belongs to no
/// other drawing on the page.
void writeFlowPlot(HtmlWriter& html, const std::vector<MonthFlow>& months, const std::string& name,
                   const std::string& currency, std::string_view id);

/// The same of income, of which there is a net only.
void writeIncomePlot(HtmlWriter& html, const std::vector<MonthFlow>& months, const std::string& name,
                     const std::string& currency, std::string_view id);

}  // namespace tool
