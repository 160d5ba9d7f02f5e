// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

#include <memory>
#include <vector>

#include "message/response_as.h"

namespace brackwell::opening {

/// The response as a bank or card statement; null when it is neither.
inline const TvOFXAccountStatement* statementIn(const TvOFXResponse& response) noexcept {
    if (const auto* bank = responseAs<TvOFXStatementResponse>(response)) return bank;
    return responseAs<TvOFXCCStatementResponse>(response);
}

/// The responses of a document that the findings examine. Finding out the class of a response takes
/// noticeable time in a small document, so it is done once.
struct KnownResponses {
    KnownResponses() = default;
    explicit KnownResponses(const TvOFXResponseList& all) {
        for (const auto& response : all)
            if (statementIn(*response) != nullptr)
                statements.push_back(std::static_pointer_cast<TvOFXAccountStatement>(response));
            else if (const auto* const list = responseAs<TvOFXAccountInfoResponse>(*response))
                accountLists.push_back(list);
    }

    std::vector<std::shared_ptr<TvOFXAccountStatement>> statements;  ///< of banks and cards
    std::vector<const TvOFXAccountInfoResponse*> accountLists;
};

}  // namespace brackwell::opening
