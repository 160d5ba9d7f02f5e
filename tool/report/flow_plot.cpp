// SPDX-License-Identifier: Apache-2.0
#include "report/flow_plot.h"

#include <algorithm>

#include "report/amounts.h"
#include "report/month.h"
#include "report/plot_frame.h"
#include "text/shown_values.h"

namespace tool {
namespace {

constexpr int kMostBars = 100;

/// The time that a bar stands for.
struct Unit {
    int months;
    const char* name;
};
constexpr Unit kUnits[] = {{1, "month"}, {12, "year"}, {120, "decade"}, {1200, "century"}};

struct Bar {
    int number = 0;  ///< of its unit, counted from the year 0
    Flow flow;
};

/// The shortest unit of which there are not too many.
const Unit& unitFor(const std::vector<MonthFlow>& months) noexcept {
    const int first = numberOf(months.front().month);
    const int last = numberOf(months.back().month);
    return *std::ranges::find_if(kUnits, [&](const Unit& unit) {
        return last / unit.months - first / unit.months < kMostBars || unit.months == kUnits[3].months;
    });
}

std::vector<Bar> barsOf(const std::vector<MonthFlow>& months, const Unit& unit) {
    std::vector<Bar> bars;
    for (const MonthFlow& month : months) {
        const int number = numberOf(month.month) / unit.months;
        if (bars.empty() || bars.back().number != number) bars.push_back({number, {}});
        bars.back().flow.add(month.flow);
    }
    return bars;
}

std::string barName(int number, const Unit& unit) {
    const auto month = monthOf(number * unit.months);
    if (unit.months == 1) return monthName(month);
    return std::to_string(static_cast<int>(month.year())) + (unit.months == 12 ? "" : "s");
}

double approximateSum(const Sum& sum) noexcept { return sum.value() ? tool::approximate(*sum.value()) : 0; }

/// Where bars stand side by side.
class BarRow {
public:
    explicit BarRow(const std::vector<Bar>& bars)
        : first_(bars.front().number), count_(bars.back().number - first_ + 1) {}

    int count() const noexcept { return count_; }
    int number(int place) const noexcept { return first_ + place; }
    double middle(int number) const noexcept { return (number - first_ + 0.5) / count_; }
    /// Bars that are few do not get wider than a part of the drawing.
    double width() const noexcept { return std::min(0.62 / count_, 0.05); }

private:
    int first_;
    int count_;
};

void writeBar(HtmlWriter& html, const char* kind, double middle, double width, double from, double to) {
    if (from == to) return;
    const double top = plotHeight(std::max(from, to)).value;
    // Never too low to be seen.
    const double height = std::max(plotHeight(std::min(from, to)).value - top, 1.0);
    html.write("<rect class=\"{}\" x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\"/>", kind,
               plotWidth(middle - width / 2), Coordinate{top}, plotWidth(width), Coordinate{height});
}

/// From where to where the bars of a flow go.
struct Range {
    double low;
    double high;
};

Range bothOf(const Flow& flow) noexcept { return {approximateSum(flow.out), approximateSum(flow.in)}; }
Range netOf(const Flow& flow) noexcept {
    const double net = approximateSum(flow.net());
    return {net, net};
}

/// A bar of money in and one of money out, with a mark for the net.
void writeBoth(HtmlWriter& html, const Flow& flow, double middle, double width, const ValueAxis& axis) {
    const double net = axis.place(approximateSum(flow.net()));
    writeBar(html, "in", middle, width, axis.place(0), axis.place(approximateSum(flow.in)));
    writeBar(html, "out", middle, width, axis.place(0), axis.place(approximateSum(flow.out)));
    html.write("<path class=\"net\" d=\"M{} {}h{}\"/>", plotWidth(middle - width * 0.7), plotHeight(net),
               plotWidth(width * 1.4));
}

void writeNet(HtmlWriter& html, const Flow& flow, double middle, double width, const ValueAxis& axis) {
    const double net = approximateSum(flow.net());
    writeBar(html, net < 0 ? "out" : "in", middle, width, axis.place(0), axis.place(net));
}

std::string bothInWords(const Flow& flow, const std::string& currency) {
    return "in " + amountText(flow.in, currency) + ", out " + amountText(flow.out, currency) + ", net " +
           signedAmountText(flow.net(), currency);
}
std::string netInWords(const Flow& flow, const std::string& currency) {
    return amountText(flow.net(), currency);
}

/// What is drawn of flows.
struct Drawing {
    const char* title;  ///< before the name of whose they are
    Range (*range)(const Flow&) noexcept;
    void (*write)(HtmlWriter&, const Flow&, double middle, double width, const ValueAxis&);
    std::string (*inWords)(const Flow&, const std::string& currency);
    bool hasOut;  ///< else there is a net only
};
constexpr Drawing kBoth{"Money in and out of", bothOf, writeBoth, bothInWords, true};
constexpr Drawing kNet{"Income of", netOf, writeNet, netInWords, false};

std::vector<Tick> labelsOf(const BarRow& row, const Unit& unit) {
    std::vector<Tick> labels;
    const int step = (row.count() + 5) / 6;
    for (int place = 0; place < row.count(); place += step)
        labels.push_back({row.middle(row.number(place)), barName(row.number(place), unit)});
    return labels;
}

ValueAxis axisOf(const std::vector<Bar>& bars, const Drawing& drawing) {
    double low = 0;
    double high = 0;
    for (const Bar& bar : bars) {
        const Range range = drawing.range(bar.flow);
        low = std::min(low, range.low);
        high = std::max(high, range.high);
    }
    return valueAxis(low, high);
}

void writeBars(HtmlWriter& html, const std::vector<Bar>& bars, const BarRow& row, const ValueAxis& axis,
               const Unit& unit, const std::string& currency, const Drawing& drawing) {
    beginStretched(html);
    for (const Bar& bar : bars) {
        html.write("<g><title>{}: {}</title>", barName(bar.number, unit),
                   drawing.inWords(bar.flow, currency));
        drawing.write(html, bar.flow, row.middle(bar.number), row.width(), axis);
        html.write("</g>");
    }
    endStretched(html);
}

void describe(HtmlWriter& html, const std::vector<Bar>& bars, const Unit& unit, const std::string& currency,
              std::string_view id, const Drawing& drawing) {
    const auto greatest = [&](auto value) { return std::ranges::max_element(bars, {}, value); };
    const auto in = greatest([&](const Bar& bar) { return drawing.range(bar.flow).high; });
    const auto out = greatest([&](const Bar& bar) { return -drawing.range(bar.flow).low; });
    html.write("<desc id=\"{}-text\">From {} to {}. The most came in during {}: {}.", id,
               barName(bars.front().number, unit), barName(bars.back().number, unit),
               barName(in->number, unit),
               withCurrency(amountText(drawing.hasOut ? in->flow.in : in->flow.net(), currency), currency));
    if (drawing.hasOut)
        html.write(" The most went out during {}: {}.", barName(out->number, unit),
                   withCurrency(amountText(out->flow.out, currency), currency));
    html.write("</desc>");
}

void writePlot(HtmlWriter& html, const std::vector<MonthFlow>& months, const std::string& name,
               const std::string& currency, std::string_view id, const Drawing& drawing) {
    const Unit& unit = unitFor(months);
    const std::vector<Bar> bars = barsOf(months, unit);
    const BarRow row(bars);
    const ValueAxis axis = axisOf(bars, drawing);
    beginPlot(html, axis, id);
    html.write("<title id=\"{}-title\">{} {} by {}</title>", id, drawing.title, name, unit.name);
    describe(html, bars, unit, currency, id, drawing);
    writeGrid(html, axis);
    writeBars(html, bars, row, axis, unit, currency, drawing);
    endPlot(html, labelsOf(row, unit));
}

}  // namespace

void writeFlowPlot(HtmlWriter& html, const std::vector<MonthFlow>& months, const std::string& name,
                   const std::string& currency, std::string_view id) {
    writePlot(html, months, name, currency, id, kBoth);
}

void writeIncomePlot(HtmlWriter& html, const std::vector<MonthFlow>& months, const std::string& name,
                     const std::string& currency, std::string_view id) {
    writePlot(html, months, name, currency, id, kNet);
}

}  // namespace tool
