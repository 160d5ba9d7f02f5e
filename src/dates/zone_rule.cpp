// SPDX-License-Identifier: Apache-2.0
#include "dates/zone_rule.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <limits>
#include <utility>

#include "dates/civil_time.h"
#include "text/ascii_digit.h"

namespace brackwell {

namespace {

/// Takes the parts of a rule off its beginning, one after the other. After a part that does not fit, the
/// whole rule is not good; so the callers check once, at the end.
class RuleText {
public:
    explicit RuleText(std::string_view text) noexcept : rest_(text) {}

    bool isGood() const noexcept { return good_; }
    bool isAtEnd() const noexcept { return rest_.empty(); }

    bool takeIf(char character) noexcept {
        if (!rest_.starts_with(character)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    void take(char character) noexcept { good_ &= takeIf(character); }

    unsigned number(unsigned lowest, unsigned highest) noexcept {
        unsigned value = 0;
        std::size_t count = 0;
        // No number of a rule has more than three digits, so it cannot overflow.
        for (; count < 3 && beginsWithDigits(rest_, 1); ++count, rest_.remove_prefix(1))
            value = value * 10 + digitValue(rest_.front());
        good_ &= count > 0 && value >= lowest && value <= highest;
        return value;
    }

    /// The seconds east of UTC; the notation counts them to the west.
    std::int32_t fromUTC() noexcept {
        constexpr unsigned mostHours = 24;
        return -duration(mostHours);
    }

    /// "1", "-1:30" or "+01:30:15" as seconds.
    std::int32_t duration(unsigned mostHours) noexcept {
        const bool negative = takeIf('-');
        if (!negative) takeIf('+');
        auto seconds = static_cast<std::int32_t>(number(0, mostHours) * 3600);
        for (const int unit : {60, 1}) {
            if (!takeIf(':')) break;
            seconds += static_cast<std::int32_t>(number(0, 59)) * unit;
        }
        return negative ? -seconds : seconds;
    }

    /// Three letters or more; in angle brackets digits and signs are letters too.
    std::string abbreviation() {
        const bool bracketed = takeIf('<');
        const auto isPart = [bracketed](char c) {
            const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
            return letter || (bracketed && (digitValue(c) <= 9 || c == '+' || c == '-'));
        };
        const auto end = std::ranges::find_if_not(rest_, isPart);
        std::string name(rest_.begin(), end);
        rest_.remove_prefix(name.size());
        if (bracketed) take('>');
        good_ &= name.size() >= 3;
        return name;
    }

    YearlyMoment moment() noexcept {
        using Form = YearlyMoment::Form;
        YearlyMoment moment;
        if (takeIf('M')) {
            moment.form = Form::weekday;
            moment.month = number(1, 12);
            take('.');
            moment.week = number(1, 5);
            take('.');
            moment.day = number(0, 6);
        } else if (takeIf('J')) {
            moment.form = Form::dayWithoutLeap;
            moment.day = number(1, 365);
        } else {
            moment.day = number(0, 365);
        }
        constexpr unsigned hoursPerWeek = 7 * 24;
        if (takeIf('/')) moment.time = duration(hoursPerWeek - 1);
        return moment;
    }

private:
    std::string_view rest_;
    bool good_ = true;
};

}  // namespace

std::int64_t YearlyMoment::inYear(int number) const noexcept {
    using namespace std::chrono;
    constexpr unsigned lastWeek = 5;
    constexpr unsigned endOfFebruary = 59;  // the day of the year on which it ends, without a leap day
    const year ofYear(number);
    sys_days date = ofYear / January / 1;
    if (form == Form::weekday) {
        const std::chrono::month inMonth(month);
        const std::chrono::weekday onDay(day);
        date = week == lastWeek ? sys_days(ofYear / inMonth / onDay[last])
                                : sys_days(ofYear / inMonth / onDay[week]);
    } else {
        const bool counted = form == Form::dayFromZero || (ofYear.is_leap() && day > endOfFebruary);
        date += days(day) - days(counted ? 0 : 1);
    }
    return date.time_since_epoch().count() * kSecondsPerDay + time;
}

std::optional<ZoneRule> ZoneRule::parse(std::string_view text) {
    RuleText reader(text);
    ZoneRule rule;
    rule.standard_.abbreviation = reader.abbreviation();
    rule.standard_.fromUTC = reader.fromUTC();
    if (reader.isGood() && !reader.isAtEnd()) {
        Daylight daylight;
        daylight.type.abbreviation = reader.abbreviation();
        const bool isOneHourAhead = reader.takeIf(',');
        daylight.type.fromUTC = isOneHourAhead ? rule.standard_.fromUTC + 3600 : reader.fromUTC();
        if (!isOneHourAhead) reader.take(',');
        daylight.begin = reader.moment();
        reader.take(',');
        daylight.end = reader.moment();
        rule.daylight_ = std::move(daylight);
    }
    if (!reader.isGood() || !reader.isAtEnd()) return std::nullopt;
    return rule;
}

const LocalTimeType& ZoneRule::typeAt(std::int64_t seconds) const noexcept {
    if (!daylight_) return standard_;
    // The calendar repeats after 400 years, so every moment has one like it in the first cycle.
    const std::int64_t moment = floorRemainder(seconds, kDaysPerCycle * kSecondsPerDay);
    const auto year = static_cast<int>(civilTime(Date(std::chrono::seconds(moment)), {}).year);

    // The last change before the moment decides. The time of a change may be up to a week off its day, which
    // puts it into the next year or the one before. A daylight saving time that ends when it begins again
    // goes on.
    const LocalTimeType* type = &standard_;
    std::int64_t latest = std::numeric_limits<std::int64_t>::min();
    for (int candidate = year - 2; candidate <= year + 1; ++candidate) {
        const std::int64_t end = daylight_->end.inYear(candidate) - daylight_->type.fromUTC;
        const std::int64_t begin = daylight_->begin.inYear(candidate) - standard_.fromUTC;
        if (end <= moment && end > latest) {
            latest = end;
            type = &standard_;
        }
        if (begin <= moment && begin >= latest) {
            latest = begin;
            type = &daylight_->type;
        }
    }
    return *type;
}

}  // namespace brackwell
