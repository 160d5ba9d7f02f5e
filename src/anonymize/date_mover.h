// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "open/written_dates.h"

namespace brackwell::anonymizing {

/// Moves the dates of one document by days. Show it every date first, then ask: of "05/06/2025", the others
/// tell which number is the day.
class DateMover {
public:
    explicit DateMover(std::int32_t days) noexcept : days_(days) {}

    bool moves() const noexcept { return days_ != 0; }

    /// Takes a date into account. It has no white space at its ends, here and below.
    void add(std::string_view date) noexcept { dates_.add(date); }

    /// The date so many days later, in its form and as long as it was. Nothing for what is in no form that
    /// the library reads, is no day or an ambiguous one, or would leave the years 1 to 9999 or the room of
    /// its digits: the tenth does not fit in "9.5.2025".
    std::optional<std::string> moved(std::string_view date) const;

private:
    std::int32_t days_;
    opening::WrittenDates dates_;
};

}  // namespace brackwell::anonymizing
