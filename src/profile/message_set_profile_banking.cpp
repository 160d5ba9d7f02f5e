// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

#include <array>

#include "fields/element_table.h"
#include "profile/list_text.h"

namespace brackwell {

struct BRACKWELL_INTERNAL TvOFXMessageSetProfileBanking::Elements {
    using Self = TvOFXMessageSetProfileBanking;
    static constexpr auto kEmail = elementTable<Self>({
        {element("CANEMAIL"), flag<&Self::supportsEMail_>},
        {element("CANNOTIFY"), flag<&Self::supportsNotification_>},
    });
    static constexpr auto kTransfers = elementTable<Self>({
        {element("PROCDAYSOFF"), list<&Self::noProcessingDays_>},
        {element("PROCENDTM"), text<&Self::texts_, processingEndTime_>},
        {element("CANSCHED"), flag<&Self::supportsScheduledTransfers_>},
        {element("CANRECUR"), flag<&Self::supportsRecurringTransfers_>},
        {element("CANMODXFERS"), flag<&Self::supportsModifyTransfers_>},
        {element("CANMODMDLS"), flag<&Self::supportsModifyModels_>},
        {element("MODELWND"), integer<&Self::modelWindow_>},
        {element("DAYSWITH"), integer<&Self::daysWith_>},
        {element("DFLTDAYSTOPAY"), integer<&Self::defaultNumberOfDaysToPay_>},
    });
    static constexpr auto kTable = elementTable<Self>({
        {element("CLOSINGAVAIL"), flag<&Self::closingStatementInformationAvailable_>},
        {element("EMAILPROF"), inner<kEmail>},
        {element("XFERPROF"), inner<kTransfers>},
    });

    struct FlagLine {
        std::string_view label;
        bool Self::*flag;
    };
    /// "supports supports" is intended.
    static constexpr std::array<FlagLine, 6> kFlagLines{
        {{"\n   supports scheduled transfers: ", &Self::supportsScheduledTransfers_},
         {"\n   supports recurring transfers: ", &Self::supportsRecurringTransfers_},
         {"\n   supports modify transfers: ", &Self::supportsModifyTransfers_},
         {"\n   supports modify models: ", &Self::supportsModifyModels_},
         {"\n   supports supports email: ", &Self::supportsEMail_},
         {"\n   supports notification: ", &Self::supportsNotification_}}};
};

TvOFXMessageSetProfileBanking::TvOFXMessageSetProfileBanking(const std::optional<ParseDictionary>& node)
    : AggregateClass(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*node));
}

std::string TvOFXMessageSetProfileBanking::description() const {
    std::string text = TvOFXMessageSetProfile::description();
    appendList(text, "\n   unsupported account types: ", unsupportedAccountTypes_, "");
    text.append("\n   closing statement info available: ")
        .append(yesOrNo(closingStatementInformationAvailable_));
    appendList(text, "\n   no processing days: (", noProcessingDays_, ")");
    appendFilled(text, "\n   processing end time: ", processingEndTime());
    for (const auto& [label, flag] : Elements::kFlagLines) text.append(label).append(yesOrNo(this->*flag));
    text.append("\n   model window: ").append(std::to_string(modelWindow_));
    text.append("\n   days with: ").append(std::to_string(daysWith_));
    text.append("\n   default number of days to pay: ").append(std::to_string(defaultNumberOfDaysToPay_));
    return text;
}

std::string_view TvOFXMessageSetProfileBanking::className() const noexcept {
    return "TvOFXMessageSetProfileBanking";
}

}  // namespace brackwell
