// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "open/content.h"
#include "open/identifier_order.h"
#include "open/placement.h"
#include "open/written_amounts.h"
#include "open/written_dates.h"

namespace brackwell::opening {

/// What one walk over a tree finds before anything is made of it.
struct Survey {
    ContentCounts found{};   ///< how much of each kind there is, delivered or not; leaves are not counted
    WrittenAmounts amounts;  ///< how the amounts are written
    WrittenDates dates;      ///< how the dates are written
    IdentifierOrder identifiers;  ///< of transactions, statement by statement
    Misplaced misplaced;          ///< elements where nobody reads them

    /// True when no statement has two transactions with one identifier. Where statements stand in each other,
    /// or something else stands where it should not, nothing is known.
    bool hasDistinctIdentifiers() const noexcept { return identifiers.areInOrder() && !misplaced.areAny(); }
    /// What transactions and balances have less of than they must, or more: amounts and dates. 0 when each
    /// has its own.
    std::ptrdiff_t required = 0;
    bool hasDateRests = false;  ///< a date has something after its day that is no time
    bool isOdd = false;         ///< there may be elements that no class reads, which only an accounting shows
};

Survey surveyOf(const reading::Document& document);

/// How many aggregates stand inside each other at most.
std::size_t depthOf(const reading::Document& document);

}  // namespace brackwell::opening
