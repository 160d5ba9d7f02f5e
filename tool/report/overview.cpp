// SPDX-License-Identifier: Apache-2.0
#include "report/overview.h"

#include <cstddef>
#include <optional>
#include <string>

#include "history/history.h"
#include "report/amounts.h"
#include "report/html_writer.h"
#include "text/value_text.h"

namespace tool {
namespace {

constexpr const char* kHead =
    "<section aria-labelledby=\"accounts-title\">\n<h2 id=\"accounts-title\">Accounts</h2>\n"
    "<div class=\"scroll\"><table class=\"overview\">\n<thead><tr><th scope=\"col\">Account</th>"
    "<th scope=\"col\" class=\"amount\">Balance</th><th scope=\"col\" class=\"amount more "
    "most\">Available</th>"
    "<th scope=\"col\" class=\"amount more\">In</th><th scope=\"col\" class=\"amount more\">Out</th>"
    "<th scope=\"col\" class=\"amount more most\">Transactions</th></tr></thead>\n";

/// An amount with its currency and, below, its date.
void writeBalance(HtmlWriter& html, const std::optional<StatedBalance>& balance, const std::string& currency,
                  const char* kind) {
    if (!balance) return html.write("<td class=\"{}\">\u2013</td>", kind);
    html.write("<td class=\"{}\">{} <abbr>{}</abbr><small>{}</small></td>", kind,
               amountText(balance->amount, currency), currency, dayText(balance->date));
}

void writeFlow(HtmlWriter& html, const Flow& flow, std::size_t transactions, const std::string& currency) {
    html.write(
        "<td class=\"amount more in\">{}</td><td class=\"amount more out\">{}</td>"
        "<td class=\"amount more most\">{}</td></tr>\n",
        signedAmountText(flow.in, currency), amountText(flow.out, currency), transactions);
}

void writeRow(HtmlWriter& html, const AccountFigures& figures, std::size_t number) {
    const std::string& currency = figures.history->currency;
    html.write("<tr><th scope=\"row\"><a href=\"#account-{}\">", number);
    writeName(html, figures.name);
    html.write("</a><small>{}</small></th>", figures.institution);
    writeBalance(html, figures.ledger, currency, "amount");
    writeBalance(html, figures.available, currency, "amount more most");
    writeFlow(html, figures.flow, figures.transactions.size(), currency);
}

/// What an account is worth stands where others have their balance.
void writeRow(HtmlWriter& html, const InvestmentFigures& figures, std::size_t number) {
    html.write("<tr><th scope=\"row\"><a href=\"#investment-{}\">", number);
    writeName(html, figures.name);
    html.write("</a><small>{}</small></th>", figures.account->institution());
    const auto worth = figures.worth
                           ? std::optional(StatedBalance{figures.worth->shown(), figures.latest.asOf(), {}})
                           : std::nullopt;
    writeBalance(html, worth, figures.account->currency, "amount");
    writeBalance(html, std::nullopt, {}, "amount more most");
    writeFlow(html, figures.flow, figures.trades.size(), figures.account->currency);
}

void writeSum(HtmlWriter& html, const CurrencyFigures& figures) {
    html.write("<tr><th scope=\"row\">Sum in <bdi>{}</bdi><small>{} accounts</small></th>", figures.currency,
               figures.count());
    if (figures.balance)
        html.write("<td class=\"amount\">{} <abbr>{}</abbr></td>",
                   amountText(*figures.balance, figures.currency), figures.currency);
    else
        html.write("<td class=\"amount\">\u2013</td>");
    html.write("<td class=\"amount more most\"></td>");
    writeFlow(html, figures.flow, figures.transactions, figures.currency);
}

}  // namespace

void writeOverview(HtmlWriter& html, const Report& report) {
    if (report.accountCount() < 2) return;
    html.write(kHead);
    html.write("<tbody>\n");
    for (std::size_t i = 0; i < report.accounts.size(); ++i) writeRow(html, report.accounts[i], i + 1);
    for (std::size_t i = 0; i < report.investments.size(); ++i) writeRow(html, report.investments[i], i + 1);
    html.write("</tbody>\n");
    if (!report.currencies.empty()) {
        html.write("<tfoot>\n");
        for (const CurrencyFigures& currency : report.currencies) writeSum(html, currency);
        html.write("</tfoot>\n");
    }
    html.write("</table></div>\n</section>\n");
}

}  // namespace tool
