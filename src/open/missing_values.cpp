// SPDX-License-Identifier: Apache-2.0
#include "open/missing_values.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "open/shown_text.h"

namespace brackwell::opening {
namespace {

using reading::element;
using reading::NameID;

/// An element that a record cannot do without.
struct Required {
    NameID record;
    NameID value;
    std::string_view one;
    std::string_view several;
};
constexpr auto kRequired = std::to_array<Required>({
    {element("STMTTRN"), element("TRNAMT"), "transaction has no amount", "transactions have no amount"},
    {element("STMTTRN"), element("DTPOSTED"), "transaction has no date", "transactions have no date"},
    {element("LEDGERBAL"), element("BALAMT"), "balance has no amount", "balances have no amount"},
    {element("AVAILBAL"), element("BALAMT"), "balance has no amount", "balances have no amount"},
});

bool hasLeaf(const reading::Document& document, std::uint32_t record, NameID value) noexcept {
    for (std::uint32_t at = record + 1; at < document.endOf(record); at = document.endOf(at))
        if (document.node(at).name() == value && !document.node(at).isAggregate()) return true;
    return false;
}

}  // namespace

void findMissingValues(FindingList& findings, const reading::Document& document, const TreePlaces& places) {
    struct Missing {
        std::size_t count = 0;
        std::uint32_t first = 0;
    };
    std::array<Missing, kRequired.size()> missing{};
    for (std::uint32_t index = 1; index < document.size(); ++index) {
        // An empty record is reported as not delivered.
        const reading::Node& node = document.node(index);
        if (!node.isAggregate() || node.size == 0) continue;
        for (std::size_t i = 0; i < kRequired.size(); ++i) {
            if (node.name() != kRequired[i].record || hasLeaf(document, index, kRequired[i].value)) continue;
            if (missing[i].count++ == 0) missing[i].first = index;
        }
    }
    for (std::size_t i = 0; i < kRequired.size(); ++i) {
        const auto& [count, first] = missing[i];
        if (count == 0) continue;
        const std::string name(reading::kElementNames[kRequired[i].value]);
        findings.add(
            FindingKind::missingValue, FindingSeverity::warning,
            counted(count, kRequired[i].one, kRequired[i].several) + ": <" + name + "> is missing or empty.",
            count, places.offsetOf(first));
    }
}

}  // namespace brackwell::opening
