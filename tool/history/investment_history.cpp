// SPDX-License-Identifier: Apache-2.0
#include "history/investment_history.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <utility>

#include "history/equal_groups.h"
#include "investments/facts.h"
#include "money/foreign_amount.h"

namespace tool {
namespace {

using namespace brackwell;

constexpr char kBetween = '\n';  ///< between the parts of a key

std::string textOf(OptionalText text) { return std::string(text.value_or("")); }

/// What is the same of transactions that cannot be told apart.
std::string keyOf(const InvestmentTransaction& transaction, const std::string& accountCurrency) {
    const auto units = transaction.units();
    const auto amount = amountOf(transaction);
    std::string key = textOf(identifierOf(transaction));
    key.append(1, kBetween).append(transaction.elementName());
    key.append(1, kBetween).append(transaction.securityID().value_or(""));
    key.append(1, kBetween).append(units ? units->toString() : "");
    key.append(1, kBetween).append(amount ? amount->toString() : "");
    key.append(1, kBetween).append(foreignSymbol(currencyOf(transaction), accountCurrency));
    return key;
}

void enterTransactions(InvestmentAccount& account) {
    std::size_t count = 0;
    for (const InvestmentSource& source : account.statements) count += source.statement.transactions().size();
    account.entries.reserve(count);
    for (std::uint32_t i = 0; i < account.statements.size(); ++i)
        for (const InvestmentTransaction& transaction : account.statements[i].statement.transactions())
            account.entries.push_back({transaction, i});
}

/// Of transactions that cannot be told apart, the first one of a statement is the same as the first one of
/// another, and so on.
void noteEqual(InvestmentAccount& account, std::span<const HashedNumber> group) {
    std::vector<std::uint32_t> originals;
    std::size_t met = 0;  // in the present statement
    std::uint32_t statement = account.entries[group.front().number].statement;
    for (const HashedNumber& each : group) {
        InvestmentEntry& entry = account.entries[each.number];
        if (std::exchange(statement, entry.statement) != entry.statement) met = 0;
        if (met == originals.size()) {
            originals.push_back(each.number);
        } else {
            entry.original = originals[met];
            ++account.repeats;
        }
        ++met;
    }
}

void noteInvestmentRepeats(InvestmentAccount& account) {
    const auto transactionAt = [&account](std::uint32_t number) -> const InvestmentTransaction& {
        return account.entries[number].transaction;
    };
    forEachGroup(
        account.entries.size(),
        [&](std::uint32_t number) -> std::optional<std::uint64_t> {
            const std::string_view identifier = identifierOf(transactionAt(number)).value_or("");
            if (identifier.empty()) return std::nullopt;
            return std::hash<std::string_view>()(identifier);
        },
        [&](std::uint32_t number) { return keyOf(transactionAt(number), account.currency); },
        [&](std::span<const HashedNumber> group) { noteEqual(account, group); });
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
        if (filter.takes(statement) && hasContent(statement))
            accounts_[placeOf(statement)].statements.push_back({statement, file, institution, own});
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

void InvestmentHistory::finish() {
    for (InvestmentAccount& account : accounts_) {
        enterTransactions(account);
        if (account.statements.size() > 1) noteInvestmentRepeats(account);
    }
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
    return next;
}

}  // namespace tool
