// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The requests that an application sends: account information, institution profile, challenge.
/// A request renders itself as OFX text with ofxString; the sign-on aggregate, the message-set
/// wrapper, the header and the sending are the application's.
///
///     auto request = brackwell::TvOFXAccountInfoRequest::initWithUpdateDateTime("20240101");
///     request->setOfxVersion(211);
///     send(request->ofxString());

#include <brackwell/model.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace brackwell {

/// The base of all requests.
class BRACKWELL_EXPORT TvOFXRequest : public AggregateClass<TvOFXRequest, TvOFXAggregate> {
public:
    /// A request without wrapper name and transaction UID.
    TvOFXRequest() = default;
    /// @{
    /// A request inside a wrapper ("ACCTINFOTRNRQ"), with a fresh transaction UID.
    explicit TvOFXRequest(std::string_view transactionWrapperName);
    static std::shared_ptr<TvOFXRequest> initWithTransactionWrapperName(std::string_view name);
    /// @}
    std::string_view className() const noexcept override;

    /// A new random UUID in its 36-character upper-case form.
    static std::string generateUUID();
    /// The TRNUID, made once at construction; nothing when there is no wrapper.
    OptionalText transactionUID() const noexcept { return transactionUID_; }
    /// The wrapper's name; nothing when there is none.
    OptionalText transactionWrapperName() const noexcept { return transactionWrapperName_; }
    /// The request element's name ("PROFRQ"); the base answers "request id missing".
    virtual std::string_view requestIdentifier() const noexcept;
    /// A name for people; the base answers "request name missing".
    virtual std::string_view humanReadableName() const noexcept;

protected:
    /// The lines of a wrapped request: wrapper, TRNUID and the request element around `leaves`, which
    /// are names with values. Leaves are closed when ofxVersion is 200 or more.
    std::string wrappedText(
        std::initializer_list<std::pair<std::string_view, std::string_view>> leaves) const;

private:
    std::optional<std::string> transactionUID_;
    std::optional<std::string> transactionWrapperName_;
};

/// Asks for the user's accounts that changed since a date (ACCTINFORQ).
class BRACKWELL_EXPORT TvOFXAccountInfoRequest final
    : public AggregateClass<TvOFXAccountInfoRequest, TvOFXRequest> {
public:
    /// The wrapper of this kind is fixed.
    static std::shared_ptr<TvOFXRequest> initWithTransactionWrapperName(std::string_view) = delete;
    std::string ofxString() const override;
    std::string_view className() const noexcept override;

    /// @{
    /// The date is used as it stands, neither checked nor reformatted; nothing gives "19900101".
    static std::shared_ptr<TvOFXAccountInfoRequest> initWithUpdateDateTime(
        TextArgument updateDateTime = std::nullopt);
    explicit TvOFXAccountInfoRequest(TextArgument updateDateTime = std::nullopt);
    const std::string& dateTimeAccountUpdate() const noexcept { return dateTimeAccountUpdate_; }
    /// @}
    std::string_view requestIdentifier() const noexcept override;
    std::string_view humanReadableName() const noexcept override;

private:
    std::string dateTimeAccountUpdate_;
};

/// Asks for the institution's profile as changed since a date (PROFRQ).
class BRACKWELL_EXPORT TvOFXFIProfileRequest final
    : public AggregateClass<TvOFXFIProfileRequest, TvOFXRequest> {
public:
    /// The wrapper of this kind is fixed.
    static std::shared_ptr<TvOFXRequest> initWithTransactionWrapperName(std::string_view) = delete;
    /// The same as ofxString.
    std::string description() const override;
    std::string ofxString() const override;
    std::string_view className() const noexcept override;

    /// @{
    /// The date is used as it stands, neither checked nor reformatted; nothing gives "19900101".
    static std::shared_ptr<TvOFXFIProfileRequest> initWithUpdateDateTime(
        TextArgument updateDateTime = std::nullopt);
    explicit TvOFXFIProfileRequest(TextArgument updateDateTime = std::nullopt);
    const std::string& dateTimeProfileUpdate() const noexcept { return dateTimeProfileUpdate_; }
    /// @}
    /// @{
    /// 0 none (the default), 1 service, 2 message set; any other number renders as an empty value.
    std::int32_t clientRouting() const noexcept { return clientRouting_; }
    void setClientRouting(std::int32_t routing) noexcept { clientRouting_ = routing; }
    /// @}
    /// "NONE", "SERVICE", "MSGSET" or "".
    std::string_view clientRoutingString() const noexcept;
    std::string_view requestIdentifier() const noexcept override;
    std::string_view humanReadableName() const noexcept override;

private:
    std::int32_t clientRouting_ = 0;
    std::string dateTimeProfileUpdate_;
};

/// The challenge that precedes a sign-on (CHALLENGERQ). It has a name but no text of its own.
class BRACKWELL_EXPORT TvOFXChallengeRequest final
    : public AggregateClass<TvOFXChallengeRequest, TvOFXRequest> {
public:
    /// The wrapper of this kind is fixed.
    static std::shared_ptr<TvOFXRequest> initWithTransactionWrapperName(std::string_view) = delete;
    TvOFXChallengeRequest() = default;
    std::string_view className() const noexcept override;
    std::string_view requestIdentifier() const noexcept override;
    std::string_view humanReadableName() const noexcept override;
};

}  // namespace brackwell
