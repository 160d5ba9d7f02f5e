// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The message sets in an institution's profile (profile.h): what the institution offers, where the
/// requests go, and how they are secured. Flags are true only for the exact text "Y".
///
///     #include <brackwell/profile.h>
///     if (auto banking = profile->messageSetProfileBanking())
///         if (banking->messageSetCore()) connect(banking->messageSetCore()->url().value_or(""));

#include <brackwell/internal/text_fields.h>
#include <brackwell/model.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brackwell {

/// The values of an element that may repeat; absent and empty are different. The values are those of
/// the document, whatever their kind.
using OptionalList = std::optional<std::vector<ParseValue>>;

/// How requests of a message set are secured (OFXSEC). Any other text, or no text, gives None.
enum TvOFXMessageSetSecurity : std::int32_t {
    TvOFXMessageSetSecurityNone = 0,   ///< NONE
    TvOFXMessageSetSecurityType1 = 1,  ///< TYPE1, also as "TYPE 1"
};

/// How a message set synchronises (SYNCMODE). Any other text, or no text, gives Unknown.
enum TvOFXSyncMode : std::int32_t {
    TvOFXSyncModeUnknown = 0,  ///< neither of the others, or not said
    TvOFXSyncModeLite = 1,     ///< LITE
    TvOFXSyncModeFull = 2,     ///< FULL
};

/// What every message set of a profile says (MSGSETCORE): where its requests go, and how.
class BRACKWELL_EXPORT TvOFXMessageSetCore final
    : public AggregateClass<TvOFXMessageSetCore, TvOFXAggregate> {
public:
    TvOFXMessageSetCore() noexcept = default;

    /// Reads an MSGSETCORE node.
    explicit TvOFXMessageSetCore(const std::optional<ParseDictionary>& node);
    /// One line: "MessageSetCore:", then the fields; texts only when they are not empty, a version only
    /// above 0, languages only when there are some.
    std::string description() const override;
    std::string_view className() const noexcept override;

    /// @{
    /// The version of the message set (VER) and the name of the provider that serves it (SPNAME).
    std::int64_t version() const noexcept { return version_; }
    void setVersion(std::int64_t version) noexcept { version_ = version; }
    OptionalText serviceProviderName() const noexcept { return texts_.get(serviceProviderName_); }
    void setServiceProviderName(TextArgument text) { texts_.set(serviceProviderName_, text); }
    /// @}
    /// @{
    /// The address that requests of the set go to (URL), and how they are secured: by OFX (OFXSEC), and by
    /// the transport (TRANSPSEC).
    OptionalText url() const noexcept { return texts_.get(url_); }
    void setUrl(TextArgument text) { texts_.set(url_, text); }
    TvOFXMessageSetSecurity security() const noexcept { return security_; }
    void setSecurity(TvOFXMessageSetSecurity security) noexcept { security_ = security; }
    bool usesTransportLevelSecurity() const noexcept { return usesTransportLevelSecurity_; }
    void setUsesTransportLevelSecurity(bool uses) noexcept { usesTransportLevelSecurity_ = uses; }
    /// @}
    /// @{
    /// The name of the realm whose rules hold, as in TvOFXSignOnInfo; not resolved.
    OptionalText signonRealm() const noexcept { return texts_.get(signonRealm_); }
    void setSignonRealm(TextArgument text) { texts_.set(signonRealm_, text); }
    /// @}
    /// @{
    /// The languages that the server answers in (LANGUAGE), in document order.
    const OptionalList& languages() const noexcept { return languages_; }
    void setLanguages(OptionalList languages) noexcept { languages_ = std::move(languages); }
    /// @}
    /// @{
    /// How the set synchronises (SYNCMODE), and whether the server recovers from errors by response files
    /// (RESPFILEER).
    TvOFXSyncMode syncMode() const noexcept { return syncMode_; }
    void setSyncMode(TvOFXSyncMode mode) noexcept { syncMode_ = mode; }
    bool supportsErrorRecovery() const noexcept { return supportsErrorRecovery_; }
    void setSupportsErrorRecovery(bool supports) noexcept { supportsErrorRecovery_ = supports; }
    /// @}

private:
    struct Elements;
    enum Text : std::size_t { serviceProviderName_, url_, signonRealm_, textCount };
    std::int64_t version_ = 0;
    internal::TextFields<textCount> texts_;
    OptionalList languages_;
    TvOFXMessageSetSecurity security_ = TvOFXMessageSetSecurityNone;
    TvOFXSyncMode syncMode_ = TvOFXSyncModeUnknown;
    bool usesTransportLevelSecurity_ = false;
    bool supportsErrorRecovery_ = false;
};

/// One message set that the institution supports: its core, and in subclasses its own options.
class BRACKWELL_EXPORT TvOFXMessageSetProfile
    : public AggregateClass<TvOFXMessageSetProfile, TvOFXAggregate> {
public:
    TvOFXMessageSetProfile() noexcept = default;

    /// Reads the core of a message set's node.
    explicit TvOFXMessageSetProfile(const std::optional<ParseDictionary>& node);
    /// The class's name and ":" on a line, then the core's description; nothing of a subclass's own.
    std::string description() const override;
    std::string_view className() const noexcept override;

    /// @{
    /// What every message set says (MSGSETCORE); null when the document has none.
    const std::shared_ptr<TvOFXMessageSetCore>& messageSetCore() const noexcept { return messageSetCore_; }
    void setMessageSetCore(std::shared_ptr<TvOFXMessageSetCore> core) noexcept {
        messageSetCore_ = std::move(core);
    }
    /// @}

private:
    std::shared_ptr<TvOFXMessageSetCore> messageSetCore_;
};

/// The banking message set (BANKMSGSETV1).
class BRACKWELL_EXPORT TvOFXMessageSetProfileBanking final
    : public AggregateClass<TvOFXMessageSetProfileBanking, TvOFXMessageSetProfile> {
public:
    TvOFXMessageSetProfileBanking() noexcept = default;

    /// Reads a BANKMSGSETV1 node.
    explicit TvOFXMessageSetProfileBanking(const std::optional<ParseDictionary>& node);
    /// The base's text, then each option on a line. "supports supports email" is intended.
    std::string description() const override;
    std::string_view className() const noexcept override;

    /// @{
    /// Whether closing statements are available (CLOSINGAVAIL).
    bool closingStatementInformationAvailable() const noexcept {
        return closingStatementInformationAvailable_;
    }
    void setClosingStatementInformationAvailable(bool available) noexcept {
        closingStatementInformationAvailable_ = available;
    }
    /// @}
    /// @{
    /// The days on which no transfers are processed (PROCDAYSOFF), in document order.
    const OptionalList& noProcessingDays() const noexcept { return noProcessingDays_; }
    void setNoProcessingDays(OptionalList days) noexcept { noProcessingDays_ = std::move(days); }
    /// @}
    /// @{
    /// The time of day after which transfers wait for the next day (PROCENDTM); not converted.
    OptionalText processingEndTime() const noexcept { return texts_.get(processingEndTime_); }
    void setProcessingEndTime(TextArgument text) { texts_.set(processingEndTime_, text); }
    /// @}
    /// @{
    /// Whether transfers can be scheduled (CANSCHED), repeated (CANRECUR) and changed (CANMODXFERS), and the
    /// models of repeated ones changed (CANMODMDLS).
    bool supportsScheduledTransfers() const noexcept { return supportsScheduledTransfers_; }
    void setSupportsScheduledTransfers(bool supports) noexcept { supportsScheduledTransfers_ = supports; }
    bool supportsRecurringTransfers() const noexcept { return supportsRecurringTransfers_; }
    void setSupportsRecurringTransfers(bool supports) noexcept { supportsRecurringTransfers_ = supports; }
    bool supportsModifyTransfers() const noexcept { return supportsModifyTransfers_; }
    void setSupportsModifyTransfers(bool supports) noexcept { supportsModifyTransfers_ = supports; }
    bool supportsModifyModels() const noexcept { return supportsModifyModels_; }
    void setSupportsModifyModels(bool supports) noexcept { supportsModifyModels_ = supports; }
    /// @}
    /// @{
    /// How many days before its date a recurring transfer is made (MODELWND).
    std::int64_t modelWindow() const noexcept { return modelWindow_; }
    void setModelWindow(std::int64_t days) noexcept { modelWindow_ = days; }
    /// @}
    /// @{
    /// How many days before processing money is withdrawn (DAYSWITH), and how many days a payment takes by
    /// default (DFLTDAYSTOPAY).
    std::int64_t daysWith() const noexcept { return daysWith_; }
    void setDaysWith(std::int64_t days) noexcept { daysWith_ = days; }
    std::int64_t defaultNumberOfDaysToPay() const noexcept { return defaultNumberOfDaysToPay_; }
    void setDefaultNumberOfDaysToPay(std::int64_t days) noexcept { defaultNumberOfDaysToPay_ = days; }
    /// @}
    /// @{
    /// Whether messages on banking (CANEMAIL) and notifications (CANNOTIFY) are supported.
    bool supportsEMail() const noexcept { return supportsEMail_; }
    void setSupportsEMail(bool supports) noexcept { supportsEMail_ = supports; }
    bool supportsNotification() const noexcept { return supportsNotification_; }
    void setSupportsNotification(bool supports) noexcept { supportsNotification_ = supports; }
    /// @}

private:
    struct Elements;
    /// The account types without support and the options on stopping checks are reserved: never filled
    /// and not reachable, intended.
    enum Text : std::size_t {
        processingEndTime_,
        stopCheckProcessingEndTime_,
        defaultStopCheckFee_,
        textCount
    };
    internal::TextFields<textCount> texts_;
    OptionalList unsupportedAccountTypes_;
    OptionalList noProcessingDays_;
    [[maybe_unused]] OptionalList stopCheckNoProcessingDays_;
    std::int64_t modelWindow_ = 0;
    std::int64_t daysWith_ = 0;
    std::int64_t defaultNumberOfDaysToPay_ = 0;
    bool closingStatementInformationAvailable_ = false;
    bool supportsScheduledTransfers_ = false;
    bool supportsRecurringTransfers_ = false;
    bool supportsModifyTransfers_ = false;
    bool supportsModifyModels_ = false;
    [[maybe_unused]] bool canStopRangeOfChecks_ = false;
    [[maybe_unused]] bool canStopByDescription_ = false;
    bool supportsEMail_ = false;
    bool supportsNotification_ = false;
};

/// The card message set (CREDITCARDMSGSETV1).
class BRACKWELL_EXPORT TvOFXMessageSetProfileCreditCard final
    : public AggregateClass<TvOFXMessageSetProfileCreditCard, TvOFXMessageSetProfile> {
public:
    TvOFXMessageSetProfileCreditCard() noexcept = default;

    /// Reads a CREDITCARDMSGSETV1 node.
    explicit TvOFXMessageSetProfileCreditCard(const std::optional<ParseDictionary>& node);
    std::string_view className() const noexcept override;

    /// @{
    /// Whether closing statements are available (CLOSINGAVAIL).
    bool closingStatementInformationAvailable() const noexcept {
        return closingStatementInformationAvailable_;
    }
    void setClosingStatementInformationAvailable(bool available) noexcept {
        closingStatementInformationAvailable_ = available;
    }
    /// @}

private:
    bool closingStatementInformationAvailable_ = false;
};

/// The sign-on message set (SIGNONMSGSETV1), which has only its core.
class BRACKWELL_EXPORT TvOFXMessageSetProfileSignOn final
    : public AggregateClass<TvOFXMessageSetProfileSignOn, TvOFXMessageSetProfile> {
public:
    /// As the base is made.
    using AggregateClass::AggregateClass;

    /// Reads a SIGNONMSGSETV1 node.
    std::string_view className() const noexcept override;
};

/// The sign-up message set (SIGNUPMSGSETV1): how users enrol, and what they may change.
class BRACKWELL_EXPORT TvOFXMessageSetProfileSignUp final
    : public AggregateClass<TvOFXMessageSetProfileSignUp, TvOFXMessageSetProfile> {
public:
    TvOFXMessageSetProfileSignUp() noexcept = default;

    /// Reads a SIGNUPMSGSETV1 node.
    explicit TvOFXMessageSetProfileSignUp(const std::optional<ParseDictionary>& node);
    std::string_view className() const noexcept override;

    /// Whether enrolling from a client takes an account; absent when the profile does not say, so that
    /// this differs from "N".
    std::optional<bool> clientEnrollAccountRequired() const noexcept { return clientEnrollAccountRequired_; }
    /// The address to enrol at, or the message on enrolling in another way, whichever comes last:
    /// intended.
    OptionalText webEnrollUrl() const noexcept { return texts_.get(webEnrollUrl_); }
    /// Always nothing: intended. The message stands in webEnrollUrl.
    OptionalText otherEnrollMessage() const noexcept { return std::nullopt; }
    /// @{
    /// Whether users may change their details from a client (CHGUSERINFO), the server tells their accounts
    /// (AVAILACCTS), and services may be asked for (CLIENTACTREQ).
    bool serverSupportsClientBasedUserInformationChange() const noexcept {
        return serverSupportsClientBasedUserInformationChange_;
    }
    bool serverProvidesAccountInfos() const noexcept { return serverProvidesAccountInfos_; }
    bool serverAllowsServiceActivationRequest() const noexcept {
        return serverAllowsServiceActivationRequest_;
    }
    /// @}

private:
    struct Elements;
    enum Text : std::size_t { webEnrollUrl_, textCount };
    internal::TextFields<textCount> texts_;
    std::optional<bool> clientEnrollAccountRequired_;
    bool serverSupportsClientBasedUserInformationChange_ = false;
    bool serverProvidesAccountInfos_ = false;
    bool serverAllowsServiceActivationRequest_ = false;
};

}  // namespace brackwell
