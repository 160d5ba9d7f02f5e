// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>

#include <array>

#include "fields/description.h"
#include "fields/element_table.h"

namespace brackwell {
namespace {

/// The words of CHARTYPE.
constexpr std::array<Choice<TvOFXCharacterSet>, 4> kCharacterSets{
    {{"ALPHAORNUMERIC", TvOFXCharacterSetAlphaOrNumeric},
     {"ALPHAANDNUMERIC", TvOFXCharacterSetAlphaAndNumeric},
     {"ALPHAONLY", TvOFXCharacterSetAlphaOnly},
     {"NUMERICONLY", TvOFXCharacterSetNumericOnly}}};

/// By number of the character set. That one is "numeric" and not "numeric only" is intended.
constexpr std::array<std::string_view, 5> kDisplayTexts{"unknown", "alpha or numeric", "alpha only",
                                                        "numeric", "alpha and numeric"};

}  // namespace

struct BRACKWELL_INTERNAL TvOFXSignOnInfo::Elements {
    using Self = TvOFXSignOnInfo;
    static constexpr auto kTable = elementTable<Self>({
        {element("SIGNONREALM"), text<&Self::texts_, signonRealm_>},
        {element("MIN"), integer<&Self::minPasswordChars_>},
        {element("MAX"), integer<&Self::maxPasswordChars_>},
        {element("CHARTYPE"), choice<&Self::allowedPasswordCharacters_, kCharacterSets>},
        {element("CASESEN"), flag<&Self::passwordIsCaseSensitive_>},
        {element("SPECIAL"), flag<&Self::passwordAllowsSpecialChars_>},
        {element("SPACES"), flag<&Self::passwordAllowsSpaces_>},
        {element("PINCH"), flag<&Self::passwordChangeAllowed_>},
        {element("CHGPINFIRST"), flag<&Self::passwordChangeRequiredAtFirstSignon_>},
        {element("USERCRED1LABEL"), text<&Self::texts_, userCredentialText1_>},
        {element("USERCRED2LABEL"), text<&Self::texts_, userCredentialText2_>},
        {element("CLIENTUIDREQ"), flag<&Self::requiresClientUID_>},
        {element("AUTHTOKENFIRST"), flag<&Self::requiresSendingAuthToken_>},
        {element("AUTHTOKENLABEL"), text<&Self::texts_, authTokenText_>},
        {element("AUTHTOKENINFOURL"), text<&Self::texts_, authTokenURL_>},
        {element("MFACHALLENGESUPT"), flag<&Self::mfaSupport_>},
        {element("MFACHALLENGEFIRST"), flag<&Self::requiresMFAChallengeRequest_>},
    });
};

TvOFXSignOnInfo::TvOFXSignOnInfo(const std::optional<ParseDictionary>& node) : AggregateClass(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*node));
}

std::string TvOFXSignOnInfo::description() const {
    std::string text(className());
    const auto append = [&text](std::string_view name, std::string_view value) {
        text.append("\n   ").append(name).append(" = ").append(value);
    };
    const auto appendText = [&](std::string_view name, Text field) {
        if (const OptionalText value = texts_.get(field)) append(name, *value);
    };
    const auto appendFlag = [&](std::string_view name, bool value) { append(name, yesOrNo(value)); };
    appendText("signonRealm", signonRealm_);
    append("minPasswordChars", std::to_string(minPasswordChars_));
    append("maxPasswordChars", std::to_string(maxPasswordChars_));
    append("allowedPasswordChars", ofxCharacterSetToString(allowedPasswordCharacters_));
    appendFlag("password is case sensitive", passwordIsCaseSensitive_);
    appendFlag("password allows special chars", passwordAllowsSpecialChars_);
    appendFlag("password allows spaces", passwordAllowsSpaces_);
    appendFlag("password change allowed", passwordChangeAllowed_);
    appendFlag("password change required on first login", passwordChangeRequiredAtFirstSignon_);
    appendText("user credential text 1", userCredentialText1_);
    appendText("user credential text 2", userCredentialText2_);
    appendFlag("client uid required", requiresClientUID_);
    appendFlag("auth token required", requiresSendingAuthToken_);
    appendText("authToken text", authTokenText_);
    appendText("authToken url", authTokenURL_);
    appendFlag("mfa supported", mfaSupport_);
    appendFlag("mfa challenge required", requiresMFAChallengeRequest_);
    return text;
}

std::string_view TvOFXSignOnInfo::className() const noexcept { return "TvOFXSignOnInfo"; }

std::string_view TvOFXSignOnInfo::ofxCharacterSetToString(std::int32_t characterSet) noexcept {
    // A negative number becomes a large one, so that one comparison finds every number without a text.
    const auto index = static_cast<std::uint32_t>(characterSet);
    return kDisplayTexts[index < kDisplayTexts.size() ? index : 0];
}

}  // namespace brackwell
