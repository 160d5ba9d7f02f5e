// SPDX-License-Identifier: Apache-2.0
#include "command_line/day.h"

#include <chrono>
#include <cstddef>

namespace tool {
namespace {

constexpr std::string_view kDayForms[] = {"dddd-dd-dd", "dddddddd"};

/// The digits of a text that has one of the forms; "" for others.
std::string digitsOf(std::string_view text, std::string_view form) {
    if (text.size() != form.size()) return {};
    std::string digits;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (form[i] == 'd' ? !isDigit : text[i] != form[i]) return {};
        if (isDigit) digits += text[i];
    }
    return digits;
}

unsigned digitsAsNumber(std::string_view digits) noexcept {
    unsigned number = 0;
    for (const char c : digits) number = number * 10 + static_cast<unsigned>(c - '0');
    return number;
}

}  // namespace

std::optional<brackwell::Date> dayOf(std::string_view text) {
    for (const std::string_view form : kDayForms) {
        const std::string digits = digitsOf(text, form);
        if (digits.empty()) continue;
        using namespace std::chrono;
        const std::string_view all = digits;
        const year_month_day day(year(static_cast<int>(digitsAsNumber(all.substr(0, 4)))),
                                 month(digitsAsNumber(all.substr(4, 2))),
                                 std::chrono::day(digitsAsNumber(all.substr(6))));
        if (day.ok()) return sys_days(day);
    }
    return std::nullopt;
}

std::string checkDay(const std::string& text) {
    return dayOf(text) ? std::string() : "not a date like 2024-01-31: \"" + text + "\"";
}

}  // namespace tool
