// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "memory/load_word.h"
#include "open/number_form.h"
#include "open/written_value.h"
#include "text/ascii_digit.h"

namespace brackwell::opening {

using AmountReading = WrittenValue<Decimal>;

/// Reads the amounts of one document as they are written, by the evidence of all of them.
///
/// The prescribed reading takes every comma for a mark between thousands: "-0,99" becomes -99, and with
/// "1.234,56" or "$5.00" it ends with nothing. Here most amounts say themselves what their marks mean
/// (NumberForm), and what stands around a number is understood (withoutFrame). An ambiguous amount, "1,234",
/// is read as the document's others say. When they contradict each other, four times as many outvote the
/// rest. When they say nothing or do not agree, the standard's way holds: a comma groups.
///
/// Two kinds of amounts are doubtful, with the value of the standard's way. Of the first kind are ambiguous
/// ones, when the other amounts do not agree, or when they say nothing and the amount has a comma, which the
/// OFX standard has for a decimal mark, or a currency or the like, which it does not know. Of the second kind
/// are texts that make no sense, or no number that fits, but that the prescribed reading makes a number of,
/// such as "12,34,56": it delivers that number whatever is said of it here, so that the text cannot be called
/// unreadable.
///
/// Show it every amount of the document first, then ask.
class WrittenAmounts {
public:
    /// Takes an amount's text into account. A plain one costs a few instructions for each character.
    void add(std::string_view text) {
        if (isPlain(text)) [[likely]]
            ++points_;
        else
            addOther(text);
    }

    /// True when the prescribed reading is surely right for every amount so far, and so needs no help. Only a
    /// decimal point elsewhere shows that the comma of "1,234" groups.
    bool arePlain() const noexcept { return plain_ && (!haveAmbiguousComma_ || points_ > 0); }

    /// What the text of an amount stands for. Its value is that of the prescribed reading unless it is read
    /// by evidence, or is doubtful.
    AmountReading read(std::string_view text) const;

    /// Reads like this object as it is now, and leaves what the prescribed reading reads rightly to that:
    /// then, and for an unreadable text, it finds nothing. It writes numbers as the standard formatter does.
    std::shared_ptr<const NumberFormatter> formatter() const;

private:
    /// True for a minus at most, digits, a point and two digits, few enough to fit a number: what nearly all
    /// amounts are.
    static bool isPlain(std::string_view text) noexcept {
        constexpr std::size_t longest = 32;
        if (text.size() < 4 || text.size() > longest) return false;
        const char* const end = text.data() + text.size() - 4;
        const char* digit = text.data();
        if (*digit == '-' && digit != end) ++digit;
        for (; end - digit >= 4; digit += 4)
            if (!matches(digit, kZeros)) return false;
        // What is left overlaps the last four bytes, of which the first is a digit.
        return matches(end, kPlainEnd) && matchesFirst(digit, static_cast<unsigned>(end - digit));
    }

    static constexpr std::uint32_t kZeros = 0x30303030;     // "0000"
    static constexpr std::uint32_t kPlainEnd = 0x30302E30;  // "0.00"
    static constexpr std::uint32_t kHighestBits = 0x80808080;

    /// The highest bit of each of four bytes that is not one of the pattern: a digit for a "0", else the
    /// same.
    static constexpr std::uint32_t differences(const char* fourBytes, std::uint32_t pattern) noexcept {
        // What can be added to a byte below 0x80 that is right, and to no other, without setting its highest
        // bit: 0x76 to the value of a digit, 0x7F to nothing.
        const std::uint32_t room = pattern == kZeros ? 0x76767676 : 0x76767F76;
        const std::uint32_t values = loadHalfWord(fourBytes) ^ pattern;
        return (((values & ~kHighestBits) + room) | values) & kHighestBits;
    }
    static constexpr bool matches(const char* fourBytes, std::uint32_t pattern) noexcept {
        return differences(fourBytes, pattern) == 0;
    }
    /// True when the first of four bytes, three at most, are digits.
    static constexpr bool matchesFirst(const char* fourBytes, unsigned count) noexcept {
        return (differences(fourBytes, kZeros) & ((std::uint32_t{1} << 8 * count) - 1)) == 0;
    }

    /// What the amounts so far say of the decimal mark.
    struct Evidence {
        DecimalMark mark;
        bool isClear;  ///< false when there is none, or it is not agreed
    };
    Evidence evidence() const noexcept;
    void addOther(std::string_view text);

    std::size_t points_ = 0;  // amounts that show a decimal point
    std::size_t commas_ = 0;  // amounts that show a decimal comma
    bool plain_ = true;
    bool haveAmbiguousComma_ = false;
};

}  // namespace brackwell::opening
