// SPDX-License-Identifier: Apache-2.0
#pragma once

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
    using enum RecordType;
    using Kind = InvestmentTransactionKind;
    return std::to_array<RecordName>({
        recordName("BUYDEBT", transaction, Kind::buyDebt),
        recordName("BUYMF", transaction, Kind::buyFund),
        recordName("BUYOPT", transaction, Kind::buyOption),
        recordName("BUYOTHER", transaction, Kind::buyOther),
        recordName("BUYSTOCK", transaction, Kind::buyStock),
        recordName("CLOSUREOPT", transaction, Kind::optionClosure),
        recordName("INCOME", transaction, Kind::income),
        recordName("INVEXPENSE", transaction, Kind::expense),
        recordName("JRNLFUND", transaction, Kind::journalFund),
        recordName("JRNLSEC", transaction, Kind::journalSecurity),
        recordName("MARGININTEREST", transaction, Kind::marginInterest),
        recordName("REINVEST", transaction, Kind::reinvestment),
        recordName("RETOFCAP", transaction, Kind::returnOfCapital),
        recordName("SELLDEBT", transaction, Kind::sellDebt),
        recordName("SELLMF", transaction, Kind::sellFund),
        recordName("SELLOPT", transaction, Kind::sellOption),
        recordName("SELLOTHER", transaction, Kind::sellOther),
        recordName("SELLSTOCK", transaction, Kind::sellStock),
        recordName("SPLIT", transaction, Kind::split),
        recordName("TRANSFER", transaction, Kind::transfer),
        recordName("INVBANKTRAN", transaction, Kind::bankTransaction),
        recordName("POSDEBT", position, PositionKind::debt),
        recordName("POSMF", position, PositionKind::fund),
        recordName("POSOPT", position, PositionKind::option),
        recordName("POSOTHER", position, PositionKind::other),
        recordName("POSSTOCK", position, PositionKind::stock),
        recordName("INVBAL", balance),
        recordName("BAL", listedBalance),
        recordName("INV401K", plan),
        recordName("LOANINFO", loan),
        recordName("YEARTODATE", period),
        recordName("INCEPTTODATE", period),
        recordName("PERIODTODATE", period),
        recordName("INV401KBAL", amounts),
        recordName("CONTRIBUTIONS", amounts),
        recordName("WITHDRAWALS", amounts),
        recordName("EARNINGS", amounts),
        recordName("DEBTINFO", security, SecurityKind::debt),
        recordName("MFINFO", security, SecurityKind::fund),
        recordName("OPTINFO", security, SecurityKind::option),
        recordName("OTHERINFO", security, SecurityKind::other),
        recordName("STOCKINFO", security, SecurityKind::stock),
        recordName("PORTION", portion),
        recordName("FIPORTION", portion),
    });
}();

/// Where a name stands in kRecordNames; behind its end when the aggregate is no object.
inline constexpr auto kRecordNameOfElement = [] {
    std::array<std::uint8_t, reading::kKnownElementCount> rows{};
    rows.fill(kRecordNames.size());
    for (std::size_t i = 0; i < kRecordNames.size(); ++i)
        rows[kRecordNames[i].element] = static_cast<std::uint8_t>(i);
    return rows;
}();

/// What an aggregate is; null when it is no object.
constexpr const RecordName* recordNamed(NameID name) noexcept {
    if (name >= reading::kKnownElementCount || kRecordNameOfElement[name] == kRecordNames.size())
        return nullptr;
    return &kRecordNames[kRecordNameOfElement[name]];
}

}  // namespace brackwell::investments
