// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>
#include <brackwell/statements.h>

#include "memory/make_room.h"

namespace brackwell {
namespace {

/// An error is for the application to handle; what remains is what the institution wants to tell its
/// customer.
bool isMessageForUser(const TvOFXStatus& status) noexcept {
    return status.severity() != "ERROR" && status.message() && !status.message()->empty();
}

}  // namespace

std::shared_ptr<TvOFXResult> TvOFXResult::initWithResultObjects(TvOFXResponseList responses) {
    return std::make_shared<TvOFXResult>(std::move(responses));
}

TvOFXResult::TvOFXResult(TvOFXResponseList responses) : ofxResponseObjects_(std::move(responses)) {
    createMessagesArrayFromStatusObjects();
}

std::shared_ptr<TvOFXStatementResponse> TvOFXResult::balance() const {
    for (const auto& response : ofxResponseObjects_)
        if (auto statement = std::dynamic_pointer_cast<TvOFXStatementResponse>(response)) return statement;
    return nullptr;
}

const std::vector<std::shared_ptr<TvOFXStatementTransaction>>* TvOFXResult::transactions() const {
    const auto statement = balance();
    return statement ? &statement->statementTransactions() : nullptr;
}

void TvOFXResult::createMessagesArrayFromStatusObjects() {
    std::vector<std::shared_ptr<TvOFXFIMessage>> made;
    for (const auto& response : ofxResponseObjects_)
        if (response && response->status() && isMessageForUser(*response->status()))
            made.push_back(TvOFXFIMessage::initWithOFXResponse(*response));
    // Room for all first, so that the list gets all messages or none.
    makeRoom(allFIMessages_, made.size());
    for (auto& message : made) allFIMessages_.push_back(std::move(message));
}

}  // namespace brackwell
