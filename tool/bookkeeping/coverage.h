// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <chrono>
#include <optional>
#include <vector>

namespace tool {

/// The days of which the statements of an account have the transactions.
class Coverage {
public:
    /// Adds the period of a statement. Without a beginning or an end it is that of the other, or of `asOf`.
    void add(std::optional<brackwell::Date> start, std::optional<brackwell::Date> end,
             std::optional<brackwell::Date> asOf);
    /// To be called after the last period.
    void finish();

    /// True when one period, or several without a gap, reaches from one day to a later one. The day before
    /// and the day after a period count as parts of it: balances are often stated on the morning after.
    bool covers(brackwell::Date from, brackwell::Date to) const;

private:
    struct Days {
        std::chrono::sys_days first;
        std::chrono::sys_days last;
    };
    std::vector<Days> periods_;  ///< after `finish` in order, without overlaps
};

}  // namespace tool
