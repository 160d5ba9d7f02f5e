// SPDX-License-Identifier: Apache-2.0
#include "text_page/profile_section.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "text/shown_values.h"
#include "text_page/text_page.h"

namespace tool {
namespace {

using brackwell::OptionalText;

/// Pieces of a text with a separator between them; pieces that are absent or empty are left out.
class Joined {
public:
    explicit Joined(std::string_view separator) : separator_(separator) {}

    Joined& add(OptionalText piece, std::string_view before = "") {
        if (!piece || piece->empty()) return *this;
        if (!text_.empty()) text_.append(separator_);
        text_.append(before).append(*piece);
        return *this;
    }
    Joined& addIf(bool holds, std::string_view piece) { return holds ? add(piece) : *this; }
    const std::string& text() const noexcept { return text_; }

private:
    std::string_view separator_;
    std::string text_;
};

std::string listed(const brackwell::OptionalList& list) {
    Joined texts(", ");
    if (list)
        for (const brackwell::ParseValue& element : *list) texts.add(element.text());
    return texts.text();
}

std::string textOf(std::int64_t number) { return std::to_string(number); }

std::string coreText(const brackwell::TvOFXMessageSetProfile& profile) {
    const brackwell::TvOFXMessageSetCore* core = profile.messageSetCore().get();
    if (core == nullptr) return "supported";
    const bool isTyped = core->security() == brackwell::TvOFXMessageSetSecurityType1;
    return Joined("; ")
        .add(core->version() > 0 ? OptionalText(textOf(core->version())) : std::nullopt, "version ")
        .add(core->url(), "at ")
        .add(core->serviceProviderName(), "provider ")
        .add(core->signonRealm(), "realm ")
        .add(listed(core->languages()), "languages ")
        .addIf(isTyped, "encrypted")
        .addIf(core->usesTransportLevelSecurity(), "transport security")
        .addIf(core->syncMode() == brackwell::TvOFXSyncModeLite, "lite synchronisation")
        .addIf(core->syncMode() == brackwell::TvOFXSyncModeFull, "full synchronisation")
        .addIf(core->supportsErrorRecovery(), "error recovery")
        .text();
}

std::string bankingText(const brackwell::TvOFXMessageSetProfileBanking& profile) {
    const auto days = [](std::int64_t count) {
        return count > 0 ? std::optional(textOf(count)) : std::nullopt;
    };
    return Joined("; ")
        .add(coreText(profile))
        .addIf(profile.closingStatementInformationAvailable(), "closing statements")
        .addIf(profile.supportsScheduledTransfers(), "scheduled transfers")
        .addIf(profile.supportsRecurringTransfers(), "recurring transfers")
        .addIf(profile.supportsModifyTransfers(), "transfers can be changed")
        .addIf(profile.supportsModifyModels(), "models can be changed")
        .add(listed(profile.noProcessingDays()), "no processing on ")
        .add(profile.processingEndTime(), "processing ends at ")
        .add(days(profile.modelWindow()), "model window in days ")
        .add(days(profile.daysWith()), "days until withdrawal ")
        .add(days(profile.defaultNumberOfDaysToPay()), "days to pay ")
        .addIf(profile.supportsEMail(), "e-mail")
        .addIf(profile.supportsNotification(), "notification")
        .text();
}

std::string creditCardText(const brackwell::TvOFXMessageSetProfileCreditCard& profile) {
    return Joined("; ")
        .add(coreText(profile))
        .addIf(profile.closingStatementInformationAvailable(), "closing statements")
        .text();
}

std::string signUpText(const brackwell::TvOFXMessageSetProfileSignUp& profile) {
    return Joined("; ")
        .add(coreText(profile))
        .addIf(profile.clientEnrollAccountRequired() == true, "enrolment takes an account")
        .add(profile.webEnrollUrl(), "enrolment: ")
        .addIf(profile.serverSupportsClientBasedUserInformationChange(), "users change their information")
        .addIf(profile.serverProvidesAccountInfos(), "lists accounts")
        .addIf(profile.serverAllowsServiceActivationRequest(), "services can be activated")
        .text();
}

std::string passwordText(const brackwell::TvOFXSignOnInfo& realm) {
    return Joined("; ")
        .add("password of " + textOf(realm.minPasswordChars()) + " to " + textOf(realm.maxPasswordChars()) +
             " characters")
        .add(brackwell::TvOFXSignOnInfo::ofxCharacterSetToString(realm.allowedPasswordCharacters()))
        .add(realm.passwordIsCaseSensitive() ? "case counts" : "case does not count")
        .addIf(realm.passwordAllowsSpecialChars(), "special characters allowed")
        .addIf(realm.passwordAllowsSpaces(), "spaces allowed")
        .addIf(realm.passwordChangeAllowed(), "can be changed")
        .addIf(realm.passwordChangeRequiredAtFirstSignon(), "must be changed at first sign-on")
        .text();
}

void showAddress(TextPage& page, const brackwell::TvOFXFIProfileResponse& profile) {
    std::string lines(profile.address().value_or(""));
    for (std::size_t i = lines.find('\n'); i != std::string::npos; i = lines.find('\n', i + 2))
        lines.replace(i, 1, ", ");
    const std::string city =
        Joined(" ").add(profile.city()).add(profile.state()).add(profile.postalCode()).text();
    page.fact("Address", Joined(", ").add(lines).add(city).add(profile.country()).text());
}

void showMessageSets(TextPage& page, const brackwell::TvOFXFIProfileResponse& profile) {
    if (const auto& set = profile.messageSetProfileSignOn()) page.fact("Sign-on", coreText(*set));
    if (const auto& set = profile.messageSetProfileSignUp()) page.fact("Sign-up", signUpText(*set));
    if (const auto& set = profile.messageSetProfileBanking()) page.fact("Banking", bankingText(*set));
    if (const auto& set = profile.messageSetProfileCreditCard())
        page.fact("Credit cards", creditCardText(*set));
}

}  // namespace

void showSignOn(TextPage& page, const brackwell::TvOFXSignOnResponse& signOn) {
    if (const auto& institution = signOn.financialInstitutionID()) {
        const OptionalText fid = institution->fid();
        std::string text(institution->organization().value_or(""));
        if (fid && !fid->empty()) text.append(" (").append(*fid).append(")");
        page.fact("Institution", text);
    }
    if (isTrouble(signOn.status().get())) page.fact("Sign-on failed", shownStatus(*signOn.status()));
    page.fact("Answered", shownDate(signOn.dateOfServer()));
}

void showProfile(TextPage& page, const brackwell::TvOFXFIProfileResponse& profile) {
    page.heading("Profile of " + std::string(profile.fiName().value_or("the institution")));
    if (isTrouble(profile.status().get())) page.fact("Status", shownStatus(*profile.status()));
    showAddress(page, profile);
    page.fact("Customer service", profile.customerServicePhoneNumber());
    page.fact("Technical support", profile.technicalSupportPhoneNumber());
    page.fact("Fax", profile.faxNumber());
    page.fact("Web", profile.informationURL());
    page.fact("E-mail", profile.email());
    page.fact("Changed", shownDate(profile.updateTime()));
    showMessageSets(page, profile);
    if (!profile.signonInfoList()) return;
    for (const auto& realm : *profile.signonInfoList())
        page.fact("Realm " + std::string(realm->signonRealm().value_or("")), passwordText(*realm));
}

}  // namespace tool
