// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "convert/digit_pairs.h"
#include "open/written_value.h"

namespace brackwell::opening {

struct SeparatedDate;

using DateReading = WrittenValue<Date>;

/// The order of day and month in the dates of a document.
enum class DateOrder : std::uint8_t {
    dayFirst,
    monthFirst,
    unknown,        ///< no date shows it
    contradictory,  ///< the dates do not agree
};

/// The two days that a date can mean, and what the document's other dates say.
struct EitherDay {
    Date dayFirst;
    Date monthFirst;
    DateOrder order = DateOrder::unknown;

    /// The one that it means; nothing when that is not known.
    std::optional<Date> day() const noexcept {
        if (order == DateOrder::dayFirst) return dayFirst;
        if (order == DateOrder::monthFirst) return monthFirst;
        return std::nullopt;
    }
};

/// Reads the dates of one document as they are written, by the evidence of all of them.
///
/// What the prescribed reading reads keeps that reading: eight digits that are a day, whatever follows them.
/// A date with marks between its numbers (SeparatedDate) is read when it cannot mean anything else. With the
/// year first it is year, month, day. With the year last a number above 12 is the day; where none is, the
/// document's other dates with the same mark say which comes first. When they contradict each other, four
/// times as many outvote the rest, as with amounts; when they say nothing or do not agree, the date is
/// ambiguous. A date in any other form is unreadable, never guessed; so is one with a year of two digits. No
/// date is doubtful in the sense of ReadingKind.
///
/// All dates are UTC. Show it every date of the document first, then ask.
class WrittenDates {
public:
    /// Takes a date's text into account. A plain one costs some twenty instructions.
    void add(std::string_view text) noexcept {
        if (!isPlain(text)) [[unlikely]]
            addOther(text);
    }

    /// True when the prescribed reading is right for every date so far, and so needs no help.
    bool arePlain() const noexcept { return plain_; }

    /// True when the prescribed reading makes a date of some text so far in which no statement lies
    /// (isDoubtful).
    bool areDoubtful() const noexcept { return doubtful_; }

    /// What the text of a date stands for.
    DateReading read(std::string_view text) const noexcept;

    /// The two days that a date can mean whose own numbers do not tell which of them is the day; nothing for
    /// every other text.
    std::optional<EitherDay> eitherDay(std::string_view text) const noexcept;

    /// What the dates with this mark ("/", "-" or ".") and the year last say of their order.
    DateOrder orderWith(char mark) const noexcept;

    /// @{
    /// The dates of one file are written by one program, so where those of one document leave the order of
    /// day and month open, those of all decide. Adds what another document's dates say; true when this
    /// document has dates that `all` of the file decide of, and they alone do not; takes that from all.
    void addOrdersOf(const WrittenDates& other) noexcept;
    bool isHelpedBy(const WrittenDates& all) const noexcept;
    void takeOrdersFrom(const WrittenDates& all) noexcept;
    /// @}

    /// Reads like this object as it is now, and leaves what the prescribed reading reads to that: then, and
    /// for an unreadable text, it finds nothing. It writes dates as "yyyyMMddHHmmss" in UTC.
    std::shared_ptr<const DateFormatter> formatter() const;

private:
    /// True for what nearly all dates begin with: a year from 2000 to 2099, a month, and a day that every
    /// month has.
    static bool isPlain(std::string_view text) noexcept { return beginsWithDay(text, 28); }

    /// The same with days up to this one, in whatever month.
    static bool beginsWithDay(std::string_view text, std::uint8_t lastDay) noexcept {
        if (text.size() < 8) return false;
        // The prescribed reading counts characters, and the rest of one would belong to the last digit.
        if (text.size() > 8 && (static_cast<unsigned char>(text[8]) & 0xC0) == 0x80) return false;
        const std::uint64_t digits = loadWord(text.data());
        return areDigits(digits) &&
               areWithin(pairsOf(digits), sideBySide(20, 0, 1, 1), sideBySide(20, 99, 12, lastDay));
    }

    void addOther(std::string_view text) noexcept;

    /// The dates with one mark that show an order of day and month, and whether there are some that do not.
    struct Orders {
        std::size_t dayFirst = 0;
        std::size_t monthFirst = 0;
        bool haveAmbiguous = false;

        DateOrder order() const noexcept;
        bool areDecided() const noexcept;
    };

    std::array<Orders, 3> orders_;  // by mark
    bool plain_ = true;
    bool doubtful_ = false;
};

/// True for a date outside of the years 1970 to 2100, in which nobody's statement lies.
bool isDoubtful(Date date) noexcept;

}  // namespace brackwell::opening
