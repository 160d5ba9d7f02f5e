// SPDX-License-Identifier: Apache-2.0
#include "open/amount_frame.h"

#include <brackwell/platform.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/ascii_case.h"
#include "text/ascii_digit.h"
#include "text/utf8.h"

namespace brackwell::opening {
namespace {

/// A text at either end of an amount that shows whether it is negative.
struct SignText {
    std::string_view text;
    bool negative;
};

/// The plus, and what people write for a minus: hyphens, the figure and the en dash, U+2212.
constexpr std::array<SignText, 7> kSignTexts = {{{"-", true},
                                                 {"+", false},
                                                 {"\u2212", true},
                                                 {"\u2010", true},
                                                 {"\u2011", true},
                                                 {"\u2012", true},
                                                 {"\u2013", true}}};

/// Credit and debit.
constexpr std::array<SignText, 4> kSideTexts = {{{"CR", false}, {"Cr", false}, {"DR", true}, {"Dr", true}}};

/// Abbreviations of currencies; of two with the same beginning the longer one comes first.
constexpr std::array<std::string_view, 27> kCurrencyWords = {"kr.",
                                                             "kr",
                                                             "Kr.",
                                                             "Kr",
                                                             "KR",
                                                             "z\u0142",
                                                             "Z\u0141",
                                                             "K\u010D",
                                                             "Ft",
                                                             "Fr.",
                                                             "Fr",
                                                             "SFr.",
                                                             "SFr",
                                                             "Rs.",
                                                             "Rs",
                                                             "RM",
                                                             "Rp.",
                                                             "Rp",
                                                             "S/.",
                                                             "S/",
                                                             "\u043B\u0432.",
                                                             "\u043B\u0432",
                                                             "\u0440.",
                                                             "\u0440\u0443\u0431.",
                                                             "\u0440\u0443\u0431",
                                                             "lei",
                                                             "Lei"};

/// The signs of currencies outside of the block U+20A0 to U+20CF, but for the dollar and the cent, which is
/// no whole unit.
constexpr std::array<char32_t, 10> kCurrencySigns = {0xA3,   0xA4,   0xA5,   0x060B, 0x09F3,
                                                     0x0E3F, 0x17DB, 0xFDFC, 0xFFE1, 0xFFE5};

constexpr std::size_t kCodeLength = 3;

bool isCurrencySign(char32_t character) noexcept {
    return (character >= 0x20A0 && character <= 0x20CF) ||
           std::ranges::find(kCurrencySigns, character) != kCurrencySigns.end();
}

/// The operations on a text that differ between its front and its back.
struct Front {
    static constexpr bool hasText(std::string_view rest, std::string_view text) noexcept {
        return rest.starts_with(text);
    }
    static constexpr void remove(std::string_view& rest, std::size_t size) noexcept {
        rest.remove_prefix(size);
    }
    static constexpr char at(std::string_view rest, std::size_t i) noexcept { return rest[i]; }
    static UTF8Character character(std::string_view rest) noexcept { return firstCharacter(rest); }
};

struct Back {
    static constexpr bool hasText(std::string_view rest, std::string_view text) noexcept {
        return rest.ends_with(text);
    }
    static constexpr void remove(std::string_view& rest, std::size_t size) noexcept {
        rest.remove_suffix(size);
    }
    static constexpr char at(std::string_view rest, std::size_t i) noexcept {
        return rest[rest.size() - 1 - i];
    }
    static UTF8Character character(std::string_view rest) noexcept { return lastCharacter(rest); }
};

/// How many capitals are at an end; counting stops at one more than a code has.
template <class End>
std::size_t capitalsAt(std::string_view rest) noexcept {
    std::size_t count = 0;
    while (count < rest.size() && count <= kCodeLength && isASCIICapital(End::at(rest, count))) ++count;
    return count;
}

/// Takes one thing after the other off the ends of an amount, and remembers what it has taken.
class Frame {
public:
    explicit Frame(std::string_view amount) noexcept : rest_(amount) {}

    std::optional<FramedNumber> numberInside() noexcept {
        while (takeFromFront()) continue;
        while (takeFromBack()) continue;
        if (opened_ != closed_) return std::nullopt;  // one parenthesis without the other
        return FramedNumber{rest_, negative_};
    }

private:
    bool takeFromFront() noexcept {
        if (beginsWithDigits(rest_, 1)) return false;
        rest_ = trimWhiteSpace(rest_);
        return takeSign<Front>(kSignTexts) || takeOpening() || takeCode<Front>() || takeDollarAtFront() ||
               takeCurrency<Front>();
    }

    bool takeFromBack() noexcept {
        if (!rest_.empty() && digitValue(rest_.back()) <= 9) return false;
        rest_ = trimWhiteSpace(rest_);
        return takeSignAtBack() || takeClosing() || takeCode<Back>() || takeSide() || takeDollarAtBack() ||
               takeCurrency<Back>();
    }

    template <class End, class Texts>
    bool takeSign(const Texts& texts) noexcept {
        if (signed_) return false;
        const auto found =
            std::ranges::find_if(texts, [this](const SignText& s) { return End::hasText(rest_, s.text); });
        if (found == texts.end()) return false;
        End::remove(rest_, found->text.size());
        negative_ = found->negative;
        return signed_ = true;
    }

    /// The dash of "5.-" and "5,-" replaces the cents and is not a sign.
    bool takeSignAtBack() noexcept {
        const Frame before = *this;
        if (!takeSign<Back>(kSignTexts)) return false;
        const std::string_view number = trimWhiteSpace(rest_);
        if (!number.ends_with('.') && !number.ends_with(',')) return true;
        *this = before;
        return false;
    }

    /// "CR" and "DR" count as whole words only: IDR is a currency.
    bool takeSide() noexcept {
        const bool isWord = rest_.size() > 2 && !isASCIICapital(Back::at(rest_, 2));
        return isWord && takeSign<Back>(kSideTexts);
    }

    bool takeOpening() noexcept {
        if (signed_ || !rest_.starts_with('(')) return false;
        rest_.remove_prefix(1);
        return negative_ = signed_ = opened_ = true;
    }

    bool takeClosing() noexcept {
        if (!opened_ || closed_ || !rest_.ends_with(')')) return false;
        rest_.remove_suffix(1);
        return closed_ = true;
    }

    template <class End>
    bool takeCode() noexcept {
        if (hasCode_ || capitalsAt<End>(rest_) != kCodeLength) return false;
        End::remove(rest_, kCodeLength);
        return hasCode_ = true;
    }

    /// "$", or with the letters of a country before it: "R$", "US$".
    bool takeDollarAtFront() noexcept {
        const std::size_t letters = capitalsAt<Front>(rest_);
        if (hasCurrency_ || letters >= kCodeLength || !rest_.substr(letters).starts_with('$')) return false;
        rest_.remove_prefix(letters + 1);
        return hasCurrency_ = true;
    }

    bool takeDollarAtBack() noexcept {
        if (hasCurrency_ || !rest_.ends_with('$')) return false;
        rest_.remove_suffix(1);
        const std::size_t letters = capitalsAt<Back>(rest_);
        if (letters < kCodeLength) rest_.remove_suffix(letters);
        return hasCurrency_ = true;
    }

    template <class End>
    bool takeCurrency() noexcept {
        if (hasCurrency_ || rest_.empty()) return false;
        const auto word = std::ranges::find_if(
            kCurrencyWords, [this](std::string_view text) { return End::hasText(rest_, text); });
        const UTF8Character character = End::character(rest_);
        if (word != kCurrencyWords.end()) {
            End::remove(rest_, word->size());
        } else if (character.size > 0 && isCurrencySign(character.value)) {
            End::remove(rest_, character.size);
        } else {
            return false;
        }
        return hasCurrency_ = true;
    }

    std::string_view rest_;
    bool negative_ = false;
    bool signed_ = false;
    bool opened_ = false;
    bool closed_ = false;
    bool hasCode_ = false;
    bool hasCurrency_ = false;
};

}  // namespace

std::optional<FramedNumber> withoutFrame(std::string_view amount) noexcept {
    return Frame(amount).numberInside();
}

}  // namespace brackwell::opening
