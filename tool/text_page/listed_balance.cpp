// SPDX-License-Identifier: Apache-2.0
#include "text_page/listed_balance.h"

#include "money/foreign_amount.h"
#include "text/shown_values.h"
#include "text/transaction_text.h"
#include "text/visible_text.h"

namespace tool {

using namespace brackwell;

std::string shownBalance(const ListedBalance& balance, OptionalText statementCurrency) {
    if (!balance.value()) return std::string(balance.text("value").value_or(""));
    if (balance.type() == BalanceType::percent) return balance.value()->toString() + " %";
    if (balance.type() == BalanceType::number) return balance.value()->toString();
    const std::string foreign = foreignSymbol(balance.currency(), statementCurrency);
    return withCurrency(shownAmount(*balance.value(), firstOf(foreign, statementCurrency)),
                        visibleText(foreign));
}

}  // namespace tool
