// SPDX-License-Identifier: Apache-2.0
#include "system/date_locale.h"

#if __has_include(<langinfo.h>)
#include <langinfo.h>
#include <locale.h>  // NOLINT(modernize-deprecated-headers): newlocale is of POSIX

#include <array>
#include <cerrno>
#include <new>
#include <type_traits>

#include "system/exhausted_memory.h"
#endif

namespace brackwell::system {

#if __has_include(<langinfo.h>)

namespace {

/// The items of a list; shorter ones are filled up with zeros.
using Items = std::array<nl_item, 12>;

constexpr Items kMonths = {MON_1, MON_2, MON_3, MON_4,  MON_5,  MON_6,
                           MON_7, MON_8, MON_9, MON_10, MON_11, MON_12};
constexpr Items kShortMonths = {ABMON_1, ABMON_2, ABMON_3, ABMON_4,  ABMON_5,  ABMON_6,
                                ABMON_7, ABMON_8, ABMON_9, ABMON_10, ABMON_11, ABMON_12};
// Not every C library knows the forms of months that stand alone.
#if defined(ALTMON_1)
constexpr Items kAloneMonths = {ALTMON_1, ALTMON_2, ALTMON_3, ALTMON_4,  ALTMON_5,  ALTMON_6,
                                ALTMON_7, ALTMON_8, ALTMON_9, ALTMON_10, ALTMON_11, ALTMON_12};
#else
constexpr Items kAloneMonths = kMonths;
#endif
#if defined(ALTMON_1) && defined(__GLIBC__)
constexpr Items kShortAloneMonths = {_NL_ABALTMON_1, _NL_ABALTMON_2,  _NL_ABALTMON_3,  _NL_ABALTMON_4,
                                     _NL_ABALTMON_5, _NL_ABALTMON_6,  _NL_ABALTMON_7,  _NL_ABALTMON_8,
                                     _NL_ABALTMON_9, _NL_ABALTMON_10, _NL_ABALTMON_11, _NL_ABALTMON_12};
#else
constexpr Items kShortAloneMonths = kShortMonths;
#endif
constexpr Items kWeekdays = {DAY_1, DAY_2, DAY_3, DAY_4, DAY_5, DAY_6, DAY_7};
constexpr Items kShortWeekdays = {ABDAY_1, ABDAY_2, ABDAY_3, ABDAY_4, ABDAY_5, ABDAY_6, ABDAY_7};
constexpr Items kDayHalves = {AM_STR, PM_STR};

/// In the order of DateNames.
constexpr std::array kItems = {kMonths,   kShortMonths,   kAloneMonths, kShortAloneMonths,
                               kWeekdays, kShortWeekdays, kDayHalves};

static_assert(std::is_pointer_v<locale_t>, "a locale is kept as a pointer");

}  // namespace

DateLocale::DateLocale(const std::string& name) {
    errno = 0;  // not every failure sets it
    handle_ = ::newlocale(LC_TIME_MASK, name.c_str(), locale_t{});
    if (handle_ == nullptr && errno == ENOMEM) failForMemory();
}

DateLocale::~DateLocale() {
    if (isOpen()) ::freelocale(static_cast<locale_t>(handle_));
}

std::string_view DateLocale::name(DateNames list, std::size_t index) const noexcept {
    return ::nl_langinfo_l(kItems[static_cast<std::size_t>(list)][index], static_cast<locale_t>(handle_));
}

#else

DateLocale::DateLocale(const std::string& /*name*/) {}
DateLocale::~DateLocale() = default;
std::string_view DateLocale::name(DateNames /*list*/, std::size_t /*index*/) const noexcept { return {}; }

#endif

}  // namespace brackwell::system
