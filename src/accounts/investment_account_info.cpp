// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include <array>

#include "accounts/service_status.h"

namespace brackwell {
namespace {

constexpr std::array<Choice<TvOFXInvestmentAccountType>, 4> kAccountTypes{
    {{"INDIVIDUAL", TvOFXInvestmentAccountTypeIndividual},
     {"JOINT", TvOFXInvestmentAccountTypeJoint},
     {"TRUST", TvOFXInvestmentAccountTypeTrust},
     {"CORPORATE", TvOFXInvestmentAccountTypeCorporate}}};

}  // namespace

struct BRACKWELL_INTERNAL TvOFXInvestmentAccountInfo::Elements {
    using Self = TvOFXInvestmentAccountInfo;
    static constexpr auto kTable = elementTable<Self>({
        {element("INVACCTFROM"), object<&Self::investmentAccount_>},
        {element("USPRODUCTTYPE"), text<&Self::texts_, usproductType_>},
        {element("CHECKING"), flag<&Self::hasCheckWritingPrivileges_>},
        {element("INVACCTTYPE"), choice<&Self::accountType_, kAccountTypes>},
        {element("OPTIONLEVEL"), text<&Self::texts_, optionLevel_>},
        {element("SVCSTATUS"), choice<&Self::serviceStatus_, kServiceStatuses>},
    });
};

TvOFXInvestmentAccountInfo::TvOFXInvestmentAccountInfo(const std::optional<ParseDictionary>& node)
    : AggregateClass(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*node));
}

std::string_view TvOFXInvestmentAccountInfo::className() const noexcept {
    return "TvOFXInvestmentAccountInfo";
}

}  // namespace brackwell
