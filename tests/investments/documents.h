// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>
#include <doctest/doctest.h>

#include <string>

#include "support/documents.h"

/// \file
/// Investment documents for tests.

namespace brackwell::tests {

/// The statements of a body that must parse.
inline std::vector<InvestmentStatement> statementsOf(const std::string& body,
                                                     const std::shared_ptr<TvOFXHelper>& helper = nullptr) {
    return investmentStatements(parsed(body), helper);
}

/// The only statement of one with such a content.
inline InvestmentStatement statementWith(const std::string& content,
                                         const std::shared_ptr<TvOFXHelper>& helper = nullptr) {
    const auto statements = statementsOf("<OFX><INVSTMTMSGSRSV1><INVSTMTTRNRS><INVSTMTRS>" + content +
                                             "</INVSTMTRS></INVSTMTTRNRS></INVSTMTMSGSRSV1></OFX>",
                                         helper);
    REQUIRE(statements.size() == 1);
    return statements.front();
}

/// The first transaction of a list with such a content.
inline InvestmentTransaction transactionWith(const std::string& content,
                                             const std::shared_ptr<TvOFXHelper>& helper = nullptr) {
    const auto statement = statementWith("<INVTRANLIST>" + content + "</INVTRANLIST>", helper);
    REQUIRE_FALSE(statement.transactions().isEmpty());
    return statement.transactions()[0];
}

/// The first position of a list with such a content.
inline Position positionWith(const std::string& content) {
    const auto statement = statementWith("<INVPOSLIST>" + content + "</INVPOSLIST>");
    REQUIRE_FALSE(statement.positions().isEmpty());
    return statement.positions()[0];
}

/// The securities of a list with such a content.
inline std::vector<Security> securitiesWith(const std::string& content) {
    return securities(
        parsed("<OFX><SECLISTMSGSRSV1><SECLIST>" + content + "</SECLIST></SECLISTMSGSRSV1></OFX>"));
}

}  // namespace brackwell::tests
