// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>

#include "fields/description.h"
#include "fields/element_table.h"

namespace brackwell {

struct BRACKWELL_INTERNAL TvOFXFIProfileResponse::Elements {
    using Self = TvOFXFIProfileResponse;

    static void realms(Self& self, const NodeRef& value) {
        std::vector<std::shared_ptr<TvOFXSignOnInfo>> built;
        appendObjects<TvOFXSignOnInfo::initWithParseDict>(built, value);
        // An empty list counts as an absent one.
        if (!built.empty()) self.signonInfoList_ = std::move(built);
    }
    /// A message set is inside an aggregate for all its versions, of which only version 1 is read.
    template <auto member, reading::NameID version>
    static void messageSet(Self& self, const NodeRef& value) {
        if (value.isDictionary()) object<member>(self, value[version]);
    }
    /// The lines that are present; nothing without a first line. It needs several elements at once, so no
    /// rule of the table can read it.
    static void readAddress(Self& self, const NodeRef& profile) {
        const NodeRef first = profile[element("ADDR1")];
        if (!first.isText()) return;
        std::string lines(first.text());
        for (const reading::NameID name : {element("ADDR2"), element("ADDR3")})
            if (const NodeRef line = profile[name]; line.isText()) lines.append("\n").append(line.text());
        self.setAddress(lines);
    }

    static constexpr auto kRealmList = elementTable<Self>({
        {element("SIGNONINFO"), realms},
    });
    /// Other message sets have no field.
    static constexpr auto kMessageSets = elementTable<Self>({
        {element("BANKMSGSET"), messageSet<&Self::messageSetProfileBanking_, element("BANKMSGSETV1")>},
        {element("SIGNONMSGSET"), messageSet<&Self::messageSetProfileSignOn_, element("SIGNONMSGSETV1")>},
        {element("CREDITCARDMSGSET"),
         messageSet<&Self::messageSetProfileCreditCard_, element("CREDITCARDMSGSETV1")>},
        {element("SIGNUPMSGSET"), messageSet<&Self::messageSetProfileSignUp_, element("SIGNUPMSGSETV1")>},
    });
    static constexpr auto kTable = elementTable<Self>({
        {element("FINAME"), text<&Self::texts_, fiName_>},
        {element("CITY"), text<&Self::texts_, city_>},
        {element("STATE"), text<&Self::texts_, state_>},
        {element("POSTALCODE"), text<&Self::texts_, postalCode_>},
        {element("COUNTRY"), text<&Self::texts_, country_>},
        {element("CSPHONE"), text<&Self::texts_, customerServicePhoneNumber_>},
        {element("TSPHONE"), text<&Self::texts_, technicalSupportPhoneNumber_>},
        {element("FAXPHONE"), text<&Self::texts_, faxNumber_>},
        {element("URL"), text<&Self::texts_, informationURL_>},
        {element("EMAIL"), text<&Self::texts_, email_>},
        {element("DTPROFUP"), date<&Self::updateTime_>},
        {element("SIGNONINFOLIST"), inner<kRealmList>},
        {element("MSGSETLIST"), inner<kMessageSets>},
    });
};

TvOFXFIProfileResponse::TvOFXFIProfileResponse(const std::optional<ParseDictionary>& node)
    : AggregateClass(node) {
    if (!node) return;
    const NodeRef profile = NodeRef::of(*originalParseData());
    Elements::kTable.read(*this, profile);
    Elements::readAddress(*this, profile);
}

std::string TvOFXFIProfileResponse::description() const {
    // The name of the class that wraps this one, and the postal code before the city: intended.
    std::string text = "TvOFXFIProfile";
    appendPresent(text, "\n   fiName = ", fiName());
    appendPresent(text, "\n   address = ", address());
    appendPresent(text, "\n   postalCode = ", postalCode());
    appendPresent(text, "\n   city = ", city());
    appendPresent(text, "\n   state = ", state());
    appendPresent(text, "\n   country = ", country());
    appendPresent(text, "\n   updateTime = ", updateTime_);
    appendPresent(text, "\n   customerServicePhoneNumber = ", customerServicePhoneNumber());
    appendPresent(text, "\n   technicalSupportPhoneNumber = ", technicalSupportPhoneNumber());
    appendPresent(text, "\n   faxNumber = ", faxNumber());
    appendPresent(text, "\n   informationURL = ", informationURL());
    appendPresent(text, "\n   email = ", email());
    text.append("\n");
    if (signonInfoList_ && !signonInfoList_->empty()) {
        text.append("\nsignonInfoList:");
        for (const auto& realm : *signonInfoList_)
            text.append("\n\t").append(realm ? realm->description() : std::string(kAbsent));
    }
    text.append("\n");
    if (messageSetProfileBanking_)
        text.append("\nmessageSetBanking = ").append(messageSetProfileBanking_->description());
    text.append("\n");
    // The sign-up and card message sets are not shown: intended.
    if (messageSetProfileSignOn_)
        text.append("\nmessageSetSignOn = ").append(messageSetProfileSignOn_->description());
    return text;
}

std::string_view TvOFXFIProfileResponse::className() const noexcept { return "TvOFXFIProfileResponse"; }

}  // namespace brackwell
