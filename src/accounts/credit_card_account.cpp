// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include <tuple>

#include "accounts/account_hash.h"
#include "fields/element_table.h"

namespace brackwell {
namespace {

/// What tells an account from others, in the order in which they are sorted.
auto identityOf(const TvOFXCreditCardAccount& account) noexcept {
    return std::tuple(account.accountID(), account.acctKeyChecksum());
}

}  // namespace

struct BRACKWELL_INTERNAL TvOFXCreditCardAccount::Elements {
    using Self = TvOFXCreditCardAccount;
    // The archive keys are in the archives of applications: they can never change.
    static constexpr TextTable<textCount> kTexts{{
        {accountID_, element("ACCTID"), "aID"},
        {acctKeyChecksum_, element("ACCTKEY"), "aKC"},
    }};
    static constexpr auto kTable = elementTable<&Self::texts_, kTexts>();
};

TvOFXCreditCardAccount::TvOFXCreditCardAccount(const std::optional<ParseDictionary>& node)
    : AggregateClass(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*node));
}

TvOFXCreditCardAccount::TvOFXCreditCardAccount(const KeyedUnarchiver& coder) : AggregateClass(coder) {
    decodeTexts(coder, texts_, Elements::kTexts);
}

std::shared_ptr<TvOFXCreditCardAccount> TvOFXCreditCardAccount::initWithAccountID(TextArgument accountID) {
    auto account = std::make_shared<TvOFXCreditCardAccount>();
    account->texts_.set(accountID_, accountID);
    return account;
}

void TvOFXCreditCardAccount::encodeWithCoder(KeyedArchiver& coder) const {
    TvOFXAggregate::encodeWithCoder(coder);
    encodeTexts(coder, texts_, Elements::kTexts);
}

std::string_view TvOFXCreditCardAccount::className() const noexcept { return "TvOFXCreditCardAccount"; }

bool TvOFXCreditCardAccount::isEqualToOFXCreditCardAccount(
    const TvOFXCreditCardAccount* other) const noexcept {
    return other != nullptr && agreeOnTexts(texts_, other->texts_, Elements::kTexts);
}

bool TvOFXCreditCardAccount::operator==(const TvOFXCreditCardAccount& other) const noexcept {
    return identityOf(*this) == identityOf(other);
}

std::strong_ordering TvOFXCreditCardAccount::operator<=>(const TvOFXCreditCardAccount& other) const noexcept {
    return identityOf(*this) <=> identityOf(other);
}

}  // namespace brackwell

std::size_t std::hash<brackwell::TvOFXCreditCardAccount>::operator()(
    const brackwell::TvOFXCreditCardAccount& account) const noexcept {
    return brackwell::accountHash(0, {account.accountID(), account.acctKeyChecksum()});
}
