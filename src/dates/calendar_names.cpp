// SPDX-License-Identifier: Apache-2.0
#include "dates/calendar_names.h"

#include <brackwell/platform.h>
#include <langinfo.h>
#include <locale.h>  // NOLINT(modernize-deprecated-headers): newlocale is of POSIX

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <new>
#include <span>

#include "text/ascii_case.h"
#include "text/utf8.h"

namespace brackwell {

namespace {

constexpr std::array<std::string_view, 12> kEnglishMonths = {"January",   "February", "March",    "April",
                                                             "May",       "June",     "July",     "August",
                                                             "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> kEnglishWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                              "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 2> kEnglishDayHalves = {"AM", "PM"};

constexpr std::array<nl_item, 12> kMonthItems = {MON_1, MON_2, MON_3, MON_4,  MON_5,  MON_6,
                                                 MON_7, MON_8, MON_9, MON_10, MON_11, MON_12};
constexpr std::array<nl_item, 12> kShortMonthItems = {ABMON_1, ABMON_2,  ABMON_3,  ABMON_4,
                                                      ABMON_5, ABMON_6,  ABMON_7,  ABMON_8,
                                                      ABMON_9, ABMON_10, ABMON_11, ABMON_12};
// Not every C library knows the forms of months that stand alone.
#if defined(ALTMON_1)
constexpr std::array<nl_item, 12> kAloneMonthItems = {ALTMON_1, ALTMON_2,  ALTMON_3,  ALTMON_4,
                                                      ALTMON_5, ALTMON_6,  ALTMON_7,  ALTMON_8,
                                                      ALTMON_9, ALTMON_10, ALTMON_11, ALTMON_12};
#else
constexpr std::array<nl_item, 12> kAloneMonthItems = kMonthItems;
#endif
#if defined(ALTMON_1) && defined(__GLIBC__)
constexpr std::array<nl_item, 12> kShortAloneMonthItems = {
    _NL_ABALTMON_1, _NL_ABALTMON_2, _NL_ABALTMON_3, _NL_ABALTMON_4,  _NL_ABALTMON_5,  _NL_ABALTMON_6,
    _NL_ABALTMON_7, _NL_ABALTMON_8, _NL_ABALTMON_9, _NL_ABALTMON_10, _NL_ABALTMON_11, _NL_ABALTMON_12};
#else
constexpr std::array<nl_item, 12> kShortAloneMonthItems = kShortMonthItems;
#endif
constexpr std::array<nl_item, 7> kWeekdayItems = {DAY_1, DAY_2, DAY_3, DAY_4, DAY_5, DAY_6, DAY_7};
constexpr std::array<nl_item, 7> kShortWeekdayItems = {ABDAY_1, ABDAY_2, ABDAY_3, ABDAY_4,
                                                       ABDAY_5, ABDAY_6, ABDAY_7};
constexpr std::array<nl_item, 2> kDayHalfItems = {AM_STR, PM_STR};

constexpr std::size_t kAllCharacters = 99;  // more than any name has

/// Where the names of a list come from, and how many of their characters make up the list's form.
struct NameSource {
    std::span<const nl_item> items;
    std::size_t characters;
    std::span<const std::string_view> english;
    std::size_t englishCharacters;
};

/// In the order of NameList.
constexpr std::array<NameSource, kNameListCount> kSources = {{
    {kMonthItems, kAllCharacters, kEnglishMonths, kAllCharacters},
    {kShortMonthItems, kAllCharacters, kEnglishMonths, 3},
    {kMonthItems, 1, kEnglishMonths, 1},
    {kAloneMonthItems, kAllCharacters, kEnglishMonths, kAllCharacters},
    {kShortAloneMonthItems, kAllCharacters, kEnglishMonths, 3},
    {kAloneMonthItems, 1, kEnglishMonths, 1},
    {kWeekdayItems, kAllCharacters, kEnglishWeekdays, kAllCharacters},
    {kShortWeekdayItems, kAllCharacters, kEnglishWeekdays, 3},
    {kWeekdayItems, 1, kEnglishWeekdays, 1},
    {kShortWeekdayItems, 2, kEnglishWeekdays, 2},
    {kDayHalfItems, kAllCharacters, kEnglishDayHalves, kAllCharacters},
}};

/// A locale of the C library for the names of dates; closed on every way out.
class Locale {
public:
    explicit Locale(const std::string& name) : handle_(open(name)) {}
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;
    ~Locale() {
        if (isOpen()) ::freelocale(handle_);
    }

    bool isOpen() const noexcept { return handle_ != locale_t{}; }
    std::string_view text(nl_item item) const noexcept { return ::nl_langinfo_l(item, handle_); }

private:
    static locale_t open(const std::string& name) {
        errno = 0;  // not every failure sets it
        const locale_t handle = ::newlocale(LC_TIME_MASK, name.c_str(), locale_t{});
        if (handle == locale_t{} && errno == ENOMEM) throw std::bad_alloc();
        return handle;
    }

    locale_t handle_;
};

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
std::vector<std::string> localNames(const Locale& locale, const NameSource& source) {
    std::vector<std::string> names;
    for (const nl_item item : source.items) {
        // Some languages pad their short names for tables.
        const std::string_view name = trimWhiteSpace(locale.text(item));
        if (name.empty()) return englishNames(source);
        if (!isValidUTF8(name)) return {};
        names.emplace_back(firstCharacters(name, source.characters));
    }
    return names;
}

/// True when the locale exists and has all lists that are wanted.
bool loadFrom(const std::string& name, NameLists wanted, CalendarNames& names) {
    const Locale locale(name);
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
