// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <array>
#include <memory>

#include "convert/digit_pairs.h"
#include "open/written_value.h"

namespace brackwell::opening {

struct SeparatedDate;

using DateReading = WrittenValue<Date>;

/// Reads the dates of one document as they are written, by the evidence of all of them.
///
/// What the prescribed reading reads keeps that reading: eight digits that are a day, whatever follows them.
/// A date with marks between its numbers (SeparatedDate) is read when it cannot mean anything else. With the
/// year first it is year, month, day. With the year last a number above 12 is the day; where none is, the
/// document's other dates with the same mark say which comes first, if they all agree. A date in any other
/// form is unreadable, never guessed; so is one with a year of two digits. No date is doubtful in the sense
/// of ReadingKind.
///
/// All dates are UTC. Show it every date of the document first, then ask.
class WrittenDates {
public:
    /// Takes a date's text into account. A plain one costs some thirty instructions.
    void add(std::string_view text) noexcept {
        if (!isPlain(text)) [[unlikely]]
            addOther(text);
    }

    /// True when the prescribed reading is right for every date so far, and so needs no help.
    bool arePlain() const noexcept { return plain_; }

    /// What the text of a date stands for.
    DateReading read(std::string_view text) const noexcept;

    /// Reads like this object as it is now, and leaves what the prescribed reading reads to that: then, and
    /// for an unreadable text, it finds nothing. It writes dates as "yyyyMMddHHmmss" in UTC.
    std::shared_ptr<const DateFormatter> formatter() const;

private:
    /// True for what nearly all dates begin with: a year from 100 on, a month, and a day that every month
    /// has.
    static bool isPlain(std::string_view text) noexcept {
        if (text.size() < 8) return false;
        // The prescribed reading counts characters, and the rest of one would belong to the last digit.
        if (text.size() > 8 && (static_cast<unsigned char>(text[8]) & 0xC0) == 0x80) return false;
        const auto pairs = fourPairs(text.data());
        if (!pairs) return false;
        const auto [century, year, month, day] = *pairs;
        return century >= 1 && month >= 1 && month <= 12 && day >= 1 &&
               (day <= 28 || (day <= 30 && month != 2));
    }

    void addOther(std::string_view text) noexcept;

    /// The orders of day and month that dates with one mark were seen in.
    struct Orders {
        bool dayFirst = false;
        bool monthFirst = false;
    };
    const Orders& ordersOf(const SeparatedDate& date) const noexcept;

    std::array<Orders, 3> orders_;  // by mark
    bool plain_ = true;
};

/// True for a date outside of the years 1970 to 2100, in which nobody's statement lies.
bool isDoubtful(Date date) noexcept;

}  // namespace brackwell::opening
