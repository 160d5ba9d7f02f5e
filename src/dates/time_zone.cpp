// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include <algorithm>

#include "dates/civil_time.h"
#include "dates/zone_file.h"
#include "dates/zone_text.h"
#include "system/local_time.h"

namespace brackwell {

struct TimeZone::Rules {
    ZoneFile file;
};

TimeZone TimeZone::fixed(std::chrono::seconds offset) noexcept {
    constexpr std::chrono::seconds largest(kSecondsPerDay - 1);
    TimeZone zone;
    zone.offset_ = std::clamp(offset, -largest, largest);
    return zone;
}

TimeZone TimeZone::system() noexcept {
    TimeZone zone;
    zone.kind_ = Kind::system;
    return zone;
}

std::optional<TimeZone> TimeZone::named(std::string_view name) {
    std::optional<ZoneFile> file = loadZoneFile(name);
    if (!file) return std::nullopt;
    TimeZone zone;
    zone.kind_ = Kind::file;
    zone.rules_ = std::make_shared<const Rules>(Rules{std::move(*file)});
    return zone;
}

TimeZone::Offset TimeZone::offsetAt(Date date) const {
    if (kind_ == Kind::system) {
        const system::LocalClock clock = system::localClockAt(secondsOf(date));
        return {std::chrono::seconds(clock.fromUTC), clock.abbreviation};
    }
    if (kind_ == Kind::file) {
        const LocalTimeType& type = rules_->file.typeAt(secondsOf(date));
        return {std::chrono::seconds(type.fromUTC), type.abbreviation};
    }
    if (offset_.get() == std::chrono::seconds(0)) return {};
    return {offset_, shortOffsetName(offset_)};
}

Date TimeZone::fromLocal(std::chrono::local_time<std::chrono::milliseconds> local) const {
    // Two days short of what a Date holds, so that no offset leads out of it.
    using std::chrono::milliseconds;
    constexpr std::chrono::days margin(2);
    const Date shown(
        std::clamp(local.time_since_epoch(), milliseconds::min() + margin, milliseconds::max() - margin));
    if (kind_ == Kind::fixed) return shown - offset_.get();

    // Clocks of all zones go for days between two changes, so at most one is near: the offset that holds
    // before or the one after it is in force. When clocks go back, the larger one leads to the earlier of
    // two moments. When they go forward, and skip what is looked for, neither leads to itself; the one
    // before the gap, which then is the smaller, leads just as far past it.
    constexpr std::chrono::seconds reach(kZoneOffsetLimit);
    const auto [smaller, larger] =
        std::minmax({offsetAt(shown - reach).fromUTC, offsetAt(shown + reach).fromUTC});
    const Date earlier = shown - larger;
    return offsetAt(earlier).fromUTC == larger ? earlier : shown - smaller;
}

}  // namespace brackwell
