// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace brackwell::opening {

/// The mark between whole units and their fractions.
enum class DecimalMark : std::uint8_t { unknown, point, comma };

/// How a number without sign is written: digits, with marks between them.
///
/// Points and commas group digits or stand before the fraction. Blanks and apostrophes, in their many forms,
/// only group. What a mark does follows from the number itself:
///
///     1.234,56   1,234.56   of two marks the last is the decimal one
///     0,99   1,2345         one with one, two or more than three digits after it is the decimal one
///     0,125   1234.567      so is one after a lone zero or after more than three digits
///     1.234.567             one that repeats groups
///     1,234   1.234         either: such a number is ambiguous
///
/// Groups have three digits, the first one three at most; or, with commas, as in India, all but the last have
/// two. A number whose groups are others has no form, nor has one with another character.
class NumberForm {
public:
    /// The form of the whole text, or nothing.
    static std::optional<NumberForm> of(std::string_view text) noexcept;

    /// The decimal mark that this number shows its document to have.
    DecimalMark evidence() const noexcept { return evidence_; }

    /// True when the number is one in a document with a decimal point and another one with a decimal comma.
    bool isAmbiguous() const noexcept { return ambiguous_; }

    /// True for such a number with a comma. The OFX standard has it for a decimal mark, and the prescribed
    /// reading for one that groups.
    bool hasAmbiguousComma() const noexcept { return ambiguous_ && mark_ == DecimalMark::comma; }

    /// The number. Only an ambiguous one asks for the document's mark. Nothing when it does not fit exactly.
    std::optional<Decimal> value(bool negative, DecimalMark documentMark) const noexcept;

private:
    struct Marks;
    bool isWellFormed(const Marks& marks) const noexcept;

    std::string_view integer_;  // with its grouping marks
    std::string_view fraction_;
    std::string_view exponent_;  // from the "e" on
    DecimalMark mark_ = DecimalMark::unknown;
    DecimalMark evidence_ = DecimalMark::unknown;
    bool ambiguous_ = false;
};

}  // namespace brackwell::opening
