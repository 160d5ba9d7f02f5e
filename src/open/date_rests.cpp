// SPDX-License-Identifier: Apache-2.0
#include "open/date_rests.h"

#include <cstddef>
#include <cstdint>

#include "open/content.h"
#include "open/shown_text.h"
#include "text/ascii_digit.h"

namespace brackwell::opening {
namespace {

std::size_t digitsAtBeginOf(std::string_view text) noexcept {
    std::size_t digits = 0;
    while (digits < text.size() && digitValue(text[digits]) <= 9) ++digits;
    return digits;
}

}  // namespace

bool hasOddRest(std::string_view date) noexcept {
    constexpr std::size_t daySize = 8;
    constexpr std::size_t longest = 14;  // with hours, minutes and seconds
    std::size_t digits = digitsAtBeginOf(date);
    if (digits < daySize) return false;                    // no date of the prescribed form
    if (digits > longest || digits % 2 != 0) return true;  // longer than a time, or half a number
    date.remove_prefix(digits);
    if (date.starts_with('.')) date.remove_prefix(1 + digitsAtBeginOf(date.substr(1)));
    date = trimWhiteSpace(date);
    if (date.empty() || date == "Z") return false;
    return date.front() != '[' || date.find(']') != date.size() - 1;
}

void findDateRests(FindingList& findings, const reading::Document& document, const TreePlaces& places) {
    std::size_t count = 0;
    std::uint32_t first = 0;
    for (std::uint32_t index = 1; index < document.size(); ++index) {
        const reading::Node& node = document.node(index);
        const bool isDate = NameFactsTable::known().contentOf(node.name()) == Content::date;
        if (!isDate || node.isAggregate() || !hasOddRest(document.text(node))) continue;
        if (count++ == 0) first = index;
    }
    if (count == 0) return;  // the survey's test is rougher than this one
    findings.add(FindingKind::doubtfulValue, FindingSeverity::warning,
                 counted(count, "date has text after its day that is not a time and is ignored",
                         "dates have text after their day that is not a time and is ignored") +
                     (count == 1 ? ": " : "; the first is ") + quoted(document.text(document.node(first))) +
                     ".",
                 count, places.offsetOf(first));
}

}  // namespace brackwell::opening
