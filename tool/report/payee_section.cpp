// SPDX-License-Identifier: Apache-2.0
#include "report/payee_section.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "history/history.h"
#include "report/amounts.h"
#include "report/html_writer.h"
#include "report/payees.h"
#include "report/way_up.h"

namespace tool {
namespace {

/// How many payees stand in the open.
constexpr std::size_t kMostShown = 12;

using PayeeList = std::span<const Payee* const>;

/// What did not come or go needs no zero.
std::string flowText(const Sum& sum, const std::string& currency) {
    return sum.value() == brackwell::Decimal() ? "\u2013" : signedAmountText(sum, currency);
}

void writePayeeTable(HtmlWriter& html, PayeeList payees, const std::string& currency) {
    html.write(
        "<div class=\"scroll\"><table class=\"payees\">\n<thead><tr><th scope=\"col\">Payee</th>"
        "<th scope=\"col\" class=\"amount more\">Transactions</th><th scope=\"col\" class=\"amount\">In "
        "{}</th><th scope=\"col\" class=\"amount\">Out {}</th></tr></thead>\n<tbody>\n",
        currency, currency);
    for (const Payee* payee : payees) {
        if (!html.isGood()) return;
        html.write(
            "<tr><th scope=\"row\"><bdi>{}</bdi></th><td class=\"amount more\">{}</td>"
            "<td class=\"amount in\">{}</td><td class=\"amount out\">{}</td></tr>\n",
            payee->name.empty() ? "no payee" : payee->name, payee->total.count,
            flowText(payee->total.money.in, currency), flowText(payee->total.money.out, currency));
    }
    html.write("</tbody>\n</table></div>\n");
}

void writeCurrencyPayees(HtmlWriter& html, const std::string& currency, const Payees& payees, bool isOnly) {
    const std::vector<const Payee*> list = sortedPayees(payees, Order::document);
    const PayeeList all = list;
    const std::size_t shown = std::min(all.size(), kMostShown);
    if (!isOnly) html.write("<h3>{}</h3>\n", currency.empty() ? "Unknown currency" : currency);
    writePayeeTable(html, all.first(shown), currency);
    if (shown < all.size()) {
        html.write("<details><summary>{} more payees</summary>\n", all.size() - shown);
        writePayeeTable(html, all.subspan(shown), currency);
        html.write("</details>\n");
    }
    if (payees.foreign > 0)
        html.write(
            "<p class=\"note\">Amounts in another currency without an exchange rate, not counted: "
            "{}.</p>\n",
            payees.foreign);
}

}  // namespace

void writePayees(HtmlWriter& html, const Report& report) {
    std::map<std::string, Payees> currencies;
    for (const AccountFigures& account : report.accounts)
        for (const auto* transaction : account.transactions)
            currencies[account.history->currency].add(*transaction, account.history->currency);
    // Where nobody is named, the sums of the account say it all.
    std::erase_if(currencies, [](const auto& each) {
        const auto& byName = each.second.byName;
        return byName.size() == 1 && byName.begin()->second.name.empty();
    });
    if (currencies.empty()) return;
    html.write("<section aria-labelledby=\"payees-title\">\n<h2 id=\"payees-title\">Payees</h2>\n");
    for (const auto& [currency, payees] : currencies)
        writeCurrencyPayees(html, currency, payees, currencies.size() == 1);
    writeWayUp(html);
    html.write("</section>\n");
}

}  // namespace tool
