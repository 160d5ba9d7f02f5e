// SPDX-License-Identifier: Apache-2.0
#include "json/profile.h"

#include <string_view>

#include "json/fields.h"
#include "json/parse_tree.h"
#include "json/responses.h"

namespace tool {
namespace {

/// A list of leaves, which is left out when the document had none. Its elements are kept as the tree has
/// them, whatever their kind.
void writeElements(JsonWriter& json, std::string_view name, const brackwell::OptionalList& list) {
    if (!list) return;
    json.key(name);
    json.beginArray();
    for (const brackwell::ParseValue& element : *list)
        writeParseValue(json, element, OriginalStrings::leftOut);
    json.endArray();
}

void writeInstitution(JsonWriter& json,
                      const brackwell::TvOFXFinancialInstitutionIdentification& institution) {
    json.beginObject();
    writeField(json, "organization", institution.organization());
    writeField(json, "fid", institution.fid());
    json.endObject();
}

void writeSignOnInfo(JsonWriter& json, const brackwell::TvOFXSignOnInfo& realm) {
    json.beginObject();
    writeField(json, "signonRealm", realm.signonRealm());
    writeField(json, "minPasswordChars", realm.minPasswordChars());
    writeField(json, "maxPasswordChars", realm.maxPasswordChars());
    writeField(json, "allowedPasswordCharacters", realm.allowedPasswordCharacters());
    writeField(json, "passwordIsCaseSensitive", realm.passwordIsCaseSensitive());
    writeField(json, "passwordAllowsSpecialChars", realm.passwordAllowsSpecialChars());
    writeField(json, "passwordAllowsSpaces", realm.passwordAllowsSpaces());
    writeField(json, "passwordChangeAllowed", realm.passwordChangeAllowed());
    writeField(json, "passwordChangeRequiredAtFirstSignon", realm.passwordChangeRequiredAtFirstSignon());
    json.endObject();
}

void writeCore(JsonWriter& json, const brackwell::TvOFXMessageSetCore& core) {
    json.beginObject();
    writeField(json, "version", core.version());
    writeField(json, "serviceProviderName", core.serviceProviderName());
    writeField(json, "url", core.url());
    writeField(json, "security", core.security());
    writeField(json, "usesTransportLevelSecurity", core.usesTransportLevelSecurity());
    writeField(json, "signonRealm", core.signonRealm());
    writeElements(json, "languages", core.languages());
    writeField(json, "syncMode", core.syncMode());
    writeField(json, "supportsErrorRecovery", core.supportsErrorRecovery());
    json.endObject();
}

/// The class and the core, with which every message-set profile begins.
void beginProfile(JsonWriter& json, const brackwell::TvOFXMessageSetProfile& profile) {
    json.beginObject();
    writeField(json, "class", profile.className());
    writeField(json, "messageSetCore", profile.messageSetCore(), writeCore);
}

void writeSignOnSet(JsonWriter& json, const brackwell::TvOFXMessageSetProfileSignOn& profile) {
    beginProfile(json, profile);
    json.endObject();
}

void writeSignUpSet(JsonWriter& json, const brackwell::TvOFXMessageSetProfileSignUp& profile) {
    beginProfile(json, profile);
    writeField(json, "clientEnrollAccountRequired", profile.clientEnrollAccountRequired());
    writeField(json, "webEnrollUrl", profile.webEnrollUrl());
    writeField(json, "otherEnrollMessage", profile.otherEnrollMessage());
    writeField(json, "serverSupportsClientBasedUserInformationChange",
               profile.serverSupportsClientBasedUserInformationChange());
    writeField(json, "serverProvidesAccountInfos", profile.serverProvidesAccountInfos());
    writeField(json, "serverAllowsServiceActivationRequest", profile.serverAllowsServiceActivationRequest());
    json.endObject();
}

void writeBankingSet(JsonWriter& json, const brackwell::TvOFXMessageSetProfileBanking& profile) {
    beginProfile(json, profile);
    writeField(json, "closingStatementInformationAvailable", profile.closingStatementInformationAvailable());
    writeElements(json, "noProcessingDays", profile.noProcessingDays());
    writeField(json, "processingEndTime", profile.processingEndTime());
    writeField(json, "supportsScheduledTransfers", profile.supportsScheduledTransfers());
    writeField(json, "supportsRecurringTransfers", profile.supportsRecurringTransfers());
    writeField(json, "supportsModifyTransfers", profile.supportsModifyTransfers());
    writeField(json, "supportsModifyModels", profile.supportsModifyModels());
    writeField(json, "modelWindow", profile.modelWindow());
    writeField(json, "daysWith", profile.daysWith());
    writeField(json, "defaultNumberOfDaysToPay", profile.defaultNumberOfDaysToPay());
    writeField(json, "supportsEMail", profile.supportsEMail());
    writeField(json, "supportsNotification", profile.supportsNotification());
    json.endObject();
}

void writeCreditCardSet(JsonWriter& json, const brackwell::TvOFXMessageSetProfileCreditCard& profile) {
    beginProfile(json, profile);
    writeField(json, "closingStatementInformationAvailable", profile.closingStatementInformationAvailable());
    json.endObject();
}

}  // namespace

void writeSignOnFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice&) {
    const auto& signOn = static_cast<const brackwell::TvOFXSignOnResponse&>(response);
    writeField(json, "dateOfServer", signOn.dateOfServer());
    writeField(json, "userKey", signOn.userKey());
    writeField(json, "tskeyExpire", signOn.tskeyExpire());
    writeField(json, "language", signOn.language());
    writeField(json, "dateOflastProfileInfoUpdate", signOn.dateOflastProfileInfoUpdate());
    writeField(json, "dateOflastAccountInfoUpdate", signOn.dateOflastAccountInfoUpdate());
    writeField(json, "financialInstitutionID", signOn.financialInstitutionID(), writeInstitution);
    writeField(json, "sessionCookie", signOn.sessionCookie());
    writeField(json, "accessKey", signOn.accessKey());
}

void writeProfileFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice&) {
    const auto& profile = static_cast<const brackwell::TvOFXFIProfileResponse&>(response);
    writeField(json, "messageSetProfileSignOn", profile.messageSetProfileSignOn(), writeSignOnSet);
    writeField(json, "messageSetProfileSignUp", profile.messageSetProfileSignUp(), writeSignUpSet);
    writeField(json, "messageSetProfileBanking", profile.messageSetProfileBanking(), writeBankingSet);
    writeField(json, "messageSetProfileCreditCard", profile.messageSetProfileCreditCard(),
               writeCreditCardSet);
    if (profile.signonInfoList())
        writeList(json, "signonInfoList", *profile.signonInfoList(), writeSignOnInfo);
    writeField(json, "updateTime", profile.updateTime());
    writeField(json, "fiName", profile.fiName());
    writeField(json, "address", profile.address());
    writeField(json, "city", profile.city());
    writeField(json, "state", profile.state());
    writeField(json, "postalCode", profile.postalCode());
    writeField(json, "country", profile.country());
    writeField(json, "customerServicePhoneNumber", profile.customerServicePhoneNumber());
    writeField(json, "technicalSupportPhoneNumber", profile.technicalSupportPhoneNumber());
    writeField(json, "faxNumber", profile.faxNumber());
    writeField(json, "informationURL", profile.informationURL());
    writeField(json, "email", profile.email());
}

}  // namespace tool
