// SPDX-License-Identifier: Apache-2.0
#include "repair/likeness.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "text/ascii_case.h"

namespace brackwell::repair {

bool resembles(std::string_view a, std::string_view b) noexcept {
    if (a.size() > b.size()) std::swap(a, b);
    if (a.size() < 3) return equalsIgnoringCase(a, b);
    if (b.starts_with(a) || b.ends_with(a)) return true;
    const auto same = [](char x, char y) { return smallLetter(x) == smallLetter(y); };
    const auto begin = std::ranges::mismatch(a, b, same).in1 - a.begin();
    const auto end = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend(), same).first - a.rbegin();
    return static_cast<std::size_t>(begin + end) + 2 >= b.size();
}

}  // namespace brackwell::repair
