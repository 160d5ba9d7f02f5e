// SPDX-License-Identifier: Apache-2.0
#include "open/number_form.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "numbers/decimal_digits.h"
#include "text/ascii_digit.h"

namespace brackwell::opening {
namespace {

enum class Mark : std::uint8_t { none, point, comma, blank, apostrophe };

struct MarkText {
    std::string_view text;
    Mark mark;
};

/// Blanks are the space, the no-break, figure, thin and narrow no-break space.
constexpr std::array<MarkText, 9> kMarkTexts = {{{".", Mark::point},
                                                 {",", Mark::comma},
                                                 {" ", Mark::blank},
                                                 {"\u00A0", Mark::blank},
                                                 {"\u2007", Mark::blank},
                                                 {"\u2009", Mark::blank},
                                                 {"\u202F", Mark::blank},
                                                 {"'", Mark::apostrophe},
                                                 {"\u2019", Mark::apostrophe}}};

/// Takes a mark off the beginning of the text.
Mark takeMark(std::string_view& text) noexcept {
    for (const auto& [bytes, mark] : kMarkTexts) {
        if (!text.starts_with(bytes)) continue;
        text.remove_prefix(bytes.size());
        return mark;
    }
    return Mark::none;
}

/// Takes the digits off the beginning of the text and says how many there were.
std::size_t takeDigits(std::string_view& text) noexcept {
    const auto end = std::ranges::find_if(text, [](char c) { return digitValue(c) > 9; });
    const auto count = static_cast<std::size_t>(end - text.begin());
    text.remove_prefix(count);
    return count;
}

/// True for digits without marks, or with marks of one kind between groups: of three digits, or, as in India,
/// of two before the last three.
bool isGroupedWell(std::string_view integer) noexcept {
    const std::size_t first = takeDigits(integer);
    if (integer.empty()) return true;
    const Mark group = takeMark(integer);
    std::size_t last = takeDigits(integer);
    bool inThrees = first >= 1 && first <= 3 && last == 3;
    bool inTwos = first >= 1 && first <= 2 && group == Mark::comma;
    while (!integer.empty()) {
        if (takeMark(integer) != group) return false;
        inTwos = inTwos && last == 2;
        last = takeDigits(integer);
        inThrees = inThrees && last == 3;
    }
    return inThrees || (inTwos && last == 3);
}

/// True for an exponent, and for an empty text.
bool isExponent(std::string_view text) noexcept {
    DecimalDigits().takeExponent(text, Signs::withMinusSign);
    return text.empty();
}

}  // namespace

/// What one pass over the text finds.
struct NumberForm::Marks {
    std::size_t points = 0;
    std::size_t commas = 0;
    std::size_t others = 0;
    std::size_t lastPoint = 0;
    std::size_t lastComma = 0;
    std::size_t end = 0;  // of the digits and marks

    explicit Marks(std::string_view text) noexcept {
        std::string_view rest = text;
        for (;;) {
            takeDigits(rest);
            end = text.size() - rest.size();
            if (rest.empty()) return;
            switch (takeMark(rest)) {
                case Mark::point:
                    ++points;
                    lastPoint = end;
                    break;
                case Mark::comma:
                    ++commas;
                    lastComma = end;
                    break;
                case Mark::none:
                    return;
                default:
                    ++others;
            }
        }
    }

    std::size_t all() const noexcept { return points + commas + others; }
    /// Of two different marks the last is the decimal one, and so is a single one; one that repeats groups.
    DecimalMark decimalMark() const noexcept {
        if (points > 0 && commas > 0) return lastPoint > lastComma ? DecimalMark::point : DecimalMark::comma;
        if (points + commas != 1) return DecimalMark::unknown;
        return points == 1 ? DecimalMark::point : DecimalMark::comma;
    }
    /// What a number without decimal mark shows: the mark that groups is not the decimal one.
    DecimalMark otherThanGrouping() const noexcept {
        if (points + commas == 0) return DecimalMark::unknown;
        return points > 0 ? DecimalMark::comma : DecimalMark::point;
    }
};

std::optional<NumberForm> NumberForm::of(std::string_view text) noexcept {
    const Marks marks(text);
    NumberForm form;
    form.mark_ = marks.decimalMark();
    form.exponent_ = text.substr(marks.end);
    if (form.mark_ == DecimalMark::unknown) {
        form.integer_ = text.substr(0, marks.end);
        form.evidence_ = marks.otherThanGrouping();
    } else {
        const std::size_t place = form.mark_ == DecimalMark::point ? marks.lastPoint : marks.lastComma;
        form.integer_ = text.substr(0, place);
        form.fraction_ = text.substr(place + 1, marks.end - place - 1);
        form.ambiguous_ = marks.all() == 1 && form.fraction_.size() == 3 && !form.integer_.empty() &&
                          form.integer_.size() <= 3 && form.integer_ != "0" && form.exponent_.empty();
        const bool isBare = marks.all() == 1 && form.fraction_.empty();
        if (!form.ambiguous_ && !isBare) form.evidence_ = form.mark_;
    }
    if (!form.isWellFormed(marks)) return std::nullopt;
    return form;
}

bool NumberForm::isWellFormed(const Marks& marks) const noexcept {
    if (integer_.empty() && fraction_.empty()) return false;
    // Digits only: no mark follows the decimal one.
    if (!beginsWithDigits(fraction_, fraction_.size()) || !isGroupedWell(integer_)) return false;
    // Scientific notation is that of the standard.
    return exponent_.empty() || (isExponent(exponent_) && marks.points == marks.all());
}

std::optional<Decimal> NumberForm::value(bool negative, DecimalMark documentMark) const noexcept {
    DecimalDigits digits;
    for (std::string_view rest = integer_; !rest.empty(); takeMark(rest)) digits.takeInteger(rest);
    std::string_view fraction = fraction_;
    if (ambiguous_ && mark_ != documentMark)
        digits.takeInteger(fraction);
    else
        digits.takeFraction(fraction);
    std::string_view exponent = exponent_;
    digits.takeExponent(exponent, Signs::withMinusSign);
    return digits.number(negative);
}

}  // namespace brackwell::opening
