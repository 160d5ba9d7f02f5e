// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include <utility>

namespace brackwell {

std::shared_ptr<TvOFXUserAccountInfo> TvOFXUserAccountInfo::init() {
    return initWithAccountInfoResponse(nullptr);
}

std::shared_ptr<TvOFXUserAccountInfo> TvOFXUserAccountInfo::initWithAccountInfoResponse(
    std::shared_ptr<TvOFXAccountInfoResponse> response) {
    auto info = std::make_shared<TvOFXUserAccountInfo>();
    info->acctInfoResponse_ = std::move(response);
    if (const auto* records = info->allAccountInfos()) {
        info->accounts_.reserve(records->size());
        for (const auto& record : *records)
            info->accounts_.push_back(TvOFXAccount::initWithAccountInfos(record));
    }
    return info;
}

std::shared_ptr<TvOFXUserAccountInfo> TvOFXUserAccountInfo::initWithData(const std::optional<Data>& data) {
    // data() below wrote the children of the response without the response's own tags, and without a header.
    return initWithAccountInfoResponse(
        TvOFXAccountInfoResponse::initWithParseDict(TvOFXParser(data).parseDataAndIgnoreOfxHeader()));
}

std::optional<Data> TvOFXUserAccountInfo::data() const {
    if (!acctInfoResponse_) return std::nullopt;
    return Data::adopt(acctInfoResponse_->ofxString());
}

const std::vector<std::shared_ptr<TvOFXAccountInfo>>* TvOFXUserAccountInfo::allAccountInfos() const noexcept {
    return acctInfoResponse_ ? &acctInfoResponse_->accountInfos() : nullptr;
}

}  // namespace brackwell
