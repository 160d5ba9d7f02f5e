// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "investments/records.h"

/// \file
/// Which aggregates are objects, and of which class and kind.

namespace brackwell::investments {

struct RecordName {
    NameID element;
    RecordType type;
    std::uint8_t kind = 0;  ///< the number of the class's enumerator, if it has kinds
};

template <class Kind>
consteval RecordName recordName(std::string_view element, RecordType type, Kind kind) {
    return {reading::element(element), type, static_cast<std::uint8_t>(kind)};
}
consteval RecordName recordName(std::string_view element, RecordType type) {
    return {reading::element(element), type};
}

inline constexpr auto kRecordNames = [] {
    using Type = RecordType;
    using Kind = InvestmentTransactionKind;
    return std::to_array<RecordName>({
        recordName("BUYDEBT", Type::transaction, Kind::buyDebt),
        recordName("BUYMF", Type::transaction, Kind::buyFund),
        recordName("BUYOPT", Type::transaction, Kind::buyOption),
        recordName("BUYOTHER", Type::transaction, Kind::buyOther),
        recordName("BUYSTOCK", Type::transaction, Kind::buyStock),
        recordName("CLOSUREOPT", Type::transaction, Kind::optionClosure),
        recordName("INCOME", Type::transaction, Kind::income),
        recordName("INVEXPENSE", Type::transaction, Kind::expense),
        recordName("JRNLFUND", Type::transaction, Kind::journalFund),
        recordName("JRNLSEC", Type::transaction, Kind::journalSecurity),
        recordName("MARGININTEREST", Type::transaction, Kind::marginInterest),
        recordName("REINVEST", Type::transaction, Kind::reinvestment),
        recordName("RETOFCAP", Type::transaction, Kind::returnOfCapital),
        recordName("SELLDEBT", Type::transaction, Kind::sellDebt),
        recordName("SELLMF", Type::transaction, Kind::sellFund),
        recordName("SELLOPT", Type::transaction, Kind::sellOption),
        recordName("SELLOTHER", Type::transaction, Kind::sellOther),
        recordName("SELLSTOCK", Type::transaction, Kind::sellStock),
        recordName("SPLIT", Type::transaction, Kind::split),
        recordName("TRANSFER", Type::transaction, Kind::transfer),
        recordName("INVBANKTRAN", Type::transaction, Kind::bankTransaction),
        recordName("POSDEBT", Type::position, PositionKind::debt),
        recordName("POSMF", Type::position, PositionKind::fund),
        recordName("POSOPT", Type::position, PositionKind::option),
        recordName("POSOTHER", Type::position, PositionKind::other),
        recordName("POSSTOCK", Type::position, PositionKind::stock),
        recordName("INVBAL", Type::balance),
        recordName("BAL", Type::listedBalance),
        recordName("INV401K", Type::plan),
        recordName("LOANINFO", Type::loan),
        recordName("YEARTODATE", Type::period),
        recordName("INCEPTTODATE", Type::period),
        recordName("INCEPTODATE", Type::period),
        recordName("PERIODTODATE", Type::period),
        recordName("INV401KBAL", Type::amounts),
        recordName("CONTRIBUTIONS", Type::amounts),
        recordName("WITHDRAWALS", Type::amounts),
        recordName("EARNINGS", Type::amounts),
        recordName("DEBTINFO", Type::security, SecurityKind::debt),
        recordName("MFINFO", Type::security, SecurityKind::fund),
        recordName("OPTINFO", Type::security, SecurityKind::option),
        recordName("OTHERINFO", Type::security, SecurityKind::other),
        recordName("STOCKINFO", Type::security, SecurityKind::stock),
        recordName("PORTION", Type::portion),
        recordName("FIPORTION", Type::portion),
    });
}();

/// The index of a name in kRecordNames; its size when the aggregate is not an object.
inline constexpr auto kRecordNameOfElement = [] {
    std::array<std::uint8_t, reading::kKnownElementCount> rows{};
    rows.fill(kRecordNames.size());
    std::uint8_t row = 0;
    for (const RecordName& name : kRecordNames) rows[name.element] = row++;
    return rows;
}();

/// What an aggregate is; null when it is no object.
constexpr const RecordName* recordNamed(NameID name) noexcept {
    if (name >= reading::kKnownElementCount || kRecordNameOfElement[name] == kRecordNames.size())
        return nullptr;
    return &kRecordNames[kRecordNameOfElement[name]];
}

}  // namespace brackwell::investments
