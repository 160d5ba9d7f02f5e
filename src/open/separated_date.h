// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <array>
#include <chrono>
#include <optional>
#include <string_view>

namespace brackwell::opening {

/// A date of three numbers between marks, as people write it, and the time of its day: "30/06/2025",
/// "2025-06-30T14:05:09Z", "30.06.2025 14:05". The year has four digits and comes first or last.
///
/// A time has hours and minutes, perhaps seconds and parts of them, of which those below a millisecond are
/// dropped. A zone after it ("Z", "+02:00", "EST", "[-5:EST]") is applied, but for one in brackets that has
/// only a name which is not known. Midnight stands for the day, in whatever zone: institutions that have no
/// time write it, and their day would become another one.
struct SeparatedDate {
    char mark = '/';                    ///< one of "/", "-" and "."
    bool yearFirst = false;             ///< then the month comes second
    unsigned year = 0;                  ///< any number of four digits
    std::array<unsigned, 2> others{};   ///< day and month in the order of the text; not checked
    std::chrono::milliseconds time{0};  ///< since midnight UTC; below zero on the day before

    /// The date of a text that has no white space at its ends, or nothing.
    static std::optional<SeparatedDate> of(std::string_view text) noexcept;

    /// The date that the numbers stand for in their order; nothing when the calendar has none, or the year
    /// comes first and the order is another.
    std::optional<Date> yearMonthDay() const noexcept;
    /// @copydoc yearMonthDay
    std::optional<Date> dayMonthYear() const noexcept;
    /// @copydoc yearMonthDay
    std::optional<Date> monthDayYear() const noexcept;
};

}  // namespace brackwell::opening
