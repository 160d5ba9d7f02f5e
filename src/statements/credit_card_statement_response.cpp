// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>

#include "reading/element_names.h"

namespace brackwell {
namespace {

constexpr reading::NameID kAccount = reading::element("CCACCTFROM");

}  // namespace

std::shared_ptr<TvOFXCCStatementResponse> TvOFXCCStatementResponse::initWithParseDict(
    const std::optional<ParseDictionary>& node) {
    auto statement = std::make_shared<TvOFXCCStatementResponse>();
    if (node) statement->parseDictionary(node);
    return statement;
}

std::string_view TvOFXCCStatementResponse::className() const noexcept { return "TvOFXCCStatementResponse"; }

std::uint32_t TvOFXCCStatementResponse::accountElement() const noexcept { return kAccount; }

void TvOFXCCStatementResponse::readAccount(const ParseDictionary& node) {
    creditCardAccountFrom_ = TvOFXCreditCardAccount::initWithParseDict(node);
}

}  // namespace brackwell
