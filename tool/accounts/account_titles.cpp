// SPDX-License-Identifier: Apache-2.0
#include "accounts/account_titles.h"

#include <cstddef>

namespace tool {
namespace {

using namespace brackwell;

/// The numbers of shorter ones are parts of too many other texts.
constexpr std::size_t kShortestSecret = 5;

std::string keyOf(char kind, OptionalText institution, OptionalText number) {
    std::string key(1, kind);
    return key.append(institution.value_or("")).append(1, '\0').append(number.value_or(""));
}

std::string keyOf(const ListedAccount& listed) {
    if (listed.bank) return keyOf('b', listed.bank->bankID(), listed.bank->accountID());
    if (listed.card) return keyOf('c', {}, listed.card->accountID());
    const auto account = listed.investment ? listed.investment->investmentAccount() : nullptr;
    return account ? keyOf('i', account->brokerID().text(), account->accountID().text()) : std::string();
}

}  // namespace

AccountTitles::AccountTitles(const std::vector<ListedAccount>& listed) {
    for (const ListedAccount& account : listed)
        if (const OptionalText title = account.record->accountDescription(); !title.value_or("").empty())
            titles_.emplace(keyOf(account), *title);
}

std::string_view AccountTitles::ofBank(OptionalText bank, OptionalText number) const {
    const auto found = titles_.find(keyOf('b', bank, number));
    return found == titles_.end() ? std::string_view() : found->second;
}

std::string_view AccountTitles::ofCard(OptionalText number) const {
    const auto found = titles_.find(keyOf('c', {}, number));
    return found == titles_.end() ? std::string_view() : found->second;
}

std::string_view AccountTitles::ofInvestment(OptionalText broker, OptionalText number) const {
    const auto found = titles_.find(keyOf('i', broker, number));
    return found == titles_.end() ? std::string_view() : found->second;
}

std::string withoutNumber(std::string_view text, std::string_view number, std::string_view shown) {
    std::string result;
    if (number.size() < kShortestSecret) return std::string(text);
    for (std::size_t at; (at = text.find(number)) != text.npos;) {
        result.append(text.substr(0, at)).append(shown);
        text.remove_prefix(at + number.size());
    }
    return result.append(text);
}

}  // namespace tool
