// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace brackwell::system {

/// What the clocks of this machine show at a moment.
struct LocalClock {
    std::int64_t fromUTC = 0;  ///< seconds
    std::string abbreviation;  ///< of the zone, as "CET"; empty when there is none
};

/// By the zone of the process, which is looked up each time: an application may set TZ, and a machine may
/// travel. UTC where the system cannot tell.
LocalClock localClockAt(std::int64_t secondsSince1970);

/// The folder of the time zone files, unless the environment names another one; empty where a system has
/// none.
const char* zoneFolder() noexcept;

}  // namespace brackwell::system
