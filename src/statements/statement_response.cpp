// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>

#include "reading/element_names.h"

namespace brackwell {
namespace {

constexpr reading::NameID kAccount = reading::element("BANKACCTFROM");

}  // namespace

std::shared_ptr<TvOFXStatementResponse> TvOFXStatementResponse::initWithParseDict(
    const std::optional<ParseDictionary>& node) {
    auto statement = std::make_shared<TvOFXStatementResponse>();
    if (node) statement->parseDictionary(node);
    return statement;
}

std::string_view TvOFXStatementResponse::className() const noexcept { return "TvOFXStatementResponse"; }

std::uint32_t TvOFXStatementResponse::accountElement() const noexcept { return kAccount; }

void TvOFXStatementResponse::readAccount(const ParseDictionary& node) {
    bankAccountFrom_ = TvOFXBankAccount::initWithParserDict(node);
}

}  // namespace brackwell
