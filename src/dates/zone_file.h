// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "dates/zone_rule.h"

/// \file
/// The rules of one zone as files of the format TZif (RFC 9636) hold them: moments at which clocks
/// changed, and a yearly rule for the time after them.

namespace brackwell {

struct ZoneFile {
    struct Change {
        std::int64_t time;  ///< seconds of UTC from 1970 on
        std::uint8_t type;  ///< index into `types`
    };
    std::vector<Change> changes;       ///< ascending
    std::vector<LocalTimeType> types;  ///< at least one; the first holds before all changes
    std::optional<ZoneRule> rule;      ///< holds after all changes

    /// How clocks go at a moment, in seconds of UTC from 1970 on.
    const LocalTimeType& typeAt(std::int64_t seconds) const noexcept;
};

/// Nothing when the bytes are not exactly such a file, or when it counts leap seconds, which the dates of
/// this library do not have.
std::optional<ZoneFile> parseZoneFile(std::string_view text);

/// The zone of this name below the folder that the variable TZDIR names, or below the system's own.
/// Nothing when there is no such file, or when the name could lead out of that folder.
std::optional<ZoneFile> loadZoneFile(std::string_view name);

}  // namespace brackwell
