// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>

#include <utility>

#include "convert/ofx_date.h"

namespace brackwell {

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

std::optional<Date> TvOFXHelper::dateFromOFXDateString(TextArgument text) const {
    if (!text) return std::nullopt;
    if (userDateFormatter_)
        if (const std::optional<Date> date = userDateFormatter_->dateFromString(*text)) return date;
    return dateFromOFXText(*text);
}

std::string TvOFXHelper::ofxDateTimeStringFromDate(Date date) {
    // "hh", the hour of the 12-hour clock without AM or PM, is intended. The locale is prescribed; with
    // digits only it makes no difference.
    return PatternDateFormatter("yyyyMMddhhmmss", TimeZone::system(), "de_DE").stringFromDate(date);
}

std::optional<Decimal> TvOFXHelper::decimalNumberFromOFXAmountString(TextArgument text) const {
    if (!text) return std::nullopt;
    if (userAmountNumberFormatter_)
        if (const std::optional<Decimal> number = userAmountNumberFormatter_->numberFromString(*text))
            return number;
    // Whatever this reads, the formatter reads as the same number; it only takes longer.
    std::optional<Decimal> number = Decimal::fromString(*text);
    if (!number) number = ofxAmountFormatter_.numberFromString(*text);
    return number;
}

std::optional<std::string> TvOFXHelper::ofxAmountStringFromDecimalNumber(
    const std::optional<Decimal>& number) const {
    if (!number) return std::nullopt;
    if (userAmountNumberFormatter_)
        if (std::optional<std::string> text = userAmountNumberFormatter_->stringFromNumber(*number))
            return text;
    return ofxAmountFormatter_.stringFromNumber(*number);
}

void TvOFXHelper::setDateFormatter(std::shared_ptr<const DateFormatter> formatter) noexcept {
    userDateFormatter_ = std::move(formatter);
}

void TvOFXHelper::setAmountNumberFormatter(std::shared_ptr<const NumberFormatter> formatter) noexcept {
    userAmountNumberFormatter_ = std::move(formatter);
}

}  // namespace brackwell
