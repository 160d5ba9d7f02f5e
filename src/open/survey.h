// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "open/content.h"
#include "open/placement.h"
#include "open/written_amounts.h"
#include "open/written_dates.h"

namespace brackwell::opening {

/// What one walk over a tree finds before anything is made of it.
struct Survey {
    ContentCounts found{};   ///< how much of each kind there is, delivered or not; leaves are not counted
    WrittenAmounts amounts;  ///< how the amounts are written
    WrittenDates dates;      ///< how the dates are written
    std::size_t improbableDates = 0;  ///< dates that begin with another year than 1970 to 2100
    Misplaced misplaced;              ///< elements where nobody reads them
};

Survey surveyOf(const reading::Document& document);

/// How many aggregates stand inside each other at most.
std::size_t depthOf(const reading::Document& document);

}  // namespace brackwell::opening
