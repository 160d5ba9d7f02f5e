// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>

#include "tree/element_names.h"

namespace brackwell {
namespace {

/// Reads after construction, since readAccount() is virtual and a base's constructor would not reach it.
template <class Statement>
std::shared_ptr<Statement> read(const std::optional<ParseDictionary>& node) {
    auto statement = std::make_shared<Statement>();
    if (node) statement->parseDictionary(node);
    return statement;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Of a bank account

std::shared_ptr<TvOFXStatementResponse> TvOFXStatementResponse::initWithParseDict(
    const std::optional<ParseDictionary>& node) {
    return read<TvOFXStatementResponse>(node);
}

std::string_view TvOFXStatementResponse::className() const noexcept { return "TvOFXStatementResponse"; }

std::uint32_t TvOFXStatementResponse::accountElement() const noexcept {
    return reading::element("BANKACCTFROM");
}

void TvOFXStatementResponse::readAccount(const ParseDictionary& node) {
    bankAccountFrom_ = TvOFXBankAccount::initWithParserDict(node);
    bankAccountFrom_->statement_ = this;
}

// ---------------------------------------------------------------------------------------------
// Of a card account

std::shared_ptr<TvOFXCCStatementResponse> TvOFXCCStatementResponse::initWithParseDict(
    const std::optional<ParseDictionary>& node) {
    return read<TvOFXCCStatementResponse>(node);
}

std::string_view TvOFXCCStatementResponse::className() const noexcept { return "TvOFXCCStatementResponse"; }

std::uint32_t TvOFXCCStatementResponse::accountElement() const noexcept {
    return reading::element("CCACCTFROM");
}

void TvOFXCCStatementResponse::readAccount(const ParseDictionary& node) {
    creditCardAccountFrom_ = TvOFXCreditCardAccount::initWithParseDict(node);
    creditCardAccountFrom_->statement_ = this;
}

}  // namespace brackwell
