// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include "tree/node_ref.h"

namespace brackwell {

using reading::element;
using reading::NodeRef;

TvOFXInvestmentAccount::TvOFXInvestmentAccount(const std::optional<ParseDictionary>& node)
    : TvOFXAggregate(node) {
    if (!node) return;
    // The values are kept whatever their kind, a list or an aggregate included: intended.
    brokerID_ = NodeRef::of(*node)[element("BROKERID")].value();
    accountID_ = NodeRef::of(*node)[element("ACCTID")].value();
}

std::shared_ptr<TvOFXInvestmentAccount> TvOFXInvestmentAccount::initWithParseDict(
    const std::optional<ParseDictionary>& node) {
    return std::make_shared<TvOFXInvestmentAccount>(node);
}

std::string_view TvOFXInvestmentAccount::className() const noexcept { return "TvOFXInvestmentAccount"; }

}  // namespace brackwell
