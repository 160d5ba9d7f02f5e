// SPDX-License-Identifier: Apache-2.0
#include "filter/filter.h"

#include <brackwell/open.h>

#include <algorithm>

#include "accounts/account_number.h"
#include "filter/searched_text.h"

namespace tool {
namespace {

using brackwell::OptionalText;
using Transaction = brackwell::TvOFXStatementTransaction;

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

bool Filter::takesDate(const std::optional<brackwell::Date>& date) const noexcept {
    if (!since && !before) return true;
    return date && (!since || *date >= *since) && (!before || *date < *before);
}

bool Filter::takes(const brackwell::TvOFXAccountStatement& statement) const noexcept {
    return takesAccount(brackwell::accountOf(statement).accountID());
}

std::optional<brackwell::ListedAccount> Filter::chosenOf(const brackwell::ListedAccount& listed) const {
    if (accounts.empty()) return listed;
    const auto isWanted = [this](const auto& account) { return takesAccount(accountNumber(account.get())); };
    brackwell::ListedAccount chosen{listed.record, {}, {}, {}};
    if (listed.bank && isWanted(listed.bank->bankAcctFrom())) chosen.bank = listed.bank;
    if (listed.card && isWanted(listed.card->creditCardAccountFrom())) chosen.card = listed.card;
    if (listed.investment && isWanted(listed.investment->investmentAccount()))
        chosen.investment = listed.investment;
    const bool isAny = chosen.bank || chosen.card || chosen.investment;
    return isAny ? std::optional(chosen) : std::nullopt;
}

Filter::Transactions Filter::transactionsOf(const brackwell::TvOFXAccountStatement& statement) const {
    Transactions chosen;
    chosen.reserve(words.empty() && !since && !before ? statement.statementTransactions().size() : 0);
    std::string text;
    for (const auto& transaction : statement.statementTransactions()) {
        if (!takesDate(transaction->datePosted())) continue;
        text.clear();
        if (!words.empty()) appendSearchedText(text, *transaction);
        if (hasAllWords(text, words)) chosen.push_back(transaction.get());
    }
    sort(chosen, order);
    return chosen;
}

}  // namespace tool
