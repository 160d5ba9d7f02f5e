// SPDX-License-Identifier: Apache-2.0
#include "report/month.h"

namespace tool {

using std::chrono::year_month;

int numberOf(year_month month) noexcept {
    return static_cast<int>(month.year()) * 12 + static_cast<int>(static_cast<unsigned>(month.month())) - 1;
}

year_month monthOf(int number) noexcept {
    return std::chrono::year(number / 12) / std::chrono::month(static_cast<unsigned>(number % 12) + 1);
}

std::string monthName(year_month month) {
    constexpr const char* names[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    return names[static_cast<unsigned>(month.month()) - 1] +
           (" " + std::to_string(static_cast<int>(month.year())));
}

}  // namespace tool
