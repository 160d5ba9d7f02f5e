// SPDX-License-Identifier: Apache-2.0
#include "report/balance_plot.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "history/history.h"
#include "report/amounts.h"
#include "report/plot_frame.h"
#include "text/shown_values.h"
#include "text/value_text.h"

namespace tool {
namespace {

using std::chrono::sys_days;

/// Into how many strips a long course is cut. Each keeps its first, lowest, highest and last balance, which
/// is as much as can be seen.
constexpr std::size_t kStrips = 120;
constexpr std::size_t kMostDots = 60;

struct Place {
    double x;  ///< both between 0 and 1
    double y;
};

/// The range of days and balances of a course.
class Frame {
public:
    explicit Frame(const std::vector<BalancePoint>& points)
        : first_(points.front().day),
          length_(static_cast<double>((points.back().day - first_).count())),
          axis_(axisOf(points)) {}

    const ValueAxis& axis() const noexcept { return axis_; }
    double time(double day) const noexcept {
        return (day - static_cast<double>(first_.time_since_epoch().count())) / length_;
    }
    Place place(sys_days day, const brackwell::Decimal& amount) const noexcept {
        return {time(static_cast<double>(day.time_since_epoch().count())), axis_.place(approximate(amount))};
    }

private:
    static ValueAxis axisOf(const std::vector<BalancePoint>& points) {
        const auto [low, high] = std::ranges::minmax(points, {}, &BalancePoint::amount);
        return valueAxis(approximate(low.amount), approximate(high.amount));
    }

    sys_days first_;
    double length_;  ///< at least a day, since a course begins on the day before its first transaction
    ValueAxis axis_;
};

/// The few places of a strip that matter, in their order.
void addStrip(std::vector<Place>& thinned, const std::vector<Place>& strip) {
    const auto [lowest, highest] = std::ranges::minmax_element(strip, {}, &Place::y);
    std::vector kept{strip.begin(), lowest, highest, strip.end() - 1};
    std::ranges::sort(kept);
    kept.erase(std::unique(kept.begin(), kept.end()), kept.end());
    for (const auto place : kept) thinned.push_back(*place);
}

std::vector<Place> placesOf(const std::vector<BalancePoint>& points, const Frame& frame) {
    std::vector<Place> places;
    places.reserve(points.size());
    for (const BalancePoint& point : points) places.push_back(frame.place(point.day, point.amount));
    if (places.size() <= 4 * kStrips) return places;
    std::vector<Place> thinned;
    std::vector<Place> strip;
    const auto stripOf = [](const Place& place) { return std::floor(place.x * kStrips); };
    for (const Place& place : places) {
        if (!strip.empty() && stripOf(place) != stripOf(strip.back())) {
            addStrip(thinned, strip);
            strip.clear();
        }
        strip.push_back(place);
    }
    addStrip(thinned, strip);
    return thinned;
}

/// The outline: level until the next place, then up or down.
void writeSteps(HtmlWriter& html, const std::vector<Place>& places) {
    html.write("M{} {}", plotWidth(places.front().x), plotHeight(places.front().y));
    for (const Place& place : places) html.write("H{}V{}", plotWidth(place.x), plotHeight(place.y));
}

void writeCurve(HtmlWriter& html, const std::vector<Place>& places, const ValueAxis& axis) {
    beginStretched(html);
    if (axis.low <= 0 && axis.high >= 0) {
        html.write("<path class=\"area\" d=\"");
        writeSteps(html, places);
        html.write("V{}H{}Z\"/>", plotHeight(axis.place(0)), plotWidth(places.front().x));
    }
    html.write("<path class=\"line\" d=\"");
    writeSteps(html, places);
    html.write("\"/>");
    endStretched(html);
}

/// "1,234.50 EUR on 2025-01-31"
std::string pointText(const BalancePoint& point, const std::string& currency) {
    return withCurrency(amountText(point.amount, currency), currency) + " on " + dayText(point.day);
}

void writeDots(HtmlWriter& html, const std::vector<StatedBalance>& stated, const Frame& frame,
               const std::string& currency) {
    const std::size_t first = stated.size() - std::min(stated.size(), kMostDots);
    for (std::size_t i = first; i < stated.size(); ++i) {
        const Place place = frame.place(stated[i].day(), stated[i].amount);
        html.write("<circle class=\"dot\" cx=\"{}%\" cy=\"{}\" r=\"4\"><title>{}</title></circle>",
                   plotPercent(place.x), plotHeight(place.y),
                   "Stated balance: " + pointText({stated[i].day(), stated[i].amount}, currency));
    }
}

void writeDescription(HtmlWriter& html, const std::vector<BalancePoint>& points,
                      const AccountFigures& figures, std::string_view id) {
    const std::string& currency = figures.history->currency;
    const auto [low, high] = std::ranges::minmax(points, {}, &BalancePoint::amount);
    html.write("<title id=\"{}-title\">Balance of {} over time</title>", id, figures.name.text());
    html.write("<desc id=\"{}-text\">From {} to {}; lowest {}, highest {}.</desc>", id,
               pointText(points.front(), currency), pointText(points.back(), currency),
               pointText(low, currency), pointText(high, currency));
}

}  // namespace

void writeBalancePlot(HtmlWriter& html, const AccountFigures& figures, std::string_view id) {
    const std::vector<BalancePoint>& points = figures.balance.points;
    const Frame frame(points);
    std::vector<Tick> ticks = timeTicks(points.front().day, points.back().day);
    for (Tick& tick : ticks) tick.value = frame.time(tick.value);
    beginPlot(html, frame.axis(), id);
    writeDescription(html, points, figures, id);
    writeGrid(html, frame.axis());
    writeCurve(html, placesOf(points, frame), frame.axis());
    writeDots(html, figures.balance.confirmed, frame, figures.history->currency);
    endPlot(html, ticks);
}

}  // namespace tool
