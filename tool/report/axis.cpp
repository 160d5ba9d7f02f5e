// SPDX-License-Identifier: Apache-2.0
#include "report/axis.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

#include "report/month.h"

namespace tool {
namespace {

using namespace std::chrono;

constexpr int kMostTicks = 6;

/// Of the way between two ticks.
constexpr double kNear = 0.4;

/// The smallest of 1, 2 and 5 times a power of ten that is not less.
double roundStep(double step) noexcept {
    const double power = std::pow(10.0, std::floor(std::log10(step)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= step * 0.999) return factor * power;
    return 10 * power;
}

std::string fixed(double value, int decimals) {
    std::array<char, 64> digits;
    const auto [end, failure] = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                              std::chars_format::fixed, decimals);
    return failure == std::errc() ? std::string(digits.data(), end) : std::string();
}

std::string scientific(double value) {
    std::array<char, 32> digits;
    const auto [end, failure] =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::general, 3);
    return {digits.data(), end};
}

/// A round number in a few letters: "1,500", "20k", "1.5M", "0.05", "1e+20".
std::string tickLabel(double value, double step) {
    struct Magnitude {
        double size;
        const char* sign;
    };
    if (std::abs(value) < step / 2) return "0";
    const std::string sign = value < 0 ? "\u2212" : "";
    value = std::abs(value);
    if (value >= 1e15 || step < 1e-6) return sign + scientific(value);
    for (const Magnitude magnitude :
         {Magnitude{1e12, "T"}, Magnitude{1e9, "G"}, Magnitude{1e6, "M"}, Magnitude{1e3, "k"}})
        if (value >= 10 * magnitude.size || (value >= magnitude.size && magnitude.size > 1e3)) {
            const double unitStep = step / magnitude.size;
            const int decimals = std::max(0, -static_cast<int>(std::floor(std::log10(unitStep) + 1e-9)));
            if (decimals <= 2) return sign + fixed(value / magnitude.size, decimals) + magnitude.sign;
        }
    const int decimals = std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
    std::string text = fixed(value, decimals);
    for (std::size_t place = std::min(text.find('.'), text.size()); place > 3;) text.insert(place -= 3, ",");
    return sign + text;
}

std::string dayName(sys_days day) {
    const year_month_day date(day);
    return std::to_string(static_cast<unsigned>(date.day())) + " " +
           monthName(date.year() / date.month()).substr(0, 3);
}

int monthNumber(sys_days day) noexcept {
    const year_month_day date(day);
    return numberOf(date.year() / date.month());
}

std::vector<Tick> dayTicks(sys_days first, sys_days last) {
    const auto count = (last - first).count();
    const std::chrono::days step((count + kMostTicks - 1) / kMostTicks);
    std::vector<Tick> ticks;
    for (sys_days day = first; day <= last; day += std::max(step, std::chrono::days(1)))
        ticks.push_back({static_cast<double>(day.time_since_epoch().count()), dayName(day)});
    return ticks;
}

/// How many months lie between ticks.
int monthStep(int count) noexcept {
    for (const int step : {1, 2, 3, 6, 12, 24, 60, 120, 240, 600, 1200, 2400, 6000, 12000})
        if (count <= step * kMostTicks) return step;
    return 24000;
}

}  // namespace

double approximate(const brackwell::Decimal& amount) noexcept {
    const double coefficient = std::ldexp(static_cast<double>(amount.coefficientHigh()), 64) +
                               static_cast<double>(amount.coefficientLow());
    // Divided by a power of ten where that is one: 12.5 so is 125 / 10, without an error of 0.1's.
    const double value = amount.exponent() < 0 ? coefficient / std::pow(10.0, -amount.exponent())
                                               : coefficient * std::pow(10.0, amount.exponent());
    return amount.isNegative() ? -value : value;
}

ValueAxis valueAxis(double low, double high) {
    const double spread = high - low;
    const double greatest = std::max(std::abs(low), std::abs(high));
    const bool isFlat = spread <= greatest * 1e-9;
    if (low > 0 && (isFlat || spread > greatest * 0.3)) low = 0;
    if (high < 0 && (isFlat || spread > greatest * 0.3)) high = 0;
    if (high == low) high = low + 1;
    const double margin = (high - low) * 0.04;
    if (low != 0) low -= margin;
    if (high != 0) high += margin;
    const double step = roundStep((high - low) / 5);
    // An end that is near to a tick reaches it, so that little stands beyond the last line.
    if (std::ceil(high / step) - high / step < kNear) high = std::ceil(high / step) * step;
    if (low / step - std::floor(low / step) < kNear) low = std::floor(low / step) * step;
    ValueAxis axis{low, high, {}};
    const auto first = std::llround(std::ceil(low / step - 1e-9));
    const auto last = std::llround(std::floor(high / step + 1e-9));
    for (auto number = first; number <= last; ++number) {
        const double value = static_cast<double>(number) * step;
        axis.ticks.push_back({value, tickLabel(value, step)});
    }
    return axis;
}

std::vector<Tick> timeTicks(sys_days first, sys_days last) {
    if (last - first <= std::chrono::days(75)) return dayTicks(first, last);
    const int from = monthNumber(first);
    const int until = monthNumber(last);
    const int step = monthStep(until - from);
    std::vector<Tick> ticks;
    for (int number = (from / step + 1) * step; number <= until; number += step) {
        const year_month month = monthOf(number);
        const double day = static_cast<double>(sys_days(month / 1).time_since_epoch().count());
        ticks.push_back({day, step < 12 ? monthName(month) : std::to_string(number / 12)});
    }
    return ticks;
}

}  // namespace tool
