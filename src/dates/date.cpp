// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include "dates/civil_time.h"

namespace brackwell {

Date currentDate() { return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now()); }

std::string dateDescription(Date date) {
    const CivilTime civil = civilTime(date, std::chrono::seconds(0));
    std::string text;
    const auto append = [&text](char before, unsigned number) {
        text += before;
        appendPadded(text, number, 2);
    };
    appendYear(text, civil.year, 4);
    append('-', civil.month);
    append('-', civil.day);
    append(' ', civil.hour);
    append(':', civil.minute);
    append(':', civil.second);
    return text + " +0000";
}

}  // namespace brackwell
