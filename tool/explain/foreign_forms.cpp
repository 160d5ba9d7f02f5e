// SPDX-License-Identifier: Apache-2.0
#include "explain/foreign_forms.h"

#include <algorithm>

#include "text/display_width.h"
#include "text/visible_text.h"

namespace tool {
namespace {

/// How many texts are of a form, and the first of them.
struct Found {
    std::size_t count = 0;
    std::string first;

    void add(std::string_view text) {
        if (count++ == 0) first = clipped(visibleText(text.substr(0, 80)), 20);
    }
    /// "3 dates such as "31.12.2024""
    std::string text(const std::string& one) const {
        return std::to_string(count) + " " + one + (count == 1 ? ": \"" : "s such as \"") + first + "\"";
    }
};

bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// True for "1.234,56" and "-0,5" when the mark is a comma: one, with too few digits behind it for thousands.
bool hasDecimals(std::string_view text, char mark) noexcept {
    const std::size_t place = text.find(mark);
    if (place == text.npos) return false;
    const std::string_view behind = text.substr(place + 1);
    return !behind.empty() && behind.size() <= 2 && std::ranges::all_of(behind, isDigit);
}

/// True for an amount as OFX writes it, of which the caller's separators make another.
bool isMadeAnother(std::string_view text, const std::optional<brackwell::Decimal>& amount) {
    return hasDecimals(text, '.') && amount && amount != brackwell::Decimal::fromString(text);
}

/// True for digits with marks between them, whatever their order.
bool looksLikeDate(std::string_view text) noexcept {
    const auto isMark = [](char c) { return c == '.' || c == '/' || c == '-'; };
    return !text.empty() && isDigit(text.front()) && std::ranges::count_if(text, isMark) == 2;
}

/// The pattern of a date like "31.12.2024"; one to go by for others.
std::string patternOf(std::string_view date) {
    constexpr std::string_view form = "00.00.0000";
    std::string pattern = "dd.MM.yyyy";
    const bool isLikeIt =
        date.size() == form.size() && date[2] == date[5] && !isDigit(date[2]) &&
        std::ranges::equal(date, form, [](char c, char f) { return f == '.' || isDigit(c); });
    if (!isLikeIt) return pattern;
    if (date.substr(3, 2) > "12") pattern = "MM.dd.yyyy";
    std::ranges::replace(pattern, '.', date[2]);
    return pattern;
}

}  // namespace

std::vector<std::string> explainForms(const brackwell::TvOFXInterpreter& content, const Options& options) {
    Found amounts;
    Found points;
    Found dates;
    for (const auto& response : content.allResponses()) {
        const auto* statement = dynamic_cast<const brackwell::TvOFXAccountStatement*>(response.get());
        if (statement == nullptr) continue;
        for (const auto& transaction : statement->statementTransactions()) {
            const auto& node = transaction->originalParseData();
            const auto amount = node ? (*node)["TRNAMT"].text() : std::nullopt;
            if (amount && hasDecimals(*amount, ',')) amounts.add(*amount);
            if (amount && isMadeAnother(*amount, transaction->amount())) points.add(*amount);
            const auto date = transaction->originalDatePostedString();
            if (date && !transaction->datePosted() && looksLikeDate(*date)) dates.add(*date);
        }
    }
    std::vector<std::string> sentences;
    if (amounts.count > 0 && !options.numberFormatter)
        sentences.push_back(amounts.text("amount") +
                            (amounts.count == 1 ? " has a decimal comma" : " have a decimal comma") +
                            ", which is read wrongly without --decimal-separator ,");
    if (points.count > 0 && options.numberFormatter)
        sentences.push_back(points.text("amount") +
                            (points.count == 1 ? " has a decimal point" : " have a decimal point") +
                            ", which is read wrongly with the separators that are given");
    if (dates.count > 0 && !options.dateFormatter)
        sentences.push_back(dates.text("date") + (dates.count == 1 ? " is" : " are") +
                            " not understood; --date-format says the form, such as " +
                            patternOf(dates.first));
    return sentences;
}

}  // namespace tool
