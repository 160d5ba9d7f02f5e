// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "report/figures.h"

/// \file
/// Drawings as inline SVG. What is drawn stretches with the page while texts keep their size: curves and
/// bars stand in an inner drawing of fixed coordinates, texts at percentages of the outer one.

namespace tool {

class HtmlWriter;

/// The course of an account's balance as a line of steps, with dots for the balances that are stated.
/// `id` belongs to no other drawing on the page.
void writeBalancePlot(HtmlWriter& html, const AccountFigures& figures, std::string_view id);

/// Money in and out as bars, by month where these are not too many. `name` says whose.
void writeFlowPlot(HtmlWriter& html, const std::vector<MonthFlow>& months, const std::string& name,
                   const std::string& currency, std::string_view id);

/// The same of income, of which there is a net only.
void writeIncomePlot(HtmlWriter& html, const std::vector<MonthFlow>& months, const std::string& name,
                     const std::string& currency, std::string_view id);

}  // namespace tool
