// SPDX-License-Identifier: Apache-2.0
#include "text/shown_values.h"

#include <cstddef>
#include <string_view>

#include "money/foreign_amount.h"
#include "text/characters.h"
#include "text/mask.h"
#include "text/value_text.h"

namespace tool {

std::string shownNumber(brackwell::OptionalText number, bool isFull) {
    constexpr std::size_t kept = 4;
    if (!number) return {};
    if (isFull || number->empty()) return std::string(*number);
    std::size_t count = 0;
    for (std::string_view rest = *number; !rest.empty(); ++count)
        rest.remove_prefix(firstCharacter(rest).size);
    std::string shown(kMask);
    if (count <= kept) return shown;
    std::string_view last = *number;
    for (; count > kept; --count) last.remove_prefix(firstCharacter(last).size);
    return shown.append(last);
}

std::string shownDate(std::optional<brackwell::Date> date) {
    if (!date) return {};
    const DateText text(*date);
    std::string shown(text.day());
    if (text.minute() != "00:00") shown.append(" ").append(text.minute());
    return shown;
}

std::string shownPeriod(std::optional<brackwell::Date> start, std::optional<brackwell::Date> end) {
    if (!start) return end ? "to " + shownDate(end) : "";
    return end ? shownDate(start) + " to " + shownDate(end) : "from " + shownDate(start);
}

std::string shownAmount(const brackwell::Decimal& amount, brackwell::OptionalText currency) {
    std::string text = amount.toString();
    const auto least = static_cast<std::size_t>(decimalsOf(currency));
    if (least == 0) return text;
    std::size_t point = text.find('.');
    if (point == std::string::npos) {
        point = text.size();
        text += '.';
    }
    const std::size_t decimals = text.size() - point - 1;
    if (decimals < least) text.append(least - decimals, '0');
    return text;
}

std::string withCurrency(const std::string& amount, brackwell::OptionalText currency) {
    return currency && !currency->empty() ? amount + " " + std::string(*currency) : amount;
}

std::string shownUnits(const std::optional<brackwell::Decimal>& units) {
    return units ? units->toString() : std::string();
}

std::string shownStatus(const brackwell::TvOFXStatus& status) {
    std::string text = std::to_string(status.code());
    if (status.severity()) text.append(" [").append(*status.severity()).append("]");
    if (status.message()) text.append(" ").append(*status.message());
    return text;
}

bool isTrouble(const brackwell::TvOFXStatus* status) {
    if (status == nullptr) return false;
    return status->severity() == "ERROR" || (status->code() != 0 && status->message().value_or("").empty());
}

}  // namespace tool
