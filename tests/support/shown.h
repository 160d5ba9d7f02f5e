// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

/// \file
/// Values as texts, so that a comparison that fails shows both sides. Nothing is "nothing".

namespace brackwell::tests {

std::string shown(const OptionalText& text);
std::string shown(const std::optional<Decimal>& number);

/// "2024-01-31 12:00:00.123", always in UTC and with milliseconds.
std::string shown(const std::optional<Date>& date);

/// A moment of UTC.
Date utc(int year, unsigned month, unsigned day, unsigned hour = 0, unsigned minute = 0, unsigned second = 0,
         unsigned millisecond = 0);

}  // namespace brackwell::tests
