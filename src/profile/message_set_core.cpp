// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

#include <array>

#include "fields/element_table.h"
#include "profile/list_text.h"

namespace brackwell {
namespace {

/// Both forms of TYPE1 are accepted: intended.
constexpr std::array<Choice<TvOFXMessageSetSecurity>, 3> kSecurities{
    {{"NONE", TvOFXMessageSetSecurityNone},
     {"TYPE1", TvOFXMessageSetSecurityType1},
     {"TYPE 1", TvOFXMessageSetSecurityType1}}};
constexpr std::array<Choice<TvOFXSyncMode>, 2> kSyncModes{
    {{"FULL", TvOFXSyncModeFull}, {"LITE", TvOFXSyncModeLite}}};

/// The first word for a value: the tables of reading serve for writing, too, and may have several.
template <class Choices, class Value>
std::string_view wordFor(const Choices& choices, Value value) noexcept {
    for (const auto& [text, meaning] : choices)
        if (meaning == value) return text;
    return "UNKNOWN";
}

}  // namespace

struct BRACKWELL_INTERNAL TvOFXMessageSetCore::Elements {
    using Self = TvOFXMessageSetCore;
    static constexpr auto kTable = elementTable<Self>({
        {element("VER"), integer<&Self::version_>},
        {element("SPNAME"), text<&Self::texts_, serviceProviderName_>},
        {element("URL"), text<&Self::texts_, url_>},
        {element("OFXSEC"), choice<&Self::security_, kSecurities>},
        {element("TRANSPSEC"), flag<&Self::usesTransportLevelSecurity_>},
        {element("SIGNONREALM"), text<&Self::texts_, signonRealm_>},
        {element("LANGUAGE"), list<&Self::languages_>},
        {element("SYNCMODE"), choice<&Self::syncMode_, kSyncModes>},
        {element("RESPFILEER"), flag<&Self::supportsErrorRecovery_>},
    });
};

TvOFXMessageSetCore::TvOFXMessageSetCore(const std::optional<ParseDictionary>& node) : AggregateClass(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*node));
}

std::string TvOFXMessageSetCore::description() const {
    std::string text = "MessageSetCore:";
    appendFilled(text, " provider:", serviceProviderName());
    if (version_ > 0) text.append(" version:").append(std::to_string(version_));
    appendFilled(text, " url:", url());
    text.append(" security:").append(wordFor(kSecurities, security_));
    text.append(" uses_transport_level_security:").append(yesOrNo(usesTransportLevelSecurity_));
    appendFilled(text, " signon_realm:", signonRealm());
    appendList(text, " languages:{", languages_, "}");
    text.append(" sync_mode:").append(wordFor(kSyncModes, syncMode_));
    text.append(" supports_error_recovery:").append(yesOrNo(supportsErrorRecovery_));
    return text;
}

std::string_view TvOFXMessageSetCore::className() const noexcept { return "TvOFXMessageSetCore"; }

}  // namespace brackwell
