// SPDX-License-Identifier: Apache-2.0
#include "text/value_text.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace tool {
namespace {

/// Writes a number as so many digits and returns the place after them.
char* writeDigits(char* place, std::int64_t number, int digits) noexcept {
    for (int i = digits; i-- > 0; number /= 10) place[i] = static_cast<char>('0' + number % 10);
    return place + digits;
}

}  // namespace

DateText::DateText(brackwell::Date date) noexcept {
    using namespace std::chrono;
    const auto midnight = floor<days>(date);
    const year_month_day day(midnight);
    const hh_mm_ss time(date - midnight);
    // A caller's zone may move the first or the last day of the calendar out of it.
    char* place = writeDigits(text_.data(), std::clamp(static_cast<int>(day.year()), 0, 9999), 4);
    *place++ = '-';
    place = writeDigits(place, static_cast<unsigned>(day.month()), 2);
    *place++ = '-';
    place = writeDigits(place, static_cast<unsigned>(day.day()), 2);
    *place++ = 'T';
    place = writeDigits(place, time.hours().count(), 2);
    *place++ = ':';
    place = writeDigits(place, time.minutes().count(), 2);
    *place++ = ':';
    place = writeDigits(place, time.seconds().count(), 2);
    *place++ = '.';
    place = writeDigits(place, time.subseconds().count(), 3);
    *place = 'Z';
}

std::string dayText(std::optional<brackwell::Date> date) {
    return date ? std::string(DateText(*date).day()) : std::string();
}

}  // namespace tool
