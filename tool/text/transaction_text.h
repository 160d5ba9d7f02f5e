// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

#include <memory>
#include <optional>

/// \file
/// What is shown of a transaction where a document may say it in several ways.

namespace tool {

/// The first text that is there and not empty; otherwise the second.
inline brackwell::OptionalText firstOf(brackwell::OptionalText first,
                                       brackwell::OptionalText second) noexcept {
    return first && !first->empty() ? first : second;
}

/// That of the cheque, or the reference.
inline brackwell::OptionalText numberOf(const brackwell::TvOFXStatementTransaction& transaction) noexcept {
    return firstOf(transaction.checkOrReferenceNumber(), transaction.referenceNumber());
}

/// The name of the payee, which may have an aggregate of its own.
inline brackwell::OptionalText payeeOf(const brackwell::TvOFXStatementTransaction& transaction) {
    const std::shared_ptr<brackwell::TvOFXPayee> payee = transaction.payee();
    return firstOf(transaction.payeeName(), payee ? payee->name() : std::nullopt);
}

/// The text of the amount in the document.
inline brackwell::OptionalText writtenAmountOf(const brackwell::TvOFXStatementTransaction& transaction) {
    const auto& node = transaction.originalParseData();
    return node ? (*node)["TRNAMT"].text() : std::nullopt;
}

/// What a transaction is called: by its payee, or else by its memo, in which many institutions name him.
inline brackwell::OptionalText payeeOrMemoOf(const brackwell::TvOFXStatementTransaction& transaction) {
    return firstOf(payeeOf(transaction), transaction.memo());
}

}  // namespace tool
