// SPDX-License-Identifier: Apache-2.0
#include "repair/period.h"

#include <cstddef>
#include <string_view>

namespace brackwell::repair {
namespace {

/// The day of a date, as digits that compare like dates; empty when it is not in OFX format.
std::string_view dayOf(const Tree& tree, NodeID leaf) noexcept {
    constexpr std::size_t kDigits = 8;
    const Stretch& place = tree[leaf].open;
    const std::string_view text = tree.text().substr(place.begin, place.end - place.begin);
    const std::size_t begin = text.find_first_not_of(" \t\r\n", text.find('>') + 1);
    if (begin == text.npos) return {};
    const std::string_view day = text.substr(begin, kDigits);
    const bool isDay = day.size() == kDigits && day.find_first_not_of("0123456789") == day.npos;
    return isDay ? day : std::string_view();
}

}  // namespace

bool widensPeriod(const Tree& tree, NodeID leaf, NodeID other) noexcept {
    const bool isBegin = tree.name(leaf) == "DTSTART";
    if (!isBegin && tree.name(leaf) != "DTEND") return false;
    const std::string_view now = dayOf(tree, leaf);
    const std::string_view was = dayOf(tree, other);
    if (now.empty() || was.empty()) return false;
    return isBegin ? now < was : now > was;
}

}  // namespace brackwell::repair
