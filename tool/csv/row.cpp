// SPDX-License-Identifier: Apache-2.0
#include "csv/row.h"

#include <algorithm>

#include "console/output.h"
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
bool needsQuotes(std::string_view text) noexcept {
    return std::ranges::any_of(text, [](char c) { return c == ',' || c == '"' || c == '\r' || c == '\n'; });
}

}  // namespace

void Row::add(brackwell::OptionalText field) {
    separate();
    if (!field || field->empty()) return;
    std::string storage;
    const std::string_view text = asUTF8(*field, storage);
    const bool isQuoted = needsQuotes(text);
    if (isQuoted) text_ += '"';
    if (looksLikeFormula(text)) text_ += '\'';
    if (isQuoted)
        addQuoted(text);
    else
        text_.append(text);
}

void Row::add(const std::optional<brackwell::Date>& date) {
    separate();
    if (date) text_.append(DateText(*date));
}

void Row::add(const std::optional<brackwell::Decimal>& amount) {
    separate();
    if (amount) text_.append(amount->toString());
}

void Row::separate() {
    if (!text_.empty()) text_ += ',';
}

void Row::addQuoted(std::string_view text) {
    for (const char c : text) {
        if (c == '"') text_ += '"';
        text_ += c;
    }
    text_ += '"';
}

void Row::write(Output& output) const {
    if (output.isTerminal())
        output.write(visiblePart(text_));
    else
        output.write(text_);
    output.write("\r\n");
}

}  // namespace tool
