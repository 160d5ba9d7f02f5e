// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "report/figures.h"

/// \file
/// A drawing as inline SVG. What is drawn stretches with the page while texts keep their size: curves and
/// bars stand in an inner drawing of fixed coordinates, texts at percentages of the outer one.

namespace tool {

class HtmlWriter;

/// The course of an account's balance as a line of steps, with dots for the balances that are stated.
/// `id` belongs to no other drawing on the page.
void writeBalancePlot(HtmlWriter& html, const AccountFigures& figures, std::string_view id);

}  // namespace tool
