// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/booked_accounts.h"

#include <map>
#include <set>
#include <string_view>

#include "bookkeeping/book_text.h"
#include "bookkeeping/digest.h"

namespace tool {
namespace {

using namespace brackwell;

/// An account, before names that are alike are told apart.
struct Unnamed {
    std::string name;
    std::string holder;  ///< what it is but for its currency; "" for one that the map names
};

BookRole roleOf(const AccountHistory& account) noexcept {
    if (account.isCard) return BookRole::card;
    const bool isCredit =
        account.bankAccount && account.bankAccount->accountType() == TvOFXBankAccountTypeCreditLine;
    return isCredit ? BookRole::creditLine : BookRole::bank;
}

std::string defaultName(const AccountMap& map, BookRole role, std::string_view number) {
    const std::string part = accountPartOf(number);
    return map.name(role) + ":" + (part.empty() ? "Unnamed" : part);
}

Unnamed unnamedOf(const AccountHistory& account, const AccountMap& map) {
    const auto& bank = account.bankAccount;
    const std::string_view bankID = bank ? trimWhiteSpace(bank->bankID().value_or("")) : std::string_view();
    const std::string_view number = trimWhiteSpace(account.number().value_or(""));
    if (const auto name = map.nameOf(bankID, number)) return {*name, ""};
    Digest holder;
    holder.add(bankID).add(number);
    if (bank) holder.add(bank->branchID().value_or("")).add(std::to_string(bank->accountType()));
    return {defaultName(map, roleOf(account), number), holder.text()};
}

Unnamed unnamedOf(const InvestmentAccount& account, const AccountMap& map) {
    const std::string_view broker = trimWhiteSpace(account.broker);
    const std::string_view number = trimWhiteSpace(account.number);
    if (const auto name = map.nameOf(broker, number)) return {*name, ""};
    return {defaultName(map, BookRole::investment, number), Digest().add(broker).add(number).text()};
}

/// Adds a digest to names that different accounts have.
std::size_t tellApart(std::vector<Unnamed>& accounts) {
    constexpr std::size_t told = 6;
    std::map<std::string, std::set<std::string>> holders;
    for (const Unnamed& account : accounts) holders[account.name].insert(account.holder);
    std::size_t alike = 0;
    for (Unnamed& account : accounts) {
        if (account.holder.empty() || holders[account.name].size() == 1) continue;
        account.name += "-" + account.holder.substr(0, told);
        ++alike;
    }
    return alike;
}

}  // namespace

BookedNames bookedNames(const History& history, const AccountMap& map) {
    std::vector<Unnamed> accounts;
    for (const AccountHistory& account : history.accounts()) accounts.push_back(unnamedOf(account, map));
    for (const InvestmentAccount& account : history.investments().accounts())
        accounts.push_back(unnamedOf(account, map));
    BookedNames names;
    names.alike = tellApart(accounts);
    for (const Unnamed& account : accounts) {
        if (names.banks.size() < history.accounts().size())
            names.banks.push_back(account.name);
        else
            names.investments.push_back({account.name + ":Securities", account.name + ":Cash"});
    }
    return names;
}

}  // namespace tool
