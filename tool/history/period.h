// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <algorithm>
#include <optional>

namespace tool {

/// From the first to the last of some dates; of neither when there was none.
struct Period {
    std::optional<brackwell::Date> first;
    std::optional<brackwell::Date> last;

    void include(std::optional<brackwell::Date> date) {
        if (!date) return;
        first = std::min(first.value_or(*date), *date);
        last = std::max(last.value_or(*date), *date);
    }
};

}  // namespace tool
