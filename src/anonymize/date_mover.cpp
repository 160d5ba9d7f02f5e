// SPDX-License-Identifier: Apache-2.0
#include "anonymize/date_mover.h"

#include <brackwell/anonymize.h>

#include <array>
#include <chrono>
#include <cstddef>

#include "dates/civil_time.h"
#include "open/separated_date.h"
#include "text/ascii_digit.h"

namespace brackwell::anonymizing {
namespace {

using opening::DateOrder;
using opening::SeparatedDate;
using namespace std::chrono;

/// Where the digits of a number stand.
struct Place {
    std::size_t begin = 0;
    std::size_t size = 0;
};

/// The three numbers of a date.
struct DayPlaces {
    Place year;
    Place month;
    Place day;
};

constexpr std::size_t kDigitsOfDay = 8;
constexpr DayPlaces kPlainPlaces{{0, 4}, {4, 2}, {6, 2}};

/// The first three numbers of a text, in its order.
std::array<Place, 3> placesOfNumbers(std::string_view text) noexcept {
    std::array<Place, 3> places;
    std::size_t at = 0;
    for (Place& place : places) {
        while (at < text.size() && !isASCIIDigit(text[at])) ++at;
        place.begin = at;
        while (at < text.size() && isASCIIDigit(text[at])) ++at;
        place.size = at - place.begin;
    }
    return places;
}

unsigned numberAt(std::string_view text, Place place) noexcept {
    unsigned number = 0;
    for (const char c : text.substr(place.begin, place.size)) number = number * 10 + digitValue(c);
    return number;
}

/// False when the number has more digits than the place.
bool writeNumber(std::string& text, Place place, unsigned number) {
    std::string digits;
    appendPadded(digits, number, place.size);
    if (digits.size() != place.size) return false;
    text.replace(place.begin, place.size, digits);
    return true;
}

/// Which number of a date is the day; unknown where nothing tells.
DateOrder orderOf(const SeparatedDate& date, const opening::WrittenDates& dates) noexcept {
    const bool mayBeDayFirst = date.dayMonthYear().has_value();
    const bool mayBeMonthFirst = date.monthDayYear().has_value();
    if (mayBeDayFirst && mayBeMonthFirst) return dates.orderWith(date.mark);
    if (mayBeDayFirst) return DateOrder::dayFirst;
    return mayBeMonthFirst ? DateOrder::monthFirst : DateOrder::unknown;
}

/// Where the numbers of a date stand; nothing for a text in a form that is not known.
std::optional<DayPlaces> dayPlacesOf(std::string_view text, const opening::WrittenDates& dates) noexcept {
    if (beginsWithDigits(text, kDigitsOfDay)) return kPlainPlaces;
    const std::optional<SeparatedDate> date = SeparatedDate::of(text);
    if (!date) return std::nullopt;
    const auto [first, second, third] = placesOfNumbers(text);
    if (date->yearFirst) return DayPlaces{first, second, third};
    const DateOrder order = orderOf(*date, dates);
    if (order == DateOrder::dayFirst) return DayPlaces{third, second, first};
    if (order == DateOrder::monthFirst) return DayPlaces{third, first, second};
    return std::nullopt;
}

}  // namespace

std::optional<std::string> DateMover::moved(std::string_view date) const {
    constexpr std::int32_t most = AnonymizeOptions::mostDays;
    const std::optional<DayPlaces> places = dayPlacesOf(date, dates_);
    if (!places || days_ < -most || days_ > most) return std::nullopt;
    const year_month_day before{year(static_cast<int>(numberAt(date, places->year))),
                                month(numberAt(date, places->month)), day(numberAt(date, places->day))};
    if (!before.ok()) return std::nullopt;
    const year_month_day after{sys_days(before) + days(days_)};
    if (after.year() < year(1) || after.year() > year(9999)) return std::nullopt;
    std::string text(date);
    const bool fits =
        writeNumber(text, places->year, static_cast<unsigned>(static_cast<int>(after.year()))) &&
        writeNumber(text, places->month, static_cast<unsigned>(after.month())) &&
        writeNumber(text, places->day, static_cast<unsigned>(after.day()));
    return fits ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace brackwell::anonymizing
