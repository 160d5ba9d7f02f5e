// SPDX-License-Identifier: Apache-2.0
#include <brackwell/requests.h>

#include "fields/ofx_text.h"

namespace brackwell {

TvOFXRequest::TvOFXRequest(std::string_view transactionWrapperName)
    : transactionUID_(generateUUID()), transactionWrapperName_(transactionWrapperName) {}

std::shared_ptr<TvOFXRequest> TvOFXRequest::initWithTransactionWrapperName(std::string_view name) {
    return std::make_shared<TvOFXRequest>(name);
}

std::string_view TvOFXRequest::className() const noexcept { return "TvOFXRequest"; }

std::string TvOFXRequest::generateUUID() { return newUUID(); }

// Not an error: a request of a class that names neither shows in the text what is missing.

std::string_view TvOFXRequest::requestIdentifier() const noexcept { return "request id missing"; }

std::string_view TvOFXRequest::humanReadableName() const noexcept { return "request name missing"; }

std::string TvOFXRequest::wrappedText(
    std::initializer_list<std::pair<std::string_view, std::string_view>> leaves) const {
    const std::string_view wrapper = transactionWrapperName().value_or("");
    // Aggregates are closed in every version; only leaves go without close tags before version 2.
    std::string text;
    text.append("<").append(wrapper).append(">\n");
    appendLeaf(text, "TRNUID", transactionUID().value_or(""), ofxVersion());
    text.append("<").append(requestIdentifier()).append(">\n");
    for (const auto& [name, value] : leaves) appendLeaf(text, name, value, ofxVersion());
    text.append("</").append(requestIdentifier()).append(">\n");
    return text.append("</").append(wrapper).append(">\n");
}

}  // namespace brackwell
