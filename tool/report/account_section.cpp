// SPDX-License-Identifier: Apache-2.0
#include "report/account_section.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "filter/filter.h"
#include "history/history.h"
#include "history/period.h"
#include "report/amounts.h"
#include "report/balance_plot.h"
#include "report/fact_list.h"
#include "report/finding_list.h"
#include "report/flow_plot.h"
#include "report/html_writer.h"
#include "report/way_up.h"
#include "text/shown_values.h"
#include "text/value_text.h"

namespace tool {
namespace {

/// How many balances that do not fit are told one by one.
constexpr std::size_t kMostGaps = 5;

void writeHead(HtmlWriter& html, const AccountFigures& figures, std::size_t number) {
    html.write(
        "<section class=\"account\" id=\"account-{}\" aria-labelledby=\"account-title-{}\">\n<header>"
        "<div><h2 id=\"account-title-{}\">",
        number, number, number);
    writeName(html, figures.name);
    html.write("</h2><p><bdi>{}</bdi></p></div>", figures.institution);
    if (figures.ledger)
        html.write("<p class=\"balance\"><strong>{} <abbr>{}</abbr></strong>Ledger balance {}</p>",
                   amountText(figures.ledger->amount, figures.history->currency), figures.history->currency,
                   figures.ledger->date ? "on " + dayText(figures.ledger->date) : "");
    else
        html.write("<p class=\"balance\">No ledger balance is stated</p>");
    html.write("</header>\n");
}

Period postedDays(const AccountFigures& figures) {
    Period period;
    for (const DayFlow& day : figures.days) period.include(day.day);
    return period;
}

void writeFacts(HtmlWriter& html, const AccountFigures& figures) {
    const AccountHistory& history = *figures.history;
    html.write("<dl class=\"facts\">\n");
    if (figures.available)
        html.write("<div><dt>Available</dt><dd>{} <small>{}</small></dd></div>\n",
                   amountText(figures.available->amount, history.currency), dayText(figures.available->date));
    if (!figures.transactions.empty()) writeFlowFacts(html, figures.flow, history.currency);
    writeFact(html, "Transactions", std::to_string(figures.transactions.size()));
    writeFact(html, "Posted", postedDays(figures));
    writeFact(html, "Currency", history.currency.empty() ? "not stated" : history.currency);
    if (history.bankAccount) {
        writeFact(html, "Bank", history.bankAccount->bankID());
        writeFact(html, "Branch", history.bankAccount->branchID());
    }
    html.write("</dl>\n");
}

void writeFlowFigure(HtmlWriter& html, const std::vector<MonthFlow>& months, const std::string& name,
                     const std::string& currency, const std::string& id) {
    if (months.empty()) return;
    html.write(
        "<figure><figcaption>Money in and out <span class=\"key\"><span class=\"in\">\u25b2 in</span> "
        "<span class=\"out\">\u25bc out</span> <span class=\"net\">\u2501 net</span></span>"
        "</figcaption>\n");
    writeFlowPlot(html, months, name, currency, id);
    html.write("</figure>\n");
}

void writePlots(HtmlWriter& html, const AccountFigures& figures, std::size_t number) {
    html.write("<div class=\"plots\">\n");
    if (!figures.balance.points.empty()) {
        html.write(
            "<figure><figcaption>Balance at the end of each day <span class=\"key\">"
            "<span class=\"net\">\u25cf stated</span></span></figcaption>\n");
        writeBalancePlot(html, figures, "balance-" + std::to_string(number));
        html.write("</figure>\n");
    } else if (!figures.transactions.empty()) {
        html.write("<p class=\"note\">{}</p>\n", figures.balance.obstacle);
    }
    writeFlowFigure(html, figures.months, figures.name.text(), figures.history->currency,
                    "flow-" + std::to_string(number));
    html.write("</div>\n");
}

/// Balances that the transactions do not lead to: some are missing, or there are too many.
void writeGaps(HtmlWriter& html, const AccountFigures& figures) {
    const std::vector<BalanceGap>& gaps = figures.balance.gaps;
    const std::string& currency = figures.history->currency;
    if (gaps.empty()) return;
    html.write("<ul class=\"notes\">\n");
    for (std::size_t i = 0; i < std::min(gaps.size(), kMostGaps); ++i)
        html.write(
            "<li>The balance stated for {} is {}, but the transactions after it imply {}: some are missing "
            "or appear twice.</li>\n",
            dayText(gaps[i].stated.date), withCurrency(amountText(gaps[i].stated.amount, currency), currency),
            amountText(gaps[i].computed, currency));
    if (gaps.size() > kMostGaps)
        html.write("<li>{} more balances do not match either.</li>\n", gaps.size() - kMostGaps);
    html.write("</ul>\n");
}

/// What is to be said of the statements of the account.
void writeFindings(HtmlWriter& html, const AccountHistory& history, const FindingList& findings) {
    std::vector<const FileFinding*> found;
    for (const HistoryStatement& statement : history.statements) {
        const auto& more = findings.about(identityOf(*statement.statement));
        found.insert(found.end(), more.begin(), more.end());
    }
    writeFindingNotes(html, found);
}

/// The months and their sums as a table that is folded away.
void writeMonths(HtmlWriter& html, const std::vector<MonthFlow>& months, const std::string& currency) {
    if (months.empty()) return;
    html.write(
        "<details><summary>Months as a table</summary>\n<div class=\"scroll\"><table class=\"months\">\n"
        "<thead><tr><th scope=\"col\">Month</th><th scope=\"col\" class=\"amount\">In</th>"
        "<th scope=\"col\" class=\"amount\">Out</th><th scope=\"col\" class=\"amount\">Net {}</th></tr>"
        "</thead>\n<tbody>\n",
        currency);
    for (const MonthFlow& month : months)
        html.write(
            "<tr><th scope=\"row\">{}</th><td class=\"amount in\">{}</td>"
            "<td class=\"amount out\">{}</td><td class=\"amount\">{}</td></tr>\n",
            dayText(std::chrono::sys_days(month.month / 1)).substr(0, 7),
            signedAmountText(month.flow.in, currency), amountText(month.flow.out, currency),
            signedAmountText(month.flow.net(), currency));
    html.write("</tbody>\n</table></div></details>\n");
}

}  // namespace

void writeAccount(HtmlWriter& html, const AccountFigures& figures, std::size_t number, const Report& report) {
    writeHead(html, figures, number);
    writeFacts(html, figures);
    writeFindings(html, *figures.history, *report.findings);
    if (figures.transactions.empty())
        html.write("<p class=\"note\">{}</p>\n", report.filter->noTransactions());
    else
        writePlots(html, figures, number);
    writeGaps(html, figures);
    writeMonths(html, figures.months, figures.history->currency);
    writeWayUp(html);
    html.write("</section>\n");
}

void writeCurrency(HtmlWriter& html, const CurrencyFigures& figures, std::size_t number) {
    if (figures.months.empty()) return;
    const std::string name = "all accounts in " + figures.currency;
    const bool hasInvestments = !figures.investments.empty();
    html.write(
        "<section class=\"account\" aria-labelledby=\"currency-title-{}\">\n<header><div>"
        "<h2 id=\"currency-title-{}\">All accounts in <bdi>{}</bdi></h2><p>{} accounts; a transfer between "
        "them counts as money out of one and into the other{}</p></div>",
        number, number, figures.currency, figures.count(),
        hasInvestments ? "; purchases and sales of securities count as neither" : "");
    if (figures.balance)
        html.write("<p class=\"balance\"><strong>{} <abbr>{}</abbr></strong>{}</p>",
                   amountText(*figures.balance, figures.currency), figures.currency,
                   hasInvestments ? "Sum of the balances and holdings" : "Sum of the ledger balances");
    html.write("</header>\n<div class=\"plots\">\n");
    writeFlowFigure(html, figures.months, name, figures.currency, "currency-" + std::to_string(number));
    html.write("</div>\n");
    writeMonths(html, figures.months, figures.currency);
    html.write("</section>\n");
}

}  // namespace tool
