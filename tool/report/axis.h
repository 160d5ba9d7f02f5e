// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <chrono>
#include <string>
#include <vector>

/// \file
/// Where things stand in a drawing, and what is written beside it.

namespace tool {

/// The nearest binary floating-point number, for drawing only.
double approximate(const brackwell::Decimal& amount) noexcept;

/// A place on an axis, and its label.
struct Tick {
    double value;
    std::string label;
};

/// The range of values that a drawing shows, with round numbers in it.
struct ValueAxis {
    double low;
    double high;
    std::vector<Tick> ticks;

    /// 0 at the low end, 1 at the high one.
    double place(double value) const noexcept { return (value - low) / (high - low); }
};

/// An axis on which these values find room, with two to six ticks. Values far from zero that differ
/// little are shown without zero.
ValueAxis valueAxis(double low, double high);

/// Up to seven days between two, labelled by day, month or year; values are days since 1970.
std::vector<Tick> timeTicks(std::chrono::sys_days first, std::chrono::sys_days last);

}  // namespace tool
