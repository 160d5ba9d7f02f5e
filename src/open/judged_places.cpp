// SPDX-License-Identifier: Apache-2.0
#include "open/judged_places.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "elements/roles.h"
#include "elements/structure_tables.h"

namespace brackwell::opening {
namespace {

bool isOneOf(const auto& pairs, const Place& place) noexcept {
    const std::string_view child = elements::nameOf(place.child);
    const std::string_view parent = elements::nameOf(place.parent);
    return std::ranges::any_of(
        pairs, [&](const PlaceNames& pair) { return pair.child == child && pair.parent == parent; });
}

/// The standard allows several; only one is read.
constexpr auto kReadOnce = std::to_array<PlaceNames>(
    {{"BANKACCTINFO", "ACCTINFO"}, {"CCACCTINFO", "ACCTINFO"}, {"INVACCTINFO", "ACCTINFO"}});

/// The standard allows one; each is read as an object of its own.
constexpr auto kReadEach = std::to_array<PlaceNames>({{"STMTTRN", "INVBANKTRAN"}});

/// The standard allows one; the content of all of them is read.
constexpr auto kReadOften = std::to_array<PlaceNames>({{"INVTRANLIST", "INVSTMTRS"},
                                                       {"INVPOSLIST", "INVSTMTRS"},
                                                       {"SECLIST", "SECLISTMSGSRSV1"},
                                                       {"SECLISTMSGSRSV1", "OFX"}});

/// The aggregates whose class reads only the elements that belong there; so do message sets and their
/// profiles. The records of investments are not among them: they find their fields at any depth.
constexpr auto kStrict = std::to_array<std::string_view>({
    "OFX",          "SONRS",        "STATUS",      "FI",           "ACCTINFOTRNRS", "ACCTINFORS",
    "ACCTINFO",     "BANKACCTINFO", "CCACCTINFO",  "INVACCTINFO",  "STMTTRNRS",     "STMTRS",
    "BANKACCTFROM", "BANKTRANLIST", "STMTTRN",     "PAYEE",        "BANKACCTTO",    "CCACCTTO",
    "LEDGERBAL",    "AVAILBAL",     "CCSTMTTRNRS", "CCSTMTRS",     "CCACCTFROM",    "INVSTMTTRNRS",
    "INVSTMTRS",    "INVACCTFROM",  "INVTRANLIST", "INVPOSLIST",   "SECLIST",       "PROFTRNRS",
    "PROFRS",       "MSGSETLIST",   "MSGSETCORE",  "XFERPROF",     "EMAILPROF",     "SIGNONINFOLIST",
    "SIGNONINFO",   "WEBENROLL",    "OTHERENROLL", "CLIENTENROLL", "CURRENCY",      "ORIGCURRENCY",
});

constexpr auto kIsStrict = [] {
    std::array<bool, elements::kElementCount + 1> found{};
    std::size_t element = 0;
    for (const elements::ElementRow& row : elements::kElementRows)
        found[element++] = elements::isMessageSet(row.name) || row.name.find("MSGSET") != row.name.npos;
    for (const std::string_view name : kStrict) found[elements::tables::find(name)] = true;
    return found;
}();

bool isBareResponse(const Place& place) noexcept {
    return elements::isBareResponse(elements::nameOf(place.child), elements::nameOf(place.parent));
}

}  // namespace

bool isStrict(elements::Element parent) noexcept { return kIsStrict[parent]; }

bool standsWhereItIsRead(const Place& place) noexcept {
    if (!isStrict(place.parent) || elements::mayStandIn(place.child, place.parent)) return true;
    return isBareResponse(place) || isOneOf(kReadAnyway, place);
}

bool countsThere(const Place& place) noexcept {
    if (!place.isRepeated) return true;
    if (isOneOf(kReadOnce, place)) return false;
    return elements::mayRepeatIn(place.child, place.parent) || isBareResponse(place) ||
           isOneOf(kReadEach, place);
}

bool isReadOften(const Place& place) noexcept { return isOneOf(kReadOften, place); }

}  // namespace brackwell::opening
