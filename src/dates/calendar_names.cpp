// SPDX-License-Identifier: Apache-2.0
#include "dates/calendar_names.h"

#include <brackwell/platform.h>

#include <algorithm>
#include <cstdlib>
#include <span>

#include "system/date_locale.h"
#include "text/ascii_case.h"
#include "text/utf8.h"

namespace brackwell {

namespace {

using system::DateLocale;
using system::DateNames;

constexpr std::array<std::string_view, 12> kEnglishMonths = {"January",   "February", "March",    "April",
                                                             "May",       "June",     "July",     "August",
                                                             "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> kEnglishWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                              "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 2> kEnglishDayHalves = {"AM", "PM"};

constexpr std::size_t kAllCharacters = 99;  // more than any name has

/// Where the names of a list come from, and how many of their characters make up the list's form.
struct NameSource {
    DateNames names;
    std::size_t characters;
    std::span<const std::string_view> english;
    std::size_t englishCharacters;
};

/// In the order of NameList.
constexpr std::array<NameSource, kNameListCount> kSources = {{
    {DateNames::months, kAllCharacters, kEnglishMonths, kAllCharacters},
    {DateNames::shortMonths, kAllCharacters, kEnglishMonths, 3},
    {DateNames::months, 1, kEnglishMonths, 1},
    {DateNames::aloneMonths, kAllCharacters, kEnglishMonths, kAllCharacters},
    {DateNames::shortAloneMonths, kAllCharacters, kEnglishMonths, 3},
    {DateNames::aloneMonths, 1, kEnglishMonths, 1},
    {DateNames::weekdays, kAllCharacters, kEnglishWeekdays, kAllCharacters},
    {DateNames::shortWeekdays, kAllCharacters, kEnglishWeekdays, 3},
    {DateNames::weekdays, 1, kEnglishWeekdays, 1},
    {DateNames::shortWeekdays, 2, kEnglishWeekdays, 2},
    {DateNames::dayHalves, kAllCharacters, kEnglishDayHalves, kAllCharacters},
}};

/// The name of the process's own locale, as the C library finds it. The library is not asked: it knows only
/// what setlocale() was last given.
std::string processLocale() {
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0') return value;
    }
    return "C";
}

/// "de_DE@euro" becomes "de_DE.UTF-8@euro": the same language, with names that need no conversion.
std::string inUTF8(const std::string& locale) {
    const std::size_t place = std::min(locale.find_first_of(".@"), locale.size());
    const std::size_t rest = std::min(locale.find('@', place), locale.size());
    return locale.substr(0, place) + ".UTF-8" + locale.substr(rest);
}

std::vector<std::string> englishNames(const NameSource& source) {
    std::vector<std::string> names;
    for (const std::string_view name : source.english)
        names.emplace_back(firstCharacters(name, source.englishCharacters));
    return names;
}

/// The names of one list; none when one of them is not UTF-8.
std::vector<std::string> localNames(const DateLocale& locale, const NameSource& source) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i != source.english.size(); ++i) {
        // Some languages pad their short names for tables.
        const std::string_view name = trimWhiteSpace(locale.name(source.names, i));
        if (name.empty()) return englishNames(source);
        if (!isValidUTF8(name)) return {};
        names.emplace_back(firstCharacters(name, source.characters));
    }
    return names;
}

/// True when the locale exists and has all lists that are wanted.
bool loadFrom(const std::string& name, NameLists wanted, CalendarNames& names) {
    const DateLocale locale(name);
    if (!locale.isOpen()) return false;
    for (std::size_t i = 0; i < kNameListCount; ++i) {
        if (!wanted[i]) continue;
        names.lists[i] = localNames(locale, kSources[i]);
        if (names.lists[i].empty()) return false;
    }
    return true;
}

}  // namespace

CalendarNames loadCalendarNames(const std::string& locale, NameLists wanted) {
    CalendarNames names;
    if (wanted.none()) return names;
    const std::string& name = locale.empty() ? processLocale() : locale;
    if (loadFrom(name, wanted, names) || loadFrom(inUTF8(name), wanted, names)) return names;
    for (std::size_t i = 0; i < kNameListCount; ++i)
        if (wanted[i]) names.lists[i] = englishNames(kSources[i]);
    return names;
}

NameMatch findName(std::string_view text, const std::vector<std::string>& names) noexcept {
    NameMatch match;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::size_t size = names[i].size();
        // The longest one counts: "June" and not "Jun".
        if (size < match.size || !equalsIgnoringCase(text.substr(0, size), names[i])) continue;
        match = {i, size, size == match.size};
    }
    return match;
}

}  // namespace brackwell
