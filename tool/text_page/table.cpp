// SPDX-License-Identifier: Apache-2.0
#include "text_page/table.h"

#include <algorithm>
#include <cstddef>

#include "text/display_width.h"
#include "text_page/text_page.h"

namespace tool {
namespace {

constexpr std::size_t kGap = 2;

/// A single cell wider than this does not widen its column for all the others.
constexpr std::size_t kGreatestText = 400;
constexpr std::size_t kGreatestWhole = 24;
constexpr std::size_t kGreatestFraction = 12;

/// How many characters of an amount stand before its decimal point.
std::size_t wholeOf(std::string_view amount) noexcept { return std::min(amount.find('.'), amount.size()); }

void pad(std::string& line, std::size_t count) { line.append(count, ' '); }

void dropBlanksAtEnd(std::string& line) {
    while (line.ends_with(' ')) line.pop_back();
}

std::size_t lack(std::size_t wanted, std::size_t there) noexcept { return wanted - std::min(wanted, there); }

}  // namespace

Table::Table(const std::vector<Column>& columns) {
    for (const Column& column : columns) places_.push_back({column});
}

void Table::measure(const Row& row) {
    for (std::size_t i = 0; i < places_.size(); ++i) {
        Place& place = places_[i];
        if (place.column.kind == Column::Kind::amount) {
            const std::size_t whole = wholeOf(row[i]);
            place.whole = std::max(place.whole, std::min(whole, kGreatestWhole));
            place.fraction = std::max(place.fraction, std::min(row[i].size() - whole, kGreatestFraction));
            place.natural = place.whole + place.fraction;
        } else if (place.natural < kGreatestText) {
            place.natural = std::max(place.natural, std::min(displayWidth(row[i]), kGreatestText));
        }
    }
}

void Table::fit(std::size_t width) {
    for (Place& place : places_) place.isShown = place.natural > 0;
    do {
        setNaturalWidths();
        while (total() > width && narrow()) {
        }
    } while (total() > width && dropOne());
}

std::size_t Table::total() const noexcept {
    std::size_t sum = 0;
    for (const Place& place : places_)
        if (place.isShown) sum += place.width + kGap;
    return lack(sum, kGap);
}

void Table::setNaturalWidths() {
    for (Place& place : places_) place.width = std::max(place.natural, displayWidth(place.column.title));
}

/// Makes the widest column that may be cut narrower by one; false when there is none.
bool Table::narrow() {
    Place* widest = nullptr;
    for (Place& place : places_) {
        const bool canBeCut = place.isShown && place.column.least > 0 && place.width > place.column.least;
        if (canBeCut && (widest == nullptr || place.width > widest->width)) widest = &place;
    }
    if (widest == nullptr) return false;
    --widest->width;
    return true;
}

/// Leaves out the column of least worth; false when only one is left, or none may go.
bool Table::dropOne() {
    Place* least = nullptr;
    for (Place& place : places_) {
        const bool mayGo = place.isShown && place.column.least > 0;
        if (mayGo && (least == nullptr || place.column.worth < least->column.worth)) least = &place;
    }
    if (least == nullptr) return false;
    least->isShown = false;
    return true;
}

std::string Table::cell(const Place& place, const std::string& text, bool hasColour) const {
    std::string cell;
    if (place.column.kind == Column::Kind::text) {
        cell = clipped(text, place.width);
        pad(cell, lack(place.width, displayWidth(cell)));
        return cell;
    }
    const bool isRed = hasColour && text.starts_with('-');
    const std::size_t whole = wholeOf(text);
    pad(cell, lack(place.width - place.fraction, whole));
    cell.append(isRed ? "\x1b[31m" : "").append(text).append(isRed ? "\x1b[0m" : "");
    pad(cell, lack(place.fraction, text.size() - whole));
    return cell;
}

/// The titles of the columns that have a text, but no room: "Number, Memo".
std::string Table::leftOut() const {
    std::string titles;
    for (const Place& place : places_)
        if (place.natural > 0 && !place.isShown && !place.column.title.empty())
            titles.append(titles.empty() ? "" : ", ").append(place.column.title);
    return titles;
}

void Table::writeTitles(TextPage& page) const {
    if (const std::string titles = leftOut(); !titles.empty())
        page.paragraph("Too narrow for: " + titles + ". A wider terminal, or a larger COLUMNS, has room.");
    std::string line;
    for (const Place& place : places_) {
        if (!place.isShown) continue;
        if (!line.empty()) pad(line, kGap);
        const std::string title = clipped(place.column.title, place.width);
        const std::size_t left = lack(place.width, displayWidth(title));
        const bool isRight = place.column.kind == Column::Kind::amount;
        if (isRight) pad(line, left);
        line.append(title);
        if (!isRight) pad(line, left);
    }
    dropBlanksAtEnd(line);
    page.line(line);
}

void Table::writeRow(TextPage& page, const Row& row) const {
    std::string line;
    bool isFirst = true;
    for (std::size_t i = 0; i < places_.size(); ++i) {
        if (!places_[i].isShown) continue;
        if (!isFirst) pad(line, kGap);
        line.append(cell(places_[i], row[i], page.hasColour()));
        isFirst = false;
    }
    dropBlanksAtEnd(line);
    page.line(line);
}

}  // namespace tool
