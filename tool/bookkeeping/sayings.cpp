// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/sayings.h"

#include <chrono>
#include <limits>
#include <utility>

#include "bookkeeping/bank_entry.h"
#include "text/shown_values.h"

namespace tool {

void Sayings::add(BookBalance balance, brackwell::Date date, std::optional<brackwell::Date> end) {
    using std::chrono::days;
    if (!isBookable(balance.amount)) {
        BookRemark remark{
            balance.day, "A balance with more digits than journals have", {}, std::move(balance.facts)};
        remark.facts.push_back({"balance", withCurrency(balance.amount.toString(), balance.commodity)});
        return add(std::move(remark));
    }
    const bool isLate = end && std::chrono::floor<days>(date) - days(1) > std::chrono::floor<days>(*end);
    balance.isCovered = coverage_.covers(isLate ? *end : date, date);
    if (isLate) balance.statement = std::numeric_limits<std::uint32_t>::max();
    balance.identity = identities_.of("balance " + std::string(balance.account), balance);
    if (met_.insert(balance.identity.digest).second) lists_.balances.push_back(std::move(balance));
}

void Sayings::add(BookRemark remark) {
    if (remark.facts.empty()) return;
    Digest digest;
    for (const BookFact& fact : remark.facts) digest.add(fact.name).add(fact.text);
    BookBalance named;
    named.day = remark.day;
    remark.identity = identities_.of(remark.text + digest.text(), named);
    if (!met_.insert(remark.identity.digest).second) return;
    lists_.remarks.push_back({account_, static_cast<std::uint32_t>(lists_.sayings.size()), false});
    lists_.sayings.push_back(std::move(remark));
}

}  // namespace tool
