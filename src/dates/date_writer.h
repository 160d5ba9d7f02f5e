// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <string>

#include "dates/date_style.h"

namespace brackwell {

/// The date as text. The year before 1 is written as 0, and those before it with a minus sign.
std::string writeDate(const DateStyle& style, Date date);

}  // namespace brackwell
