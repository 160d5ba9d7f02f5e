// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

#include "text/value_text.h"

namespace tool {

/// A day of a book in four bytes.
using BookDay = std::chrono::sys_time<std::chrono::duration<std::int32_t, std::chrono::days::period>>;

/// The first of some dates that is of a day which all formats have, from the year 1400 on; nothing when none
/// is.
std::optional<BookDay> firstBookDay(std::initializer_list<std::optional<brackwell::Date>> dates);

/// @{
/// "2024-01-31"; "" for nothing.
inline std::string bookDayText(std::optional<BookDay> day) { return dayText(day); }
inline std::string firstBookDayText(std::initializer_list<std::optional<brackwell::Date>> dates) {
    return bookDayText(firstBookDay(dates));
}
/// @}

}  // namespace tool
