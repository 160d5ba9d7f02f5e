// SPDX-License-Identifier: Apache-2.0
#include "filter/searched_text.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "accounts/account_number.h"
#include "text/folded_case.h"

namespace tool {

using brackwell::OptionalText;

void appendSearchedText(std::string& text, OptionalText field) {
    if (!field) return;
    appendFoldedCase(text, *field);
    text += '\n';
}

void appendSearchedText(std::string& text, const brackwell::TvOFXStatementTransaction& transaction) {
    const auto payee = transaction.payee();
    const auto bankAccount = transaction.bankAccountTo();
    const auto cardAccount = transaction.creditCardAccountTo();
    for (const OptionalText& field :
         {transaction.payeeName(), payee ? payee->name() : std::nullopt, transaction.memo(),
          transaction.fiTransactionID(), transaction.checkOrReferenceNumber(), transaction.referenceNumber(),
          transaction.serverTransactionID(), transaction.correctionFITID(), transaction.payeeID(),
          accountNumber(bankAccount.get()), accountNumber(cardAccount.get())})
        appendSearchedText(text, field);
}

bool hasAllWords(const std::string& text, const std::vector<std::string>& words) noexcept {
    return std::ranges::all_of(words,
                               [&text](const std::string& word) { return text.find(word) != text.npos; });
}

}  // namespace tool
