// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace brackwell::tests {

/// Gives the process another time zone for as long as the guard lives.
class TimeZoneGuard {
public:
    explicit TimeZoneGuard(const std::string& zone);
    ~TimeZoneGuard();
    TimeZoneGuard(const TimeZoneGuard&) = delete;
    TimeZoneGuard& operator=(const TimeZoneGuard&) = delete;

private:
    std::optional<std::string> before_;
};

}  // namespace brackwell::tests
