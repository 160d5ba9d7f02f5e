// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include "dates/date_reader.h"
#include "dates/date_writer.h"

namespace brackwell {

DateFormatter::~DateFormatter() = default;

struct PatternDateFormatter::Program {
    std::string pattern;
    std::string locale;
    DateStyle style;
};

PatternDateFormatter::PatternDateFormatter(std::string pattern, TimeZone zone, std::string locale) {
    DatePattern parsed = parseDatePattern(pattern);
    CalendarNames names = loadCalendarNames(locale, parsed.names);
    DateStyle style{std::move(parsed), std::move(names), std::move(zone)};
    program_ =
        std::make_shared<const Program>(Program{std::move(pattern), std::move(locale), std::move(style)});
}

// All copies share what never changes. A move is a copy too, so that every formatter stays usable.
PatternDateFormatter::PatternDateFormatter(const PatternDateFormatter&) = default;
PatternDateFormatter& PatternDateFormatter::operator=(const PatternDateFormatter&) = default;
PatternDateFormatter::PatternDateFormatter(PatternDateFormatter&& other) noexcept
    // NOLINTNEXTLINE(performance-move-constructor-init): a copy, as said above
    : DateFormatter(), program_(other.program_) {}
PatternDateFormatter& PatternDateFormatter::operator=(PatternDateFormatter&& other) noexcept {
    program_ = other.program_;
    return *this;
}
PatternDateFormatter::~PatternDateFormatter() = default;

const std::string& PatternDateFormatter::pattern() const noexcept { return program_->pattern; }
const std::string& PatternDateFormatter::locale() const noexcept { return program_->locale; }
const TimeZone& PatternDateFormatter::timeZone() const noexcept { return program_->style.zone; }

std::optional<Date> PatternDateFormatter::dateFromString(std::string_view text) const {
    return readDate(program_->style, text);
}

std::string PatternDateFormatter::stringFromDate(Date date) const { return writeDate(program_->style, date); }

}  // namespace brackwell
