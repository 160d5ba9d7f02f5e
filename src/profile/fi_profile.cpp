// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>

namespace brackwell {

std::shared_ptr<TvOFXFIProfile> TvOFXFIProfile::initWithProfileResponse(
    std::shared_ptr<TvOFXFIProfileResponse> response) {
    auto profile = std::make_shared<TvOFXFIProfile>();
    profile->fiProfileResponse_ = std::move(response);
    return profile;
}

std::shared_ptr<TvOFXFIProfile> TvOFXFIProfile::initWithData(const std::optional<Data>& data) {
    // data() below wrote the children of the response without the response's own tags, and without a header.
    return initWithProfileResponse(
        TvOFXFIProfileResponse::initWithParseDict(TvOFXParser(data).parseDataAndIgnoreOfxHeader()));
}

std::string TvOFXFIProfile::description() const {
    return fiProfileResponse_ ? fiProfileResponse_->description() : "TvOFXFIProfile";
}

std::optional<Data> TvOFXFIProfile::data() const {
    if (!fiProfileResponse_) return std::nullopt;
    return Data::adopt(fiProfileResponse_->ofxString());
}

OptionalText TvOFXFIProfile::fiName() const noexcept {
    return fiProfileResponse_ ? fiProfileResponse_->fiName() : std::nullopt;
}

std::shared_ptr<TvOFXMessageSetProfile> TvOFXFIProfile::profileForMessageSet(
    std::uint64_t messageSet) const noexcept {
    switch (messageSet) {
        case TvOFXMessageSetTypeSignOn:
            return messageSetProfileSignOn();
        case TvOFXMessageSetTypeSignUp:
            return messageSetProfileSignUp();
        case TvOFXMessageSetTypeBanking:
            return messageSetProfileBanking();
        case TvOFXMessageSetTypeCreditCard:
            return messageSetProfileCreditCard();
        default:
            return nullptr;
    }
}

std::shared_ptr<TvOFXMessageSetProfileSignOn> TvOFXFIProfile::messageSetProfileSignOn() const noexcept {
    return fiProfileResponse_ ? fiProfileResponse_->messageSetProfileSignOn() : nullptr;
}

std::shared_ptr<TvOFXMessageSetProfileSignUp> TvOFXFIProfile::messageSetProfileSignUp() const noexcept {
    return fiProfileResponse_ ? fiProfileResponse_->messageSetProfileSignUp() : nullptr;
}

std::shared_ptr<TvOFXMessageSetProfileBanking> TvOFXFIProfile::messageSetProfileBanking() const noexcept {
    return fiProfileResponse_ ? fiProfileResponse_->messageSetProfileBanking() : nullptr;
}

std::shared_ptr<TvOFXMessageSetProfileCreditCard> TvOFXFIProfile::messageSetProfileCreditCard()
    const noexcept {
    return fiProfileResponse_ ? fiProfileResponse_->messageSetProfileCreditCard() : nullptr;
}

}  // namespace brackwell
