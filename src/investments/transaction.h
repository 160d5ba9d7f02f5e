// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <array>

namespace brackwell::investments {

/// The amounts that a purchase or a sale is computed from; null for those that are absent. Valid as long as
/// the transaction's document.
struct TradeAmounts {
    const Decimal* units;
    const Decimal* unitPrice;
    const Decimal* total;
    std::array<const Decimal*, 7> costs;  ///< beside the securities themselves
};

TradeAmounts tradeAmountsOf(const InvestmentTransaction& transaction) noexcept;

}  // namespace brackwell::investments
