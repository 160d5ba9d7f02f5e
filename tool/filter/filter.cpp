// SPDX-License-Identifier: Apache-2.0
#include "filter/filter.h"

#include <algorithm>

#include "account_number.h"
#include "text/folded_case.h"

namespace tool {
namespace {

using brackwell::OptionalText;
using Transaction = brackwell::TvOFXStatementTransaction;

bool isPostedIn(const Filter& filter, const Transaction& transaction) noexcept {
    if (!filter.since && !filter.before) return true;
    const auto date = transaction.datePosted();
    return date && (!filter.since || *date >= *filter.since) && (!filter.before || *date < *filter.before);
}

/// What can be looked for in a transaction, in folded case. Between the texts stands a line feed, which
/// is in no word.
void writeSearchedText(std::string& text, const Transaction& transaction) {
    const auto payee = transaction.payee();
    const auto bankAccount = transaction.bankAccountTo();
    const auto cardAccount = transaction.creditCardAccountTo();
    text.clear();
    for (const OptionalText& field :
         {transaction.payeeName(), payee ? payee->name() : std::nullopt, transaction.memo(),
          transaction.fiTransactionID(), transaction.checkOrReferenceNumber(), transaction.referenceNumber(),
          transaction.serverTransactionID(), transaction.correctionFITID(), transaction.payeeID(),
          accountNumber(bankAccount.get()), accountNumber(cardAccount.get())}) {
        if (!field) continue;
        appendFoldedCase(text, *field);
        text += '\n';
    }
}

/// Whether the first comes before the second; what is absent comes last.
template <class Value>
bool comesBefore(const std::optional<Value>& first, const std::optional<Value>& second) noexcept {
    return first && (!second || *first < *second);
}

void sort(Filter::Transactions& transactions, Order order) {
    if (order == Order::date)
        std::ranges::stable_sort(transactions, comesBefore<brackwell::Date>, &Transaction::datePosted);
    if (order == Order::amount)
        std::ranges::stable_sort(transactions, comesBefore<brackwell::Decimal>, &Transaction::amount);
}

}  // namespace

bool Filter::takesAccount(OptionalText number) const noexcept {
    if (accounts.empty()) return true;
    return number && std::ranges::any_of(accounts, [&number](const std::string& wanted) {
               return number->ends_with(wanted);
           });
}

bool Filter::takes(const brackwell::TvOFXAccountStatement& statement) const noexcept {
    return takesAccount(accountNumber(accountOf(statement)));
}

Filter::Transactions Filter::transactionsOf(const brackwell::TvOFXAccountStatement& statement) const {
    Transactions chosen;
    chosen.reserve(words.empty() && !since && !before ? statement.statementTransactions().size() : 0);
    std::string text;
    for (const auto& transaction : statement.statementTransactions()) {
        if (!isPostedIn(*this, *transaction)) continue;
        if (!words.empty()) writeSearchedText(text, *transaction);
        if (std::ranges::all_of(words,
                                [&text](const std::string& word) { return text.find(word) != text.npos; }))
            chosen.push_back(transaction.get());
    }
    sort(chosen, order);
    return chosen;
}

}  // namespace tool
