// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>

#include <memory>
#include <new>
#include <utility>

#include "convert/field_values.h"
#include "convert/ofx_date.h"

namespace brackwell {
namespace {

/// The built-in formatter of every helper, for when its own may be gone.
const DecimalNumberFormatter& builtInAmountFormatter() {
    static const DecimalNumberFormatter kFormatter;
    return kFormatter;
}

}  // namespace

// A formatter of the application's may replace itself, or even the helper, while it is asked. So it is held
// for as long, and nothing of the helper is used after that.

const std::shared_ptr<TvOFXHelper>& TvOFXHelper::defaultHelper() {
    // Never destroyed, so that objects of the application may use it until the process ends.
    static const auto& helper = *new std::shared_ptr<TvOFXHelper>(std::make_shared<TvOFXHelper>());
    return helper;
}

TvOFXHelper::TvOFXHelper()
    : dateFormatters_{PatternDateFormatter("yyyyMMddHHmmss.SSS[ZZZ:zz]"),
                      PatternDateFormatter("yyyyMMddHHmmss[ZZZ:zz]"),
                      PatternDateFormatter("yyyyMMddHHmmss.SSS"), PatternDateFormatter("yyyyMMddHHmmss"),
                      PatternDateFormatter("yyyyMMdd")} {}

void readDate(const TvOFXHelper& helper, std::string_view text, std::optional<Date>& date) {
    if (helper.dateFormatter())
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): see above
        if (const auto held = helper.dateFormatter(); const auto own = held->dateFromString(text)) {
            date = own;
            return;
        }
    readOFXDate(text, date);
}

std::optional<Date> TvOFXHelper::dateFromOFXDateString(TextArgument text) const {
    std::optional<Date> date;
    if (text) readDate(*this, *text, date);
    return date;
}

std::string TvOFXHelper::ofxDateTimeStringFromDate(Date date) {
    // "hh", the hour of the 12-hour clock without AM or PM, is intended. The locale is prescribed; with
    // digits only it makes no difference.
    return PatternDateFormatter("yyyyMMddhhmmss", TimeZone::system(), "de_DE").stringFromDate(date);
}

void readAmount(const TvOFXHelper& helper, std::string_view text, std::optional<Decimal>& amount) {
    if (helper.amountNumberFormatter())
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): see above
        if (const auto held = helper.amountNumberFormatter(); const auto own = held->numberFromString(text)) {
            amount = own;
            return;
        }
    // Whatever this reads, the formatter reads as the same number; it only takes longer. It is made in its
    // place, as an assignment would copy it.
    ::new (&amount) std::optional<Decimal>(Decimal::fromString(text));
    if (!amount) amount = builtInAmountFormatter().numberFromString(text);
}

std::optional<Decimal> TvOFXHelper::decimalNumberFromOFXAmountString(TextArgument text) const {
    std::optional<Decimal> amount;
    if (text) readAmount(*this, *text, amount);
    return amount;
}

std::optional<std::string> TvOFXHelper::ofxAmountStringFromDecimalNumber(
    const std::optional<Decimal>& number) const {
    if (!number) return std::nullopt;
    const Decimal written = *number;  // the caller's own may be changed by the formatter as well
    if (userAmountNumberFormatter_)
        if (const auto held = userAmountNumberFormatter_; auto text = held->stringFromNumber(written))
            return text;
    return builtInAmountFormatter().stringFromNumber(written);
}

void TvOFXHelper::setDateFormatter(std::shared_ptr<const DateFormatter> formatter) noexcept {
    userDateFormatter_ = std::move(formatter);
}

void TvOFXHelper::setAmountNumberFormatter(std::shared_ptr<const NumberFormatter> formatter) noexcept {
    userAmountNumberFormatter_ = std::move(formatter);
}

}  // namespace brackwell
