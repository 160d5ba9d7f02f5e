// SPDX-License-Identifier: Apache-2.0
#include "filter/filter.h"

#include <brackwell/open.h>

#include <algorithm>
#include <utility>

#include "accounts/account_number.h"
#include "filter/searched_text.h"
#include "investments/facts.h"
#include "investments/security_lookup.h"

namespace tool {
namespace {

using namespace brackwell;
using Transaction = TvOFXStatementTransaction;

void sort(Filter::Transactions& transactions, Order order) {
    if (order == Order::date)
        std::ranges::stable_sort(transactions, comesBefore<Date>, &Transaction::datePosted);
    if (order == Order::amount)
        std::ranges::stable_sort(transactions, comesBefore<Decimal>, &Transaction::amount);
}

/// All texts of an object: identifiers, memo, what it is of.
void appendTexts(std::string& text, const InvestmentRecord& object) {
    for (const InvestmentField& field : object.fields())
        if (field.kind == InvestmentField::Kind::text) appendSearchedText(text, field.text);
}

/// What else can be looked for in an object besides its own texts.
void appendMore(std::string& text, const InvestmentTransaction& transaction) {
    if (const auto bank = transaction.bankTransaction()) appendSearchedText(text, *bank);
    appendSearchedText(text, accountNumber(transaction.transferAccount().get()));
}
void appendMore(std::string&, const Position&) {}

/// True when all words occur in an object, in itself or in its security.
template <class Object>
bool hasWords(const Object& object, const SecurityLookup& securities, const std::vector<std::string>& words) {
    if (words.empty()) return true;
    std::string text;
    appendTexts(text, object);
    appendMore(text, object);
    if (const auto security = securities.find(object)) appendTexts(text, *security);
    return hasAllWords(text, words);
}

bool hasStatementOf(const OpenedDocument& document, const Filter& filter) {
    if (filter.accounts.empty()) return true;
    return std::ranges::any_of(document.investmentStatements(),
                               [&filter](const auto& statement) { return filter.takes(statement); });
}

/// Sorts objects by what each has to be sorted by, which is asked for once.
template <class Object, class Value>
void sortBy(std::vector<Object>& objects, std::optional<Value> (*valueOf)(const Object&)) {
    std::vector<std::pair<std::optional<Value>, Object>> keyed;
    keyed.reserve(objects.size());
    for (const Object& object : objects) keyed.emplace_back(valueOf(object), object);
    std::ranges::stable_sort(keyed, comesBefore<Value>, &std::pair<std::optional<Value>, Object>::first);
    objects.clear();
    for (const auto& [value, object] : keyed) objects.push_back(object);
}

template <class Object>
void sort(std::vector<Object>& objects, Order order, std::optional<Date> (*dateOf)(const Object&),
          std::optional<Decimal> (*amountOf)(const Object&)) {
    if (order == Order::date) sortBy(objects, dateOf);
    if (order == Order::amount) sortBy(objects, amountOf);
}

}  // namespace

bool Filter::takesAccount(OptionalText number) const noexcept {
    if (accounts.empty()) return true;
    return number && std::ranges::any_of(accounts, [&number](const std::string& wanted) {
               return number->ends_with(wanted);
           });
}

bool Filter::takesDate(const std::optional<Date>& date) const noexcept {
    if (!since && !before) return true;
    return date && (!since || *date >= *since) && (!before || *date < *before);
}

bool Filter::takes(const TvOFXAccountStatement& statement) const noexcept {
    return takesAccount(accountOf(statement).accountID());
}

std::optional<ListedAccount> Filter::chosenOf(const ListedAccount& listed) const {
    if (accounts.empty()) return listed;
    const auto isWanted = [this](const auto& account) { return takesAccount(accountNumber(account.get())); };
    ListedAccount chosen{listed.record, {}, {}, {}};
    if (listed.bank && isWanted(listed.bank->bankAcctFrom())) chosen.bank = listed.bank;
    if (listed.card && isWanted(listed.card->creditCardAccountFrom())) chosen.card = listed.card;
    if (listed.investment && isWanted(listed.investment->investmentAccount()))
        chosen.investment = listed.investment;
    const bool isAny = chosen.bank || chosen.card || chosen.investment;
    return isAny ? std::optional(chosen) : std::nullopt;
}

bool Filter::findsAny(const OpenedDocument& document, const SecurityList& others) const {
    const SecurityList own(document.securities());
    const SecurityLookup securities(own, others);
    return std::ranges::any_of(document.statements(),
                               [&](const auto& statement) {
                                   return takes(*statement) && !transactionsOf(*statement).empty();
                               }) ||
           std::ranges::any_of(document.investmentStatements(),
                               [&](const InvestmentStatement& statement) {
                                   return takes(statement) &&
                                          (!transactionsOf(statement, securities).empty() ||
                                           !positionsOf(statement, securities).empty());
                               }) ||
           !securitiesOf(document).empty();
}

Filter::Transactions Filter::transactionsOf(const TvOFXAccountStatement& statement) const {
    Transactions chosen;
    chosen.reserve(choosesTransactions() ? 0 : statement.statementTransactions().size());
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

bool Filter::takes(const InvestmentStatement& statement) const {
    return takesAccount(accountNumber(statement.account().get()));
}

bool Filter::takes(const InvestmentTransaction& transaction, const SecurityLookup& securities) const {
    return takesDate(dateOf(transaction)) && hasWords(transaction, securities, words);
}

std::vector<InvestmentTransaction> Filter::transactionsOf(const InvestmentStatement& statement,
                                                          const SecurityLookup& securities) const {
    std::vector<InvestmentTransaction> chosen;
    for (const InvestmentTransaction& transaction : statement.transactions())
        if (takes(transaction, securities)) chosen.push_back(transaction);
    sort<InvestmentTransaction>(chosen, order, dateOf, amountOf);
    return chosen;
}

std::vector<Position> Filter::positionsOf(const InvestmentStatement& statement,
                                          const SecurityLookup& securities) const {
    std::vector<Position> chosen;
    for (const Position& position : statement.positions())
        if (hasWords(position, securities, words)) chosen.push_back(position);
    sort<Position>(
        chosen, order, [](const Position& position) { return position.priceDate(); },
        [](const Position& position) { return position.marketValue(); });
    return chosen;
}

std::vector<Security> Filter::securitiesOf(const OpenedDocument& document) const {
    std::vector<Security> chosen;
    if (!hasStatementOf(document, *this)) return chosen;
    std::string text;
    for (const Security& security : document.securities()) {
        text.clear();
        if (!words.empty()) appendTexts(text, security);
        if (hasAllWords(text, words)) chosen.push_back(security);
    }
    sort<Security>(
        chosen, order, [](const Security& security) { return security.priceDate(); },
        [](const Security& security) { return security.unitPrice(); });
    return chosen;
}

}  // namespace tool
