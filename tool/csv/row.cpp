// SPDX-License-Identifier: Apache-2.0
#include "csv/row.h"

#include <algorithm>
#include <chrono>

#include "accounts/account_titles.h"
#include "console/output.h"
#include "csv/written_decimals.h"
#include "text/characters.h"
#include "text/value_text.h"
#include "text/visible_text.h"

namespace tool {
namespace {

/// True when a spreadsheet might take the text for a formula.
bool looksLikeFormula(std::string_view text) {
    if (text.empty() || std::string_view("=+-@\t\r").find(text.front()) == std::string_view::npos)
        return false;
    return !brackwell::DecimalNumberFormatter().numberFromString(text);
}

/// True when a field with this text stands in quotes.
bool needsQuotes(std::string_view text, char delimiter) noexcept {
    return std::ranges::any_of(
        text, [delimiter](char c) { return c == delimiter || c == '"' || c == '\r' || c == '\n'; });
}

void appendQuoted(std::string& quoted, std::string_view text) {
    for (const char c : text) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    quoted += '"';
}

}  // namespace

void Row::beginWith(const Row& other) {
    text_ = other.text_;
    ends_ = other.ends_;
}

void Row::clear() noexcept {
    text_.clear();
    ends_.clear();
}

void Row::add(brackwell::OptionalText field) {
    std::string storage;
    std::string masked;
    begin();
    if (field && !field->empty()) {
        std::string_view text = asUTF8(*field, storage);
        if (!hidden_.empty() && text.find(hidden_) != text.npos)
            text = masked = text == hidden_ ? shown_ : withoutNumber(text, hidden_, shown_);
        addText(text, !layout_.format.isRaw);
    }
    end();
}

void Row::hide(brackwell::OptionalText number, std::string_view shown) {
    hidden_ = number.value_or("");
    shown_ = shown;
}

void Row::add(const std::optional<brackwell::Date>& date) {
    begin();
    if (date) {
        const DateText text(*date);
        const bool isDay = std::chrono::floor<std::chrono::days>(*date) == *date;
        addText(isDay && layout_.format.hasDays ? text.day() : std::string_view(text), false);
    }
    end();
}

void Row::add(const std::optional<brackwell::Decimal>& amount, brackwell::OptionalText written) {
    begin();
    if (amount) {
        const bool isPadded = layout_.format.keepsDecimals && written;
        std::string text = isPadded ? withWrittenDecimals(*amount, *written) : amount->toString();
        std::ranges::replace(text, '.', layout_.format.decimalMark);
        addText(text, false);
    }
    end();
}

void Row::addEmpty(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) add(brackwell::OptionalText());
}

void Row::begin() {
    if (!ends_.empty()) text_ += layout_.format.delimiter;
}

/// What is guarded gets an apostrophe where a spreadsheet might run it.
void Row::addText(std::string_view text, bool isGuarded) {
    const bool isQuoted = needsQuotes(text, layout_.format.delimiter);
    if (isQuoted) text_ += '"';
    if (isGuarded && looksLikeFormula(text)) text_ += '\'';
    if (isQuoted)
        appendQuoted(text_, text);
    else
        text_.append(text);
}

std::string_view Row::field(std::size_t place) const noexcept {
    const std::size_t begin = place == 0 ? 0 : ends_[place - 1] + 1;
    return std::string_view(text_).substr(begin, ends_[place] - begin);
}

void Row::write(Output& output) const {
    std::string chosen;
    for (std::size_t i = 0; i < layout_.places.size(); ++i) {
        if (i > 0) chosen += layout_.format.delimiter;
        chosen.append(field(layout_.places[i]));
    }
    const std::string_view text = layout_.places.empty() ? std::string_view(text_) : chosen;
    if (output.isTerminal())
        output.write(visiblePart(text));
    else
        output.write(text);
    output.write("\r\n");
}

}  // namespace tool
