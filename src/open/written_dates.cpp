// SPDX-License-Identifier: Apache-2.0
#include "open/written_dates.h"

#include <string_view>

#include "convert/ofx_date.h"
#include "open/separated_date.h"

namespace brackwell::opening {
namespace {

using namespace std::chrono_literals;

/// Says what the dates of a document say, and nothing where the prescribed reading is as good.
class EvidenceFormatter final : public DateFormatter {
public:
    explicit EvidenceFormatter(const WrittenDates& dates) : dates_(dates) {}

    std::optional<Date> dateFromString(std::string_view text) const override {
        const DateReading reading = dates_.read(text);
        return reading.how == ReadingKind::prescribed ? std::nullopt : reading.value;
    }
    std::string stringFromDate(Date date) const override { return standard_.stringFromDate(date); }

private:
    WrittenDates dates_;
    PatternDateFormatter standard_{"yyyyMMddHHmmss"};
};

std::size_t placeOf(char mark) noexcept { return std::string_view("/-.").find(mark); }

}  // namespace

const WrittenDates::Orders& WrittenDates::ordersOf(const SeparatedDate& date) const noexcept {
    return orders_[placeOf(date.mark)];
}

void WrittenDates::addOther(std::string_view text) noexcept {
    if (dateFromOFXText(text)) return;
    plain_ = false;
    const std::optional<SeparatedDate> date = SeparatedDate::of(trimWhiteSpace(text));
    if (!date) return;
    const bool canBeDayFirst = date->dayMonthYear().has_value();
    const bool canBeMonthFirst = date->monthDayYear().has_value();
    if (canBeDayFirst == canBeMonthFirst) return;
    Orders& orders = orders_[placeOf(date->mark)];
    (canBeDayFirst ? orders.dayFirst : orders.monthFirst) = true;
}

DateReading WrittenDates::read(std::string_view text) const noexcept {
    if (const std::optional<Date> date = dateFromOFXText(text)) return {date, ReadingKind::prescribed};
    text = trimWhiteSpace(text);
    std::optional<Date> date = dateFromOFXText(text);
    if (const auto separated = SeparatedDate::of(text)) {
        const std::optional<Date> dayFirst = separated->dayMonthYear();
        const std::optional<Date> monthFirst = separated->monthDayYear();
        const Orders& orders = ordersOf(*separated);
        if (separated->yearFirst)
            date = separated->yearMonthDay();
        else if (!dayFirst || !monthFirst || dayFirst == monthFirst)
            date = dayFirst ? dayFirst : monthFirst;
        else if (orders.dayFirst != orders.monthFirst)
            date = orders.dayFirst ? dayFirst : monthFirst;
    }
    return {date, date ? ReadingKind::byEvidence : ReadingKind::unreadable};
}

std::shared_ptr<const DateFormatter> WrittenDates::formatter() const {
    return std::make_shared<const EvidenceFormatter>(*this);
}

bool isDoubtful(Date date) noexcept {
    constexpr Date first{std::chrono::sys_days(1970y / 1 / 1)};
    constexpr Date afterLast{std::chrono::sys_days(2101y / 1 / 1)};
    return date < first || date >= afterLast;
}

}  // namespace brackwell::opening
