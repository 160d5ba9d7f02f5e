// SPDX-License-Identifier: Apache-2.0
#include "history/investment_history.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>
#include <utility>

#include "investments/facts.h"
#include "money/foreign_amount.h"

namespace tool {
namespace {

using namespace brackwell;

constexpr char kBetween = '\n';  ///< between the parts of a key

std::string textOf(OptionalText text) { return std::string(text.value_or("")); }

/// What is the same of transactions that cannot be told apart; "" for one without an identifier.
std::string keyOf(const InvestmentTransaction& transaction, const std::string& accountCurrency) {
    const std::string identifier = textOf(identifierOf(transaction));
    if (identifier.empty()) return {};
    const auto units = transaction.units();
    const auto amount = amountOf(transaction);
    std::string key = identifier;
    key.append(1, kBetween).append(transaction.elementName());
    key.append(1, kBetween).append(transaction.securityID().value_or(""));
    key.append(1, kBetween).append(units ? units->toString() : "");
    key.append(1, kBetween).append(amount ? amount->toString() : "");
    key.append(1, kBetween).append(foreignSymbol(currencyOf(transaction), accountCurrency));
    return key;
}

/// False for the statement of a server that could not give one.
bool hasContent(const InvestmentStatement& statement) {
    return statement.account() || statement.asOf() || !statement.transactions().isEmpty() ||
           !statement.positions().isEmpty() || statement.balance() || statement.balance401k();
}

}  // namespace

std::string_view InvestmentAccount::institution() const noexcept {
    const auto named =
        std::find_if(statements.rbegin(), statements.rend(),
                     [](const InvestmentSource& source) { return !source.institution.empty(); });
    return named == statements.rend() ? std::string_view() : named->institution;
}

const InvestmentSource& InvestmentAccount::latestSource() const noexcept {
    const InvestmentSource* latest = &statements.front();
    for (const InvestmentSource& source : statements)
        if (source.statement.asOf() >= latest->statement.asOf()) latest = &source;
    return *latest;
}

void InvestmentHistory::add(const OpenedDocument& document, const std::string& file,
                            const std::string& institution, const Filter& filter) {
    securities_.insert(securities_.end(), document.securities().begin(), document.securities().end());
    const auto own = std::make_shared<const SecurityList>(document.securities());
    const std::vector<Security> wanted = filter.securitiesOf(document);
    wantedSecurities_.insert(wantedSecurities_.end(), wanted.begin(), wanted.end());
    for (const InvestmentStatement& statement : document.investmentStatements()) {
        named_.add(statement);
        if (filter.takes(statement) && hasContent(statement)) add({statement, file, institution, own});
    }
}

std::vector<Security> InvestmentHistory::otherSecurities() const {
    std::vector<Security> others;
    std::set<std::pair<std::string_view, std::string_view>> met;
    for (const Security& security : wantedSecurities_) {
        if (named_.has(security)) continue;
        if (met.emplace(security.id().value_or(""), security.idType().value_or("")).second)
            others.push_back(security);
    }
    return others;
}

void InvestmentHistory::add(InvestmentSource source) {
    const std::size_t place = placeOf(source.statement);
    InvestmentAccount& account = accounts_[place];
    const auto statement = static_cast<std::uint32_t>(account.statements.size());
    account.statements.push_back(std::move(source));
    for (const InvestmentTransaction& transaction : account.statements.back().statement.transactions()) {
        const auto number = static_cast<std::uint32_t>(account.entries.size());
        const std::uint32_t original =
            originalOf(repeats_[place], keyOf(transaction, account.currency), number, statement);
        account.entries.push_back({transaction, statement, original});
        if (original != number) ++account.repeats;
    }
}

std::uint32_t InvestmentHistory::originalOf(Repeats& repeats, const std::string& key, std::uint32_t number,
                                            std::uint32_t statement) {
    if (key.empty()) return number;
    Equal& equal = repeats[key];
    if (equal.statement != statement) {
        equal.statement = statement;
        equal.met = 0;
    }
    if (equal.met == equal.originals.size()) equal.originals.push_back(number);
    return equal.originals[equal.met++];
}

std::size_t InvestmentHistory::placeOf(const InvestmentStatement& statement) {
    InvestmentAccount account;
    if (const auto held = statement.account()) {
        account.broker = textOf(held->brokerID().text());
        account.number = textOf(held->accountID().text());
    }
    account.currency = textOf(statement.currency());
    const std::string key = account.broker + kBetween + account.number + kBetween + account.currency;
    const std::size_t next = accounts_.size();
    if (!account.number.empty()) {
        const auto [place, isNew] = places_.try_emplace(key, next);
        if (!isNew) return place->second;
    }
    accounts_.push_back(std::move(account));
    repeats_.emplace_back();
    return next;
}

}  // namespace tool
