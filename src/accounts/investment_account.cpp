// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include <tuple>

#include "accounts/account_hash.h"
#include "tree/node_ref.h"

namespace brackwell {

using reading::element;
using reading::NodeRef;

namespace {

/// What tells an account from others, in the order in which they are sorted.
auto identityOf(const TvOFXInvestmentAccount& account) noexcept {
    return std::tuple(account.brokerID().text(), account.accountID().text());
}

}  // namespace

TvOFXInvestmentAccount::TvOFXInvestmentAccount(const std::optional<ParseDictionary>& node)
    : AggregateClass(node) {
    if (!node) return;
    // The values are kept whatever their kind, a list or an aggregate included: intended.
    brokerID_ = NodeRef::of(*node)[element("BROKERID")].value();
    accountID_ = NodeRef::of(*node)[element("ACCTID")].value();
}

std::string_view TvOFXInvestmentAccount::className() const noexcept { return "TvOFXInvestmentAccount"; }

bool TvOFXInvestmentAccount::operator==(const TvOFXInvestmentAccount& other) const noexcept {
    return identityOf(*this) == identityOf(other);
}

std::strong_ordering TvOFXInvestmentAccount::operator<=>(const TvOFXInvestmentAccount& other) const noexcept {
    return identityOf(*this) <=> identityOf(other);
}

}  // namespace brackwell

std::size_t std::hash<brackwell::TvOFXInvestmentAccount>::operator()(
    const brackwell::TvOFXInvestmentAccount& account) const noexcept {
    return brackwell::accountHash(0, {account.brokerID().text(), account.accountID().text()});
}
