// SPDX-License-Identifier: Apache-2.0
#include "system/local_time.h"

#include <time.h>  // NOLINT(modernize-deprecated-headers): localtime_r is of POSIX

#include <utility>

namespace brackwell::system {

#if defined(_WIN32)

LocalClock localClockAt(std::int64_t secondsSince1970) {
    const __time64_t time = secondsSince1970;
    struct tm local = {};
    ::_tzset();
    if (::_localtime64_s(&local, &time) != 0) return {};
    const bool isSummer = local.tm_isdst > 0;
    const __time64_t shown = ::_mkgmtime64(&local);
    return {shown - time, ::_tzname[isSummer ? 1 : 0]};
}

const char* zoneFolder() noexcept { return ""; }

#else

LocalClock localClockAt(std::int64_t secondsSince1970) {
    if (!std::in_range<time_t>(secondsSince1970)) return {};
    const time_t time = secondsSince1970;
    struct tm local = {};
#if !defined(__wasi__)  // which has no other zone than UTC
    ::tzset();
#endif
    if (::localtime_r(&time, &local) == nullptr) return {};
    return {local.tm_gmtoff, local.tm_zone != nullptr ? local.tm_zone : ""};
}

const char* zoneFolder() noexcept { return "/usr/share/zoneinfo"; }

#endif

}  // namespace brackwell::system
