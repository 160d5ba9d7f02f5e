// SPDX-License-Identifier: Apache-2.0
#include "open/written_amounts.h"

#include <brackwell/convert.h>

#include <optional>
#include <string>

#include "open/amount_frame.h"

namespace brackwell::opening {
namespace {

/// Reads an amount by the evidence of its document; nothing where the prescribed reading is as good.
class EvidenceNumberFormatter final : public NumberFormatter {
public:
    explicit EvidenceNumberFormatter(const WrittenAmounts& amounts) noexcept : amounts_(amounts) {}

    std::optional<Decimal> numberFromString(std::string_view text) const override {
        const AmountReading reading = amounts_.read(text);
        return reading.how == ReadingKind::prescribed ? std::nullopt : reading.value;
    }
    std::optional<std::string> stringFromNumber(const Decimal& number) const override {
        return standard_.stringFromNumber(number);
    }

private:
    WrittenAmounts amounts_;
    DecimalNumberFormatter standard_;
};

/// The number that every import without a caller's formatter finds.
std::optional<Decimal> prescribedNumber(std::string_view text) {
    if (const std::optional<Decimal> number = Decimal::fromString(text)) return number;
    return TvOFXHelper::defaultHelper()->ofxAmountFormatter().numberFromString(text);
}

/// An amount taken apart; nothing when it makes no sense.
struct TakenApart {
    NumberForm form;
    bool negative;

    static std::optional<TakenApart> of(std::string_view text) noexcept {
        const std::optional<FramedNumber> inner = withoutFrame(text);
        const std::optional<NumberForm> form = inner ? NumberForm::of(inner->number) : std::nullopt;
        if (!form) return std::nullopt;
        return TakenApart{*form, inner->negative};
    }
    std::optional<Decimal> value(DecimalMark documentMark) const noexcept {
        return form.value(negative, documentMark);
    }
};

/// True when the prescribed reading finds the number that the amount is the standard's way.
bool isReadRightly(std::string_view text, const TakenApart& amount) {
    const std::optional<Decimal> value = amount.value(DecimalMark::point);
    return value && value == prescribedNumber(text);
}

/// True for a minus at most and few enough digits to fit a number. Such amounts say nothing of marks.
bool isWhole(std::string_view text) noexcept {
    if (text.starts_with('-')) text.remove_prefix(1);
    return !text.empty() && text.size() <= Decimal::maximumDigits && beginsWithDigits(text, text.size());
}

}  // namespace

void WrittenAmounts::addOther(std::string_view text) {
    if (isWhole(text)) return;
    const std::optional<TakenApart> amount = TakenApart::of(text);
    if (!amount) {
        plain_ = false;
        return;
    }
    points_ += amount->form.evidence() == DecimalMark::point;
    commas_ += amount->form.evidence() == DecimalMark::comma;
    // A decimal comma counts even where it is harmless, as in "0,00": it decides of others.
    plain_ = plain_ && commas_ == 0 && isReadRightly(text, *amount);
    haveAmbiguousComma_ = haveAmbiguousComma_ || amount->form.hasAmbiguousComma();
}

WrittenAmounts::Evidence WrittenAmounts::evidence() const noexcept {
    constexpr std::size_t enough = 4;
    if (commas_ > 0 && commas_ / enough >= points_) return {DecimalMark::comma, true};
    return {DecimalMark::point, points_ > 0 && points_ / enough >= commas_};
}

AmountReading WrittenAmounts::read(std::string_view text) const {
    if (isPlain(text)) return {Decimal::fromString(text), ReadingKind::prescribed};
    const std::optional<Decimal> prescribed = prescribedNumber(text);
    const std::optional<TakenApart> amount = TakenApart::of(text);
    const auto [mark, isClear] = evidence();
    const std::optional<Decimal> value = amount ? amount->value(mark) : std::nullopt;
    if (!value) return {prescribed, prescribed ? ReadingKind::doubtful : ReadingKind::unreadable};

    const bool isStandard = points_ == 0 && commas_ == 0 && !amount->form.hasAmbiguousComma();
    const bool isPrescribed = value == prescribed;
    if (amount->form.isAmbiguous() && !isClear && !(isStandard && isPrescribed))
        return {value, ReadingKind::doubtful};
    return {value, isPrescribed ? ReadingKind::prescribed : ReadingKind::byEvidence};
}

std::shared_ptr<const NumberFormatter> WrittenAmounts::formatter() const {
    return std::make_shared<const EvidenceNumberFormatter>(*this);
}

}  // namespace brackwell::opening
