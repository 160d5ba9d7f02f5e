// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>

#include <optional>
#include <string>
#include <vector>

#include "document.h"
#include "enumeration.h"
#include "record.h"

/// \file
/// What an institution says of itself: the answer to a sign-on, and its profile.

namespace brackwell::python {
namespace {

/// The texts of a list of leaves; absent where the document has none.
std::optional<std::vector<std::string>> textsOf(const OptionalList& list) {
    if (!list) return std::nullopt;
    std::vector<std::string> texts;
    for (const ParseValue& value : *list)
        if (const OptionalText text = value.text()) texts.emplace_back(*text);
    return texts;
}

}  // namespace

template <>
const std::vector<Field<TvOFXFinancialInstitutionIdentification>>&
fieldsOf<TvOFXFinancialInstitutionIdentification>() {
    using It = TvOFXFinancialInstitutionIdentification;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("organization", &It::organization, "The institution's name (ORG)."),
        field<It>("fid", &It::fid, "Its identifier, which is unique within organization (FID)."),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXSignOnResponse>>& fieldsOf<TvOFXSignOnResponse>() {
    using It = TvOFXSignOnResponse;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("status", &It::status, "Whether the user could sign on (STATUS)."),
        field<It>("dateOfServer", &It::dateOfServer, "The server's clock (DTSERVER).").as("server_date"),
        field<It>("language", &It::language, "The language of the session (LANGUAGE)."),
        field<It>("financialInstitutionID", &It::financialInstitutionID,
                  "The institution that answered (FI).")
            .as("institution"),
        field<It>("dateOflastProfileInfoUpdate", &It::dateOflastProfileInfoUpdate, "DTPROFUP")
            .as("profile_changed"),
        field<It>("dateOflastAccountInfoUpdate", &It::dateOflastAccountInfoUpdate, "DTACCTUP")
            .as("accounts_changed"),
        field<It>("tskeyExpire", &It::tskeyExpire, "When user_key expires (TSKEYEXPIRE).")
            .as("user_key_expires"),
        field<It>("userKey", &It::userKey, "A secret: stands for the password in this session (USERKEY).")
            .with(Use::secret),
        field<It>("sessionCookie", &It::sessionCookie, "A secret of the session (SESSCOOKIE).")
            .with(Use::secret),
        field<It>("accessKey", &It::accessKey, "A secret of the session (ACCESSKEY).").with(Use::secret),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXMessageSetCore>>& fieldsOf<TvOFXMessageSetCore>() {
    using It = TvOFXMessageSetCore;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("version", &It::version, "The version of the message set (VER)."),
        field<It>("serviceProviderName", &It::serviceProviderName, "SPNAME"),
        field<It>("url", &It::url, "Where requests go (URL)."),
        field<It>("security", &It::security, "How OFX secures them (OFXSEC)."),
        field<It>("usesTransportLevelSecurity", &It::usesTransportLevelSecurity, "TRANSPSEC"),
        field<It>("signonRealm", &It::signonRealm, "The realm whose rules hold (SIGNONREALM)."),
        field<It>(
            "languages", [](const It& object) { return textsOf(object.languages()); }, "LANGUAGE"),
        field<It>("syncMode", &It::syncMode, "How the set synchronises (SYNCMODE)."),
        field<It>("supportsErrorRecovery", &It::supportsErrorRecovery, "RESPFILEER"),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXMessageSetProfileSignOn>>& fieldsOf<TvOFXMessageSetProfileSignOn>() {
    using It = TvOFXMessageSetProfileSignOn;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("messageSetCore", &It::messageSetCore, "What every message set says (MSGSETCORE).")
            .as("core"),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXMessageSetProfileSignUp>>& fieldsOf<TvOFXMessageSetProfileSignUp>() {
    using It = TvOFXMessageSetProfileSignUp;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("messageSetCore", &It::messageSetCore, "What every message set says (MSGSETCORE).")
            .as("core"),
        field<It>("clientEnrollAccountRequired", &It::clientEnrollAccountRequired,
                  "Whether enrolling from a client takes an account."),
        field<It>("webEnrollUrl", &It::webEnrollUrl, "The address to enrol at, or how else."),
        field<It>("serverSupportsClientBasedUserInformationChange",
                  &It::serverSupportsClientBasedUserInformationChange, "CHGUSERINFO"),
        field<It>("serverProvidesAccountInfos", &It::serverProvidesAccountInfos, "AVAILACCTS"),
        field<It>("serverAllowsServiceActivationRequest", &It::serverAllowsServiceActivationRequest,
                  "CLIENTACTREQ"),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXMessageSetProfileBanking>>& fieldsOf<TvOFXMessageSetProfileBanking>() {
    using It = TvOFXMessageSetProfileBanking;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("messageSetCore", &It::messageSetCore, "What every message set says (MSGSETCORE).")
            .as("core"),
        field<It>("closingStatementInformationAvailable", &It::closingStatementInformationAvailable,
                  "CLOSINGAVAIL"),
        field<It>(
            "noProcessingDays", [](const It& object) { return textsOf(object.noProcessingDays()); },
            "PROCDAYSOFF"),
        field<It>("processingEndTime", &It::processingEndTime, "PROCENDTM"),
        field<It>("supportsScheduledTransfers", &It::supportsScheduledTransfers, "CANSCHED"),
        field<It>("supportsRecurringTransfers", &It::supportsRecurringTransfers, "CANRECUR"),
        field<It>("supportsModifyTransfers", &It::supportsModifyTransfers, "CANMODXFERS"),
        field<It>("supportsModifyModels", &It::supportsModifyModels, "CANMODMDLS"),
        field<It>("modelWindow", &It::modelWindow, "MODELWND"),
        field<It>("daysWith", &It::daysWith, "DAYSWITH"),
        field<It>("defaultNumberOfDaysToPay", &It::defaultNumberOfDaysToPay, "DFLTDAYSTOPAY"),
        field<It>("supportsEMail", &It::supportsEMail, "CANEMAIL").as("supports_email"),
        field<It>("supportsNotification", &It::supportsNotification, "CANNOTIFY"),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXMessageSetProfileCreditCard>>& fieldsOf<TvOFXMessageSetProfileCreditCard>() {
    using It = TvOFXMessageSetProfileCreditCard;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("messageSetCore", &It::messageSetCore, "What every message set says (MSGSETCORE).")
            .as("core"),
        field<It>("closingStatementInformationAvailable", &It::closingStatementInformationAvailable,
                  "CLOSINGAVAIL"),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXSignOnInfo>>& fieldsOf<TvOFXSignOnInfo>() {
    using It = TvOFXSignOnInfo;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("signonRealm", &It::signonRealm, "The name of the realm (SIGNONREALM).").as("name"),
        field<It>("minPasswordChars", &It::minPasswordChars, "MIN"),
        field<It>("maxPasswordChars", &It::maxPasswordChars, "MAX"),
        field<It>("allowedPasswordCharacters", &It::allowedPasswordCharacters, "CHARTYPE"),
        field<It>("passwordIsCaseSensitive", &It::passwordIsCaseSensitive, "CASESEN"),
        field<It>("passwordAllowsSpecialChars", &It::passwordAllowsSpecialChars, "SPECIAL"),
        field<It>("passwordAllowsSpaces", &It::passwordAllowsSpaces, "SPACES"),
        field<It>("passwordChangeAllowed", &It::passwordChangeAllowed, "PINCH"),
        field<It>("passwordChangeRequiredAtFirstSignon", &It::passwordChangeRequiredAtFirstSignon,
                  "CHGPINFIRST"),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXFIProfileResponse>>& fieldsOf<TvOFXFIProfileResponse>() {
    using It = TvOFXFIProfileResponse;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("fiName", &It::fiName, "The institution's name (FINAME).").as("name"),
        field<It>("status", &It::status, "Whether the server could answer (STATUS)."),
        field<It>("updateTime", &It::updateTime, "The last change of the profile (DTPROFUP).").as("changed"),
        field<It>("address", &It::address, "ADDR1 to ADDR3, a line each."),
        field<It>("city", &It::city, "CITY"),
        field<It>("state", &It::state, "STATE"),
        field<It>("postalCode", &It::postalCode, "POSTALCODE"),
        field<It>("country", &It::country, "COUNTRY"),
        field<It>("customerServicePhoneNumber", &It::customerServicePhoneNumber, "CSPHONE"),
        field<It>("technicalSupportPhoneNumber", &It::technicalSupportPhoneNumber, "TSPHONE"),
        field<It>("faxNumber", &It::faxNumber, "FAXPHONE"),
        field<It>("informationURL", &It::informationURL, "URL"),
        field<It>("email", &It::email, "EMAIL"),
        field<It>("signonInfoList", &It::signonInfoList, "The rules of signing on (SIGNONINFO).")
            .as("realms"),
        field<It>("messageSetProfileSignOn", &It::messageSetProfileSignOn, "SIGNONMSGSET").as("sign_on"),
        field<It>("messageSetProfileSignUp", &It::messageSetProfileSignUp, "SIGNUPMSGSET").as("sign_up"),
        field<It>("messageSetProfileBanking", &It::messageSetProfileBanking, "BANKMSGSET").as("banking"),
        field<It>("messageSetProfileCreditCard", &It::messageSetProfileCreditCard, "CREDITCARDMSGSET")
            .as("credit_card"),
    };
    return *fields;
}

void bindProfile(nb::module_& module) {
    bindEnumeration<TvOFXCharacterSet>(module, "The characters that a password may have.");
    bindEnumeration<TvOFXMessageSetSecurity>(module, "How OFX secures requests.");
    bindEnumeration<TvOFXSyncMode>(module, "How a message set synchronises.");
    bindValue<TvOFXFinancialInstitutionIdentification>(module, "The institution that answers.");
    bindValue<TvOFXSignOnResponse>(module,
                                   "The answer to a sign-on. Its secrets stand in no representation.");
    bindValue<TvOFXMessageSetCore>(module, "What every message set says.");
    bindValue<TvOFXMessageSetProfileSignOn>(module, "Signing on.");
    bindValue<TvOFXMessageSetProfileSignUp>(module, "Enrolment and account information.");
    bindValue<TvOFXMessageSetProfileBanking>(module, "Bank accounts.");
    bindValue<TvOFXMessageSetProfileCreditCard>(module, "Cards.");
    bindValue<TvOFXSignOnInfo>(module, "The rules of one sign-on realm.");
    bindValue<TvOFXFIProfileResponse>(module, "The institution's profile.");
}

}  // namespace brackwell::python
