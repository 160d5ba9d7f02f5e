// SPDX-License-Identifier: Apache-2.0
#include "report/payees.h"

#include <algorithm>
#include <utility>

#include "money/foreign_amount.h"
#include "text/searched_letters.h"
#include "text/transaction_text.h"
#include "text/value_text.h"
#include "text/visible_text.h"

namespace tool {

void Payees::add(const brackwell::TvOFXStatementTransaction& transaction, const std::string& currency) {
    constexpr std::size_t monthLength = 7;
    std::string name = visibleText(payeeOrMemoOf(transaction).value_or(""));
    std::string key;
    appendSearchedLetters(key, name);
    Payee& payee = byName[key];
    if (payee.total.count == 0) payee.name = std::move(name);
    const auto amount = amountIn(transaction, currency);
    if (!amount && transaction.amount()) ++foreign;
    payee.total.add(amount);
    payee.months[dayText(transaction.datePosted()).substr(0, monthLength)].add(amount);
    payee.period.include(transaction.datePosted());
}

std::vector<const Payee*> sortedPayees(const Payees& payees, Order order) {
    std::vector<const Payee*> list;
    for (const auto& [key, payee] : payees.byName) list.push_back(&payee);
    std::ranges::stable_sort(list, [order](const Payee* a, const Payee* b) {
        if (order == Order::date) return comesBefore(a->period.first, b->period.first);
        if (order == Order::amount)
            return comesBefore(a->total.money.net().value(), b->total.money.net().value());
        return comesBefore(a->total.money.out.value(), b->total.money.out.value());
    });
    return list;
}

}  // namespace tool
