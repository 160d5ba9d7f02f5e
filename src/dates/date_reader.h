// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <optional>
#include <string_view>

#include "dates/date_style.h"

namespace brackwell {

/// The date that the whole text stands for, or nothing.
///
/// A weekday must be one but need not be the date's. Where fields tell the same twice, each must be valid,
/// and one decides: the day of the year before month and day, the clock of 24 hours before that of 12, an
/// offset before an abbreviation, and of fields of one kind the last. A pattern with an unknown part reads
/// nothing.
///
/// An abbreviation of a zone means what it means in the formatter's own zone, near the date or half a year
/// from it, or else what it means in general. A text without zone is in the formatter's own.
std::optional<Date> readDate(const DateStyle& style, std::string_view text);

}  // namespace brackwell
