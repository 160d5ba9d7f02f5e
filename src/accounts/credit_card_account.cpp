// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include "fields/element_table.h"

namespace brackwell {

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
    : TvOFXAggregate(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*node));
}

TvOFXCreditCardAccount::TvOFXCreditCardAccount(const KeyedUnarchiver& coder) : TvOFXAggregate(coder) {
    decodeTexts(coder, texts_, Elements::kTexts);
}

std::shared_ptr<TvOFXCreditCardAccount> TvOFXCreditCardAccount::initWithAccountID(OptionalText accountID) {
    auto account = std::make_shared<TvOFXCreditCardAccount>();
    account->texts_.set(accountID_, accountID);
    return account;
}

std::shared_ptr<TvOFXCreditCardAccount> TvOFXCreditCardAccount::initWithParseDict(
    const std::optional<ParseDictionary>& node) {
    return std::make_shared<TvOFXCreditCardAccount>(node);
}

std::shared_ptr<TvOFXCreditCardAccount> TvOFXCreditCardAccount::initWithCoder(const KeyedUnarchiver& coder) {
    return std::make_shared<TvOFXCreditCardAccount>(coder);
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

}  // namespace brackwell
