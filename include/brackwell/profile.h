// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// What an institution says of itself: the reply to a sign-on, and the institution's profile with the
/// rules for passwords and the message sets that it supports (message_sets.h).
///
///     auto profile = brackwell::TvOFXFIProfile::initWithProfileResponse(interpreter.fiProfileResponse());
///     if (profile->supportsBanking()) ...
///     store(profile->data());                                         // later:
///     auto restored = brackwell::TvOFXFIProfile::initWithData(bytes);
///
/// Flags are true only for the exact text "Y"; integers are the leading digits of their text and
/// saturate. Elements that are absent, or of another kind than they should be, leave their field at its
/// default. Nothing is checked against the lists of the OFX standard. The classes write nothing but
/// their base's archive, and only the sign-on classes write OFX text of their own.

#include <brackwell/internal/text_fields.h>
#include <brackwell/message_sets.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brackwell {

// ---------------------------------------------------------------------------------------------
// Sign-on

/// The institution that answers (FI).
class BRACKWELL_EXPORT TvOFXFinancialInstitutionIdentification final
    : public AggregateClass<TvOFXFinancialInstitutionIdentification, TvOFXAggregate> {
public:
    TvOFXFinancialInstitutionIdentification() noexcept = default;

    /// Reads an FI node. Without a text in ORG, FID is not read either: intended.
    explicit TvOFXFinancialInstitutionIdentification(const std::optional<ParseDictionary>& node);
    /// "TvOFXFinancialInstitutionIdentification = 1001/Big Bank": identifier, then name; "(null)" for one
    /// that is absent.
    std::string description() const override;
    /// The FI aggregate, without the texts that are absent or empty. Leaves are closed when ofxVersion is
    /// 200 or more. Nothing is escaped.
    std::string ofxString() const override;
    std::string_view className() const noexcept override;

    /// @{
    /// The institution's name (ORG) and its identifier, which is unique within it only (FID).
    OptionalText organization() const noexcept { return texts_.get(organization_); }
    void setOrganization(TextArgument text) { texts_.set(organization_, text); }
    OptionalText fid() const noexcept { return texts_.get(fid_); }
    void setFid(TextArgument text) { texts_.set(fid_, text); }
    /// @}

private:
    enum Text : std::size_t { organization_, fid_, textCount };
    internal::TextFields<textCount> texts_;
};

/// The reply to a sign-on (SONRS). Texts are those of the document, empty ones included.
class BRACKWELL_EXPORT TvOFXSignOnResponse final : public AggregateClass<TvOFXSignOnResponse, TvOFXResponse> {
public:
    TvOFXSignOnResponse() noexcept = default;

    /// Reads a SONRS node. Dates are converted by the shared helper.
    explicit TvOFXSignOnResponse(const std::optional<ParseDictionary>& node);
    /// "Sign On Response:" and, on the same line, what is present of status, language, times and
    /// institution. Never shows the user key, its expiry, the session cookie or the access key.
    std::string description() const override;
    /// The SONRS aggregate, for inspection and not for sending: dates are in their default text form,
    /// leaves are never closed, and an absent status, server time or language reads "(null)"; all of
    /// this is intended. It does show keys and cookie.
    std::string ofxString() const override;
    std::string_view className() const noexcept override;

    /// @{
    /// The server's clock (DTSERVER).
    std::optional<Date> dateOfServer() const noexcept { return dateOfServer_; }
    void setDateOfServer(std::optional<Date> date) noexcept { dateOfServer_ = date; }
    /// @}
    /// @{
    /// The key that stands for the password in this session (USERKEY), a secret, and when it expires
    /// (TSKEYEXPIRE).
    OptionalText userKey() const noexcept { return texts_.get(userKey_); }
    void setUserKey(TextArgument text) { texts_.set(userKey_, text); }
    std::optional<Date> tskeyExpire() const noexcept { return tskeyExpire_; }
    void setTskeyExpire(std::optional<Date> date) noexcept { tskeyExpire_ = date; }
    /// @}
    /// @{
    /// The language of the session (LANGUAGE), such as "ENG".
    OptionalText language() const noexcept { return texts_.get(language_); }
    void setLanguage(TextArgument text) { texts_.set(language_, text); }
    /// @}
    /// @{
    /// The last change of the institution's profile (DTPROFUP), and of the list of accounts (DTACCTUP).
    std::optional<Date> dateOflastProfileInfoUpdate() const noexcept { return dateOflastProfileInfoUpdate_; }
    void setDateOflastProfileInfoUpdate(std::optional<Date> date) noexcept {
        dateOflastProfileInfoUpdate_ = date;
    }
    std::optional<Date> dateOflastAccountInfoUpdate() const noexcept { return dateOflastAccountInfoUpdate_; }
    void setDateOflastAccountInfoUpdate(std::optional<Date> date) noexcept {
        dateOflastAccountInfoUpdate_ = date;
    }
    /// @}
    /// @{
    /// The institution that answered (FI); null when the document does not say.
    const std::shared_ptr<TvOFXFinancialInstitutionIdentification>& financialInstitutionID() const noexcept {
        return financialInstitutionID_;
    }
    void setFinancialInstitutionID(std::shared_ptr<TvOFXFinancialInstitutionIdentification> fi) noexcept {
        financialInstitutionID_ = std::move(fi);
    }
    /// @}
    /// @{
    /// Secrets of the session, to be sent back with the next request (SESSCOOKIE, ACCESSKEY).
    OptionalText sessionCookie() const noexcept { return texts_.get(sessionCookie_); }
    void setSessionCookie(TextArgument text) { texts_.set(sessionCookie_, text); }
    OptionalText accessKey() const noexcept { return texts_.get(accessKey_); }
    void setAccessKey(TextArgument text) { texts_.set(accessKey_, text); }
    /// @}

private:
    struct Elements;
    enum Text : std::size_t { userKey_, language_, sessionCookie_, accessKey_, textCount };
    internal::TextFields<textCount> texts_;
    std::optional<Date> dateOfServer_;
    std::optional<Date> tskeyExpire_;
    std::optional<Date> dateOflastProfileInfoUpdate_;
    std::optional<Date> dateOflastAccountInfoUpdate_;
    std::shared_ptr<TvOFXFinancialInstitutionIdentification> financialInstitutionID_;
};

// ---------------------------------------------------------------------------------------------
// Sign-on realms

/// The characters that a password may have (CHARTYPE). Any other text, or no text, gives Unknown.
enum TvOFXCharacterSet : std::int32_t {
    TvOFXCharacterSetUnknown = 0,          ///< none of the others, or not said
    TvOFXCharacterSetAlphaOrNumeric = 1,   ///< ALPHAORNUMERIC: letters, digits or both
    TvOFXCharacterSetAlphaOnly = 2,        ///< ALPHAONLY: letters
    TvOFXCharacterSetNumericOnly = 3,      ///< NUMERICONLY: digits
    TvOFXCharacterSetAlphaAndNumeric = 4,  ///< ALPHAANDNUMERIC: both letters and digits
};

/// The rules of one sign-on realm (SIGNONINFO): what a password must be like, and which other
/// credentials the server asks for. Some fields have no getter; the description shows them.
class BRACKWELL_EXPORT TvOFXSignOnInfo final : public AggregateClass<TvOFXSignOnInfo, TvOFXAggregate> {
public:
    TvOFXSignOnInfo() noexcept = default;

    /// Reads a SIGNONINFO node.
    explicit TvOFXSignOnInfo(const std::optional<ParseDictionary>& node);
    /// "TvOFXSignOnInfo", then every field on a line of its own; texts only when present.
    std::string description() const override;
    std::string_view className() const noexcept override;

    /// "alpha or numeric", "alpha only", "numeric", "alpha and numeric"; "unknown" for any other number.
    static std::string_view ofxCharacterSetToString(std::int32_t characterSet) noexcept;

    /// @{
    /// The name that the cores of message sets refer to (SIGNONREALM).
    OptionalText signonRealm() const noexcept { return texts_.get(signonRealm_); }
    void setSignonRealm(TextArgument text) { texts_.set(signonRealm_, text); }
    /// @}
    /// @{
    /// How many characters a password must and may have (MIN, MAX), not checked against each other; and which
    /// (CHARTYPE).
    std::int64_t minPasswordChars() const noexcept { return minPasswordChars_; }
    void setMinPasswordChars(std::int64_t count) noexcept { minPasswordChars_ = count; }
    std::int64_t maxPasswordChars() const noexcept { return maxPasswordChars_; }
    void setMaxPasswordChars(std::int64_t count) noexcept { maxPasswordChars_ = count; }
    TvOFXCharacterSet allowedPasswordCharacters() const noexcept { return allowedPasswordCharacters_; }
    void setAllowedPasswordCharacters(TvOFXCharacterSet set) noexcept { allowedPasswordCharacters_ = set; }
    /// @}
    /// @{
    /// Whether case matters in passwords (CASESEN), special characters (SPECIAL) and blanks (SPACES) may be
    /// in them, and they may be changed (PINCH) and must be at the first sign-on (CHGPINFIRST).
    bool passwordIsCaseSensitive() const noexcept { return passwordIsCaseSensitive_; }
    void setPasswordIsCaseSensitive(bool is) noexcept { passwordIsCaseSensitive_ = is; }
    bool passwordAllowsSpecialChars() const noexcept { return passwordAllowsSpecialChars_; }
    void setPasswordAllowsSpecialChars(bool allows) noexcept { passwordAllowsSpecialChars_ = allows; }
    bool passwordAllowsSpaces() const noexcept { return passwordAllowsSpaces_; }
    void setPasswordAllowsSpaces(bool allows) noexcept { passwordAllowsSpaces_ = allows; }
    bool passwordChangeAllowed() const noexcept { return passwordChangeAllowed_; }
    void setPasswordChangeAllowed(bool allowed) noexcept { passwordChangeAllowed_ = allowed; }
    bool passwordChangeRequiredAtFirstSignon() const noexcept { return passwordChangeRequiredAtFirstSignon_; }
    void setPasswordChangeRequiredAtFirstSignon(bool required) noexcept {
        passwordChangeRequiredAtFirstSignon_ = required;
    }
    /// @}

private:
    struct Elements;
    enum Text : std::size_t {
        signonRealm_,
        userCredentialText1_,
        userCredentialText2_,
        authTokenText_,
        authTokenURL_,
        textCount
    };
    internal::TextFields<textCount> texts_;
    std::int64_t minPasswordChars_ = 0;
    std::int64_t maxPasswordChars_ = 0;
    TvOFXCharacterSet allowedPasswordCharacters_ = TvOFXCharacterSetUnknown;
    bool passwordIsCaseSensitive_ = false;
    bool passwordAllowsSpecialChars_ = false;
    bool passwordAllowsSpaces_ = false;
    bool passwordChangeAllowed_ = false;
    bool passwordChangeRequiredAtFirstSignon_ = false;
    bool requiresClientUID_ = false;
    bool requiresSendingAuthToken_ = false;
    bool mfaSupport_ = false;
    bool requiresMFAChallengeRequest_ = false;
};

// ---------------------------------------------------------------------------------------------
// The profile

/// The institution's profile (PROFRS). Texts are those of the document, empty ones included.
class BRACKWELL_EXPORT TvOFXFIProfileResponse final
    : public AggregateClass<TvOFXFIProfileResponse, TvOFXResponse> {
public:
    TvOFXFIProfileResponse() noexcept = default;

    /// Reads a PROFRS node. DTPROFUP is converted by the shared helper.
    explicit TvOFXFIProfileResponse(const std::optional<ParseDictionary>& node);
    /// "TvOFXFIProfile", the other class's name, then the fields that are present, the postal code before
    /// the city; the realms; the banking and the sign-on message set, never the two others. All intended.
    std::string description() const override;
    std::string_view className() const noexcept override;

    /// @{
    /// The message sets that the institution supports; null when it does not name them.
    const std::shared_ptr<TvOFXMessageSetProfileSignOn>& messageSetProfileSignOn() const noexcept {
        return messageSetProfileSignOn_;
    }
    void setMessageSetProfileSignOn(std::shared_ptr<TvOFXMessageSetProfileSignOn> profile) noexcept {
        messageSetProfileSignOn_ = std::move(profile);
    }
    const std::shared_ptr<TvOFXMessageSetProfileSignUp>& messageSetProfileSignUp() const noexcept {
        return messageSetProfileSignUp_;
    }
    void setMessageSetProfileSignUp(std::shared_ptr<TvOFXMessageSetProfileSignUp> profile) noexcept {
        messageSetProfileSignUp_ = std::move(profile);
    }
    const std::shared_ptr<TvOFXMessageSetProfileBanking>& messageSetProfileBanking() const noexcept {
        return messageSetProfileBanking_;
    }
    void setMessageSetProfileBanking(std::shared_ptr<TvOFXMessageSetProfileBanking> profile) noexcept {
        messageSetProfileBanking_ = std::move(profile);
    }
    const std::shared_ptr<TvOFXMessageSetProfileCreditCard>& messageSetProfileCreditCard() const noexcept {
        return messageSetProfileCreditCard_;
    }
    void setMessageSetProfileCreditCard(std::shared_ptr<TvOFXMessageSetProfileCreditCard> profile) noexcept {
        messageSetProfileCreditCard_ = std::move(profile);
    }
    /// @}
    /// @{
    /// The realms in document order. A profile that was read has at least one here or no list at all.
    const std::optional<std::vector<std::shared_ptr<TvOFXSignOnInfo>>>& signonInfoList() const noexcept {
        return signonInfoList_;
    }
    void setSignonInfoList(std::optional<std::vector<std::shared_ptr<TvOFXSignOnInfo>>> list) noexcept {
        signonInfoList_ = std::move(list);
    }
    /// @}
    /// @{
    /// The last change of the profile (DTPROFUP).
    std::optional<Date> updateTime() const noexcept { return updateTime_; }
    void setUpdateTime(std::optional<Date> date) noexcept { updateTime_ = date; }
    /// @}
    /// @{
    /// FINAME, CITY, STATE, POSTALCODE and COUNTRY; the address has the lines ADDR1 to ADDR3 with line feeds
    /// between them, and is absent without the first.
    OptionalText fiName() const noexcept { return texts_.get(fiName_); }
    void setFiName(TextArgument text) { texts_.set(fiName_, text); }
    OptionalText address() const noexcept { return texts_.get(address_); }
    void setAddress(TextArgument text) { texts_.set(address_, text); }
    OptionalText city() const noexcept { return texts_.get(city_); }
    void setCity(TextArgument text) { texts_.set(city_, text); }
    OptionalText state() const noexcept { return texts_.get(state_); }
    void setState(TextArgument text) { texts_.set(state_, text); }
    OptionalText postalCode() const noexcept { return texts_.get(postalCode_); }
    void setPostalCode(TextArgument text) { texts_.set(postalCode_, text); }
    OptionalText country() const noexcept { return texts_.get(country_); }
    void setCountry(TextArgument text) { texts_.set(country_, text); }
    /// @}
    /// @{
    /// How to reach the institution: CSPHONE, TSPHONE, FAXPHONE, URL and EMAIL.
    OptionalText customerServicePhoneNumber() const noexcept {
        return texts_.get(customerServicePhoneNumber_);
    }
    void setCustomerServicePhoneNumber(TextArgument text) { texts_.set(customerServicePhoneNumber_, text); }
    OptionalText technicalSupportPhoneNumber() const noexcept {
        return texts_.get(technicalSupportPhoneNumber_);
    }
    void setTechnicalSupportPhoneNumber(TextArgument text) { texts_.set(technicalSupportPhoneNumber_, text); }
    OptionalText faxNumber() const noexcept { return texts_.get(faxNumber_); }
    void setFaxNumber(TextArgument text) { texts_.set(faxNumber_, text); }
    OptionalText informationURL() const noexcept { return texts_.get(informationURL_); }
    void setInformationURL(TextArgument text) { texts_.set(informationURL_, text); }
    OptionalText email() const noexcept { return texts_.get(email_); }
    void setEmail(TextArgument text) { texts_.set(email_, text); }
    /// @}

private:
    struct Elements;
    enum Text : std::size_t {
        fiName_,
        address_,
        city_,
        state_,
        postalCode_,
        country_,
        customerServicePhoneNumber_,
        technicalSupportPhoneNumber_,
        faxNumber_,
        informationURL_,
        email_,
        textCount
    };
    std::shared_ptr<TvOFXMessageSetProfileSignOn> messageSetProfileSignOn_;
    std::shared_ptr<TvOFXMessageSetProfileSignUp> messageSetProfileSignUp_;
    std::shared_ptr<TvOFXMessageSetProfileBanking> messageSetProfileBanking_;
    std::shared_ptr<TvOFXMessageSetProfileCreditCard> messageSetProfileCreditCard_;
    std::optional<std::vector<std::shared_ptr<TvOFXSignOnInfo>>> signonInfoList_;
    std::optional<Date> updateTime_;
    internal::TextFields<textCount> texts_;
};

/// The number of a message set, for TvOFXFIProfile::profileForMessageSet.
enum TvOFXMessageSetType : std::uint64_t {
    TvOFXMessageSetTypeSignOn = 1,      ///< signing on
    TvOFXMessageSetTypeSignUp = 2,      ///< enrolment and account information
    TvOFXMessageSetTypeBanking = 3,     ///< bank accounts
    TvOFXMessageSetTypeCreditCard = 4,  ///< card accounts
};

/// A profile for an application: answers what the institution offers, and turns into bytes and back.
/// Without a response every answer is nothing or false.
class BRACKWELL_EXPORT TvOFXFIProfile final {
public:
    /// No response.
    TvOFXFIProfile() noexcept = default;

    /// Keeps the response; null is none.
    static std::shared_ptr<TvOFXFIProfile> initWithProfileResponse(
        std::shared_ptr<TvOFXFIProfileResponse> response);
    /// Restores what `data` wrote. Repeated leaves (LANGUAGE, PROCDAYSOFF) are lost on the way, and since
    /// texts are written without escapes, one with "<" comes back cut off there and may take the fields after
    /// it along, and one that reads like an entity ("&lt;") as another: intended. A text with a close tag in
    /// it
    /// ("</b>") makes bytes that do not parse; these give a profile whose response has no fields and no
    /// originalParseData.
    ///
    /// To see beforehand that all comes back, compare the originalParseData of the response with that of the
    /// response restored. A keyed archive of the response (TvOFXAggregate::encodeWithCoder) gives everything
    /// back; TvOFXUserAccountInfo shows both.
    static std::shared_ptr<TvOFXFIProfile> initWithData(const std::optional<Data>& data);

    /// The response's description; "TvOFXFIProfile" without a response.
    std::string description() const;
    /// The response's ofxString as UTF-8; nothing without a response.
    std::optional<Data> data() const;
    /// The response; null when there is none.
    const std::shared_ptr<TvOFXFIProfileResponse>& fiProfileResponse() const noexcept {
        return fiProfileResponse_;
    }
    /// The response's name of the institution; valid as long as there.
    OptionalText fiName() const noexcept;

    /// @{
    /// True when the profile has the message set.
    bool supportsSignUp() const noexcept { return messageSetProfileSignUp() != nullptr; }
    bool supportsBanking() const noexcept { return messageSetProfileBanking() != nullptr; }
    /// @}
    /// @{
    /// These are false whatever the profile says, also for cards with a card message set: intended.
    bool supportsCreditCardStatements() const noexcept { return false; }
    bool supportsInvestmentStatements() const noexcept { return false; }
    bool supportsInterbankFundsTransfer() const noexcept { return false; }
    bool supportsWireFundsTransfer() const noexcept { return false; }
    bool supportsPayments() const noexcept { return false; }
    bool supportsGeneralEMail() const noexcept { return false; }
    bool supportsInvestmentSecurityList() const noexcept { return false; }
    /// @}

    /// The message set with a number of TvOFXMessageSetType; null for any other number.
    std::shared_ptr<TvOFXMessageSetProfile> profileForMessageSet(std::uint64_t messageSet) const noexcept;
    /// The same for a name of it.
    std::shared_ptr<TvOFXMessageSetProfile> profileForMessageSet(
        TvOFXMessageSetType messageSet) const noexcept {
        return profileForMessageSet(static_cast<std::uint64_t>(messageSet));
    }
    /// @{
    /// The response's message sets; null when it has none, or there is no response.
    std::shared_ptr<TvOFXMessageSetProfileSignOn> messageSetProfileSignOn() const noexcept;
    std::shared_ptr<TvOFXMessageSetProfileSignUp> messageSetProfileSignUp() const noexcept;
    std::shared_ptr<TvOFXMessageSetProfileBanking> messageSetProfileBanking() const noexcept;
    std::shared_ptr<TvOFXMessageSetProfileCreditCard> messageSetProfileCreditCard() const noexcept;
    /// @}

private:
    std::shared_ptr<TvOFXFIProfileResponse> fiProfileResponse_;
};

}  // namespace brackwell
