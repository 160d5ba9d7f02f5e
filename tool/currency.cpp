// SPDX-License-Identifier: Apache-2.0
#include "currency.h"

namespace tool {

using namespace brackwell;

bool isForeign(const std::optional<TransactionCurrency>& currency, OptionalText statementCurrency) noexcept {
    return currency && !currency->isConverted && currency->symbol != statementCurrency;
}

std::optional<Decimal> inStatementCurrency(const std::optional<Decimal>& amount,
                                           const std::optional<TransactionCurrency>& currency,
                                           OptionalText statementCurrency) {
    if (!amount || !isForeign(currency, statementCurrency)) return amount;
    return currency->rate ? amount->times(*currency->rate) : std::nullopt;
}

std::optional<Decimal> amountIn(const TvOFXStatementTransaction& transaction,
                                OptionalText statementCurrency) {
    if (!transaction.amount()) return std::nullopt;
    return inStatementCurrency(transaction.amount(), currencyOf(transaction), statementCurrency);
}

std::string foreignSymbol(const std::optional<TransactionCurrency>& currency,
                          OptionalText statementCurrency) {
    return isForeign(currency, statementCurrency) ? std::string(currency->symbol) : std::string();
}

}  // namespace tool
