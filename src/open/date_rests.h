// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "convert/digit_pairs.h"
#include "open/finding_list.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// True for a date of which the prescribed reading takes the day and leaves a rest that is neither a time nor
/// a zone: "20250630T120000", "20250606TRNAMT>-20.00".
bool hasOddRest(std::string_view date) noexcept;

/// The same with the frequent cases at hand: a day alone, and a day with a time to the second.
inline bool mayHaveOddRest(std::string_view date) noexcept {
    if (date.size() == 8 || (date.size() == 14 && fourPairs(date.data() + 6))) return false;
    return hasOddRest(date);
}

/// Adds a finding for these dates.
void findDateRests(FindingList& findings, const reading::Document& document, const TreePlaces& places);

}  // namespace brackwell::opening
