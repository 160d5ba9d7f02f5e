// SPDX-License-Identifier: Apache-2.0
#include "history/period.h"

#include "text/value_text.h"

namespace tool {

std::string daysText(const Period& period) {
    const std::string first = dayText(period.first);
    const std::string last = dayText(period.last);
    return first == last ? first : first + " to " + last;
}

}  // namespace tool
