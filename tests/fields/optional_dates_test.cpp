// SPDX-License-Identifier: Apache-2.0
#include <brackwell/internal/optional_dates.h>
#include <doctest/doctest.h>

using namespace brackwell;

TEST_CASE("each of several dates is absent until it is set, and again when it is set to nothing") {
    internal::OptionalDates<3> dates;
    for (std::size_t field = 0; field < 3; ++field) CHECK(!dates.get(field));
    dates.set(1, Date());
    CHECK(!dates.get(0));
    CHECK(dates.get(1) == Date());
    CHECK(!dates.get(2));
    dates.set(2, Date::min());
    dates.set(0, Date::max());
    CHECK(dates.get(0) == Date::max());
    CHECK(dates.get(1) == Date());
    CHECK(dates.get(2) == Date::min());
    dates.set(1, std::nullopt);
    CHECK(dates.get(0) == Date::max());
    CHECK(!dates.get(1));
    CHECK(dates.get(2) == Date::min());
}
