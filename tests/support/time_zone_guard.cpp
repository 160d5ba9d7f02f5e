// SPDX-License-Identifier: Apache-2.0
#include "support/time_zone_guard.h"

#include <cstdlib>
#include <ctime>

namespace brackwell::tests {

TimeZoneGuard::TimeZoneGuard(const std::string& zone) {
    if (const char* before = std::getenv("TZ")) before_ = before;
    setenv("TZ", zone.c_str(), 1);
    tzset();
}

TimeZoneGuard::~TimeZoneGuard() {
    if (before_)
        setenv("TZ", before_->c_str(), 1);
    else
        unsetenv("TZ");
    tzset();
}

}  // namespace brackwell::tests
