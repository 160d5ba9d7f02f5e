// SPDX-License-Identifier: Apache-2.0
#include "report/plot_frame.h"

#include <string_view>
#include <utility>
#include <vector>

namespace tool {

void beginPlot(HtmlWriter& html, const ValueAxis& axis, std::string_view id) {
    html.write("<div class=\"plot\"><svg class=\"values\" aria-hidden=\"true\" width=\"48\" height=\"{}\">",
               Coordinate{kPlotHeight});
    for (const Tick& tick : axis.ticks)
        html.write("<text class=\"tick last\" x=\"40\" y=\"{}\">{}</text>",
                   Coordinate{plotHeight(axis.place(tick.value)).value + 4}, tick.label);
    html.write(
        "</svg><svg class=\"field\" role=\"img\" width=\"100%\" height=\"{}\" "
        "aria-labelledby=\"{}-title {}-text\">",
        Coordinate{kPlotHeight}, id, id);
}

void writeGrid(HtmlWriter& html, const ValueAxis& axis) {
    for (const Tick& tick : axis.ticks) {
        const Coordinate y = plotHeight(axis.place(tick.value));
        html.write("<line class=\"{}\" x1=\"0\" x2=\"100%\" y1=\"{}\" y2=\"{}\"/>",
                   tick.label == "0" ? "zero" : "grid", y, y);
    }
}

void beginStretched(HtmlWriter& html) {
    html.write("<svg viewBox=\"0 0 {} {}\" preserveAspectRatio=\"none\" width=\"100%\" height=\"{}\">",
               Coordinate{kPlotWidth}, Coordinate{kPlotHeight}, Coordinate{kPlotHeight});
}

void endStretched(HtmlWriter& html) { html.write("</svg>"); }

void endPlot(HtmlWriter& html, const std::vector<Tick>& ticks) {
    bool isShown = true;  // of every two labels a narrow page has room for one only
    for (const Tick& tick : ticks)
        html.write("<text class=\"tick {} {}\" x=\"{}%\" y=\"210\">{}</text>",
                   tick.value > 0.95 ? "last" : "middle", std::exchange(isShown, !isShown) ? "" : "spare",
                   plotPercent(tick.value), tick.label);
    html.write("</svg></div>\n");
}

}  // namespace tool
