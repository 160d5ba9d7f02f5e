// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

#include "report/axis.h"
#include "report/html_writer.h"

/// \file
/// What the drawings of a report have in common.

namespace tool {

/// The inner drawing's width, and the height of both.
inline constexpr double kPlotWidth = 1000;
inline constexpr double kPlotHeight = 220;

/// How far down a place between 0 (lowest) and 1 is.
inline Coordinate plotHeight(double place) noexcept {
    constexpr double top = 18;
    constexpr double bottom = 190;
    return {bottom - place * (bottom - top)};
}

inline Coordinate plotWidth(double place) noexcept { return {place * kPlotWidth}; }
inline Coordinate plotPercent(double place) noexcept { return {place * 100}; }

/// Begins a drawing: labels at the left side, and the field beside them, in which a title and a description
/// are to follow with the drawing's id in theirs.
void beginPlot(HtmlWriter& html, const ValueAxis& axis, std::string_view id);
/// Lines across the field; that of zero is the strongest.
void writeGrid(HtmlWriter& html, const ValueAxis& axis);
/// Begins and ends what stretches with the page.
void beginStretched(HtmlWriter& html);
void endStretched(HtmlWriter& html);
/// Writes the labels below, at places between 0 and 1, and ends the drawing.
void endPlot(HtmlWriter& html, const std::vector<Tick>& ticks);

}  // namespace tool
