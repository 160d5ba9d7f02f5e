// SPDX-License-Identifier: Apache-2.0
#include "open/written_dates.h"

#include <array>
#include <chrono>
#include <string>
#include <string_view>

#include "convert/ofx_date.h"
#include "open/separated_date.h"

namespace brackwell::opening {
namespace {

using namespace std::chrono_literals;

/// Reads a date by the evidence of its document; nothing where the prescribed reading is as good.
class EvidenceDateFormatter final : public DateFormatter {
public:
    explicit EvidenceDateFormatter(const WrittenDates& dates) : dates_(dates) {}

    std::optional<Date> dateFromString(std::string_view text) const override {
        const DateReading reading = dates_.read(text);
        return reading.how == ReadingKind::prescribed ? std::nullopt : reading.value;
    }
    std::string stringFromDate(Date date) const override { return standard_.stringFromDate(date); }

private:
    WrittenDates dates_;
    PatternDateFormatter standard_{"yyyyMMddHHmmss"};
};

/// False for a day that its month does not have, and for the 29th of February, which not every year has.
/// Month and day are in range.
bool isInMonth(std::string_view date) noexcept {
    constexpr std::array<int, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const auto number = [date](std::size_t at) { return (date[at] - '0') * 10 + (date[at + 1] - '0'); };
    return number(6) <= days[static_cast<std::size_t>(number(4)) - 1];
}

std::size_t placeOf(char mark) noexcept { return std::string_view("/-.").find(mark); }

}  // namespace

DateOrder WrittenDates::Orders::order() const noexcept {
    // A few mistyped dates must not hide the order of all others, but two orders that are both frequent leave
    // it open.
    constexpr std::size_t enough = 4;
    if (dayFirst + monthFirst == 0) return DateOrder::unknown;
    if (dayFirst / enough >= monthFirst) return DateOrder::dayFirst;
    if (monthFirst / enough >= dayFirst) return DateOrder::monthFirst;
    return DateOrder::contradictory;
}

bool WrittenDates::Orders::areDecided() const noexcept {
    return order() == DateOrder::dayFirst || order() == DateOrder::monthFirst;
}

void WrittenDates::addOther(std::string_view text) noexcept {
    if (beginsWithDay(text, 31) && isInMonth(text)) return;
    if (const std::optional<Date> date = dateFromOFXText(text)) {
        doubtful_ = doubtful_ || isDoubtful(*date);
        return;
    }
    plain_ = false;
    const std::optional<SeparatedDate> date = SeparatedDate::of(trimWhiteSpace(text));
    if (!date) return;
    const std::optional<Date> dayFirst = date->dayMonthYear();
    const std::optional<Date> monthFirst = date->monthDayYear();
    Orders& orders = orders_[placeOf(date->mark)];
    // Only a date that has one meaning shows an order.
    if (dayFirst && monthFirst)
        orders.haveAmbiguous = orders.haveAmbiguous || dayFirst != monthFirst;
    else if (dayFirst)
        ++orders.dayFirst;
    else if (monthFirst)
        ++orders.monthFirst;
}

DateOrder WrittenDates::orderWith(char mark) const noexcept { return orders_[placeOf(mark)].order(); }

std::optional<EitherDay> WrittenDates::eitherDay(std::string_view text) const noexcept {
    if (dateFromOFXText(text)) return std::nullopt;
    const std::optional<SeparatedDate> date = SeparatedDate::of(trimWhiteSpace(text));
    if (!date) return std::nullopt;
    const std::optional<Date> dayFirst = date->dayMonthYear();
    const std::optional<Date> monthFirst = date->monthDayYear();
    if (!dayFirst || !monthFirst || dayFirst == monthFirst) return std::nullopt;
    return EitherDay{*dayFirst, *monthFirst, orderWith(date->mark)};
}

DateReading WrittenDates::read(std::string_view text) const noexcept {
    if (const std::optional<Date> date = dateFromOFXText(text)) return {date, ReadingKind::prescribed};
    std::optional<Date> date;
    if (const std::optional<EitherDay> either = eitherDay(text)) {
        date = either->day();
        return {date, date ? ReadingKind::byEvidence : ReadingKind::ambiguous};
    }
    // No evidence is needed here: every order that gives a date gives the same one.
    text = trimWhiteSpace(text);
    if (const auto separated = SeparatedDate::of(text)) {
        date = separated->yearMonthDay();
        if (!date) date = separated->dayMonthYear();
        if (!date) date = separated->monthDayYear();
    } else {
        date = dateFromOFXText(text);
    }
    return {date, date ? ReadingKind::byEvidence : ReadingKind::unreadable};
}

void WrittenDates::addOrdersOf(const WrittenDates& other) noexcept {
    for (std::size_t mark = 0; mark != orders_.size(); ++mark) {
        orders_[mark].dayFirst += other.orders_[mark].dayFirst;
        orders_[mark].monthFirst += other.orders_[mark].monthFirst;
    }
}

bool WrittenDates::isHelpedBy(const WrittenDates& all) const noexcept {
    for (std::size_t mark = 0; mark != orders_.size(); ++mark)
        if (orders_[mark].haveAmbiguous && !orders_[mark].areDecided() && all.orders_[mark].areDecided())
            return true;
    return false;
}

void WrittenDates::takeOrdersFrom(const WrittenDates& all) noexcept {
    // What a document shows itself counts before what the other documents of its file show.
    for (std::size_t mark = 0; mark != orders_.size(); ++mark)
        if (!orders_[mark].areDecided()) orders_[mark] = all.orders_[mark];
}

std::shared_ptr<const DateFormatter> WrittenDates::formatter() const {
    return std::make_shared<const EvidenceDateFormatter>(*this);
}

bool isDoubtful(Date date) noexcept {
    constexpr Date first{std::chrono::sys_days(1970y / 1 / 1)};
    constexpr Date afterLast{std::chrono::sys_days(2101y / 1 / 1)};
    return date < first || date >= afterLast;
}

}  // namespace brackwell::opening
