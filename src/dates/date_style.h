// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include "dates/calendar_names.h"
#include "dates/date_pattern.h"

namespace brackwell {

/// What a pattern is read and written with.
struct DateStyle {
    DatePattern pattern;
    CalendarNames names;
    TimeZone zone;
};

}  // namespace brackwell
