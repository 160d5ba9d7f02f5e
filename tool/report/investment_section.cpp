// SPDX-License-Identifier: Apache-2.0
#include "report/investment_section.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "history/period.h"
#include "investments/facts.h"
#include "report/amounts.h"
#include "report/axis.h"
#include "report/fact_list.h"
#include "report/finding_list.h"
#include "report/flow_plot.h"
#include "report/html_writer.h"
#include "report/way_up.h"
#include "text/shown_values.h"
#include "text/transaction_text.h"
#include "text/value_text.h"

namespace tool {
namespace {

using namespace brackwell;

void writeAmountFact(HtmlWriter& html, std::string_view label, const std::optional<Decimal>& amount,
                     OptionalText currency) {
    if (amount) html.write("<div><dt>{}</dt><dd>{}</dd></div>\n", label, amountText(*amount, currency));
}

/// A margin balance is not in what an account is worth, which nobody should have to guess.
std::string marginText(const InvestmentStatement& latest) {
    const auto balance = latest.balance();
    const auto margin = balance ? balance->margin() : std::nullopt;
    if (!margin || margin->isZero()) return {};
    return ", without the margin balance of " + amountText(*margin, latest.currency()) + ",";
}

void writeHead(HtmlWriter& html, const InvestmentFigures& figures, std::size_t place) {
    html.write(
        "<section class=\"account investment\" id=\"investment-{}\" "
        "aria-labelledby=\"investment-title-{}\">\n<header>"
        "<div><h2 id=\"investment-title-{}\">",
        place, place, place);
    writeName(html, figures.name);
    html.write("</h2><p><bdi>{}</bdi></p></div>", figures.account->institution());
    if (figures.worth)
        html.write("<p class=\"balance\"><strong>{} <abbr>{}</abbr></strong>Holdings and cash{} {}</p>",
                   amountText(*figures.worth, figures.account->currency), figures.account->currency,
                   marginText(figures.latest), dayText(figures.latest.asOf()));
    else
        html.write("<p class=\"balance\">The value is not known: {}</p>", whyNoWorth(figures.latest));
    html.write("</header>\n");
}

Period tradedDays(const std::vector<Trade>& trades) {
    Period period;
    for (const Trade& trade : trades) period.include(trade.date);
    return period;
}

/// The OFX standard's percentages stand as they are, amounts with a currency of their own.
std::string listedText(const ListedBalance& balance, OptionalText accountCurrency) {
    if (!balance.value()) return std::string(balance.text("value").value_or(""));
    if (balance.type() == BalanceType::percent) return balance.value()->toString() + " %";
    if (balance.type() == BalanceType::number) return balance.value()->toString();
    const auto currency = balance.currency();
    const std::string own = currency && !currency->isConverted ? currency->symbol : std::string();
    return withCurrency(amountText(*balance.value(), firstOf(own, accountCurrency)), own);
}

void writeBalances(HtmlWriter& html, const InvestmentStatement& latest) {
    if (const auto balance = latest.balance()) {
        writeAmountFact(html, "Cash", balance->cash(), latest.currency());
        writeAmountFact(html, "Margin", balance->margin(), latest.currency());
        writeAmountFact(html, "Short", balance->shortBalance(), latest.currency());
        writeAmountFact(html, "Buying power", balance->buyingPower(), latest.currency());
        for (const ListedBalance& listed : balance->listed())
            writeFact(html, listed.name().value_or("Balance"), listedText(listed, latest.currency()));
    }
    if (const auto plan = latest.balance401k())
        writeAmountFact(html, "Plan", plan->total(), latest.currency());
}

void writeFacts(HtmlWriter& html, const InvestmentFigures& figures) {
    const InvestmentAccount& account = *figures.account;
    html.write("<dl class=\"facts\">\n");
    writeBalances(html, figures.latest);
    if (!figures.trades.empty()) writeFlowFacts(html, figures.flow, account.currency);
    writeFact(html, "Transactions", std::to_string(figures.trades.size()));
    writeFact(html, "Traded", tradedDays(figures.trades));
    writeFact(html, "Currency", account.currency.empty() ? "not stated" : account.currency);
    writeFact(html, "Broker", account.broker);
    html.write("</dl>\n");
}

/// A bar and the share of all that is held that it stands for. What is owed has its own colour.
void writeShare(HtmlWriter& html, const std::optional<Amount>& known, double sum) {
    if (!known) return html.write("<td class=\"amount\">\u2013</td>");
    const double value = approximate(known->exact);
    const double share = sum > 0 ? std::abs(value) / sum * 100 : 0;
    html.write(
        "<td class=\"amount\"><svg class=\"share\" viewBox=\"0 0 100 10\" preserveAspectRatio=\"none\" "
        "aria-hidden=\"true\"><rect class=\"whole\" width=\"100\" height=\"10\"/>"
        "<rect class=\"{}\" width=\"{}\" height=\"10\"/></svg><span>{} %</span></td>",
        value < 0 ? "out" : "in", Coordinate{share}, Coordinate{std::round(share * 10) / 10});
}

/// A value that is not known in the account's currency as it is written.
std::string unknownValueOf(const Position& position) {
    if (!position.marketValue()) return "not known";
    const auto currency = position.currency();
    const std::string symbol = currency ? currency->symbol : std::string();
    return withCurrency(amountText(*position.marketValue(), symbol), symbol);
}

void writeHolding(HtmlWriter& html, const Holding& holding, const std::string& currency, double sum) {
    const auto& [position, security, value] = holding;
    const std::string_view ticker = security ? security->ticker().value_or("") : std::string_view();
    html.write("<tr><th scope=\"row\"><bdi>{}</bdi>", nameOf(security, position.securityID()));
    if (!ticker.empty()) html.write("<small>{}</small>", ticker);
    html.write("</th><td class=\"amount\">{}</td><td class=\"amount\">{}</td>", numberText(position.units()),
               numberText(position.unitPrice()));
    html.write("<td class=\"amount\">{}</td>",
               value ? amountText(*value, currency) : unknownValueOf(position));
    writeShare(html, value, sum);
    html.write("<td class=\"amount more\">{}</td></tr>\n", dayText(position.priceDate()));
}

void writeSumOfHoldings(HtmlWriter& html, const std::vector<Holding>& holdings, const std::string& currency) {
    if (holdings.size() < 2) return;
    Worth worth;
    for (const Holding& holding : holdings) worth.add(holding.value);
    html.write("<tfoot>\n<tr><th scope=\"row\">Sum");
    if (worth.withoutValue > 0) html.write("<small>{} without a value</small>", worth.withoutValue);
    html.write(
        "</th><td></td><td></td><td class=\"amount\">{}</td><td></td><td class=\"more\"></td></tr>\n"
        "</tfoot>\n",
        amountText(worth.positions, currency));
}

void writeHoldings(HtmlWriter& html, const InvestmentFigures& figures, double sum) {
    html.write(
        "<h3>Holdings</h3>\n<div class=\"scroll\"><table class=\"holdings\">\n<thead><tr>"
        "<th scope=\"col\">Security</th><th scope=\"col\" class=\"amount\">Units</th>"
        "<th scope=\"col\" class=\"amount\">Price</th><th scope=\"col\" class=\"amount\">Value {}</th>"
        "<th scope=\"col\" class=\"amount\">Share</th>"
        "<th scope=\"col\" class=\"amount more\">As of</th></tr></thead>\n<tbody>\n",
        figures.account->currency);
    for (const Holding& holding : figures.holdings) {
        if (!html.isGood()) return;
        writeHolding(html, holding, figures.account->currency, sum);
    }
    html.write("</tbody>\n");
    writeSumOfHoldings(html, figures.holdings, figures.account->currency);
    html.write("</table></div>\n");
}

void writeKinds(HtmlWriter& html, const InvestmentFigures& figures, double sum) {
    std::map<std::string_view, Worth> kinds;
    for (const Holding& holding : figures.holdings)
        kinds[kindInWords(holding.position.kind())].add(holding.value);
    html.write(
        "<figure><figcaption>Value by kind</figcaption>\n<div class=\"scroll\"><table class=\"kinds\">\n"
        "<thead><tr><th scope=\"col\">Kind</th><th scope=\"col\" class=\"amount\">Value {}</th>"
        "<th scope=\"col\" class=\"amount\">Share</th></tr></thead>\n<tbody>\n",
        figures.account->currency);
    for (const auto& [kind, worth] : kinds) {
        html.write("<tr><th scope=\"row\">{}", kind);
        if (worth.withoutValue > 0) html.write("<small>{} without a value</small>", worth.withoutValue);
        html.write("</th><td class=\"amount\">{}</td>",
                   amountText(worth.positions, figures.account->currency));
        writeShare(html, worth.positions.amount(), sum);
        html.write("</tr>\n");
    }
    html.write("</tbody>\n</table></div></figure>\n");
}

/// What the holdings come to, counting what is owed as what is held.
double sumOfHoldings(const InvestmentFigures& figures) {
    double sum = 0;
    for (const Holding& holding : figures.holdings)
        if (holding.value) sum += std::abs(approximate(holding.value->exact));
    return sum;
}

void writeIncomeFigure(HtmlWriter& html, const InvestmentFigures& figures, std::size_t place) {
    html.write(
        "<figure><figcaption>Income <span class=\"key\">from securities, with what was "
        "reinvested</span></figcaption>\n");
    writeIncomePlot(html, figures.income.months, figures.name.text(), figures.account->currency,
                    "income-" + std::to_string(place));
    html.write("</figure>\n");
}

void writePlots(HtmlWriter& html, const InvestmentFigures& figures, double sum, std::size_t place) {
    if (figures.holdings.empty() && figures.income.months.empty()) return;
    html.write("<div class=\"plots\">\n");
    if (!figures.holdings.empty()) writeKinds(html, figures, sum);
    if (!figures.income.months.empty()) writeIncomeFigure(html, figures, place);
    html.write("</div>\n");
}

Sum sumOf(const Income& income) {
    Sum sum = income.withoutDate;
    for (const MonthFlow& month : income.months) sum.add(month.flow.net());
    return sum;
}

void writeIncomeMonths(HtmlWriter& html, const InvestmentFigures& figures) {
    const Income& income = figures.income;
    if (income.months.empty() && income.undated == 0) return;
    html.write(
        "<details><summary>Income as a table</summary>\n<div class=\"scroll\"><table class=\"months "
        "income\">\n"
        "<thead><tr><th scope=\"col\">Month</th><th scope=\"col\" class=\"amount\">Income "
        "{}</th></tr></thead>\n"
        "<tbody>\n",
        figures.account->currency);
    for (const MonthFlow& month : income.months)
        html.write("<tr><th scope=\"row\">{}</th><td class=\"amount\">{}</td></tr>\n",
                   dayText(std::chrono::sys_days(month.month / 1)).substr(0, 7),
                   amountText(month.flow.net(), figures.account->currency));
    if (income.undated > 0)
        html.write("<tr><th scope=\"row\">no date</th><td class=\"amount\">{}</td></tr>\n",
                   amountText(income.withoutDate, figures.account->currency));
    html.write(
        "</tbody>\n<tfoot>\n<tr><th scope=\"row\">Sum</th><td class=\"amount\">{}</td></tr>\n</tfoot>\n"
        "</table></div></details>\n",
        amountText(sumOf(income), figures.account->currency));
}

void writeNotes(HtmlWriter& html, const InvestmentFigures& figures) {
    const bool isAny = !figures.latest.positions().isEmpty();
    if (figures.holdings.empty())
        html.write("<p class=\"note\">{}</p>\n", isAny ? "No holdings match the filter." : "No holdings.");
    if (figures.income.unknown > 0)
        html.write("<p class=\"note\">Income in {} without an amount, not counted: {}.</p>\n",
                   figures.account->currency.empty() ? "the account's currency" : figures.account->currency,
                   figures.income.unknown);
}

}  // namespace

void writeInvestment(HtmlWriter& html, const InvestmentFigures& figures, std::size_t number,
                     const FindingList& findings) {
    const double sum = sumOfHoldings(figures);
    writeHead(html, figures, number);
    writeFacts(html, figures);
    writeNotes(html, figures);
    std::vector<const FileFinding*> found;
    for (const InvestmentSource& source : figures.account->statements) {
        const auto& more = findings.about(identityOf(source.statement));
        found.insert(found.end(), more.begin(), more.end());
    }
    writeFindingNotes(html, found);
    writePlots(html, figures, sum, number);
    writeIncomeMonths(html, figures);
    if (!figures.holdings.empty()) writeHoldings(html, figures, sum);
    writeWayUp(html);
    html.write("</section>\n");
}

void writeOtherSecurities(HtmlWriter& html, const Report& report) {
    if (report.otherSecurities.empty()) return;
    html.write(
        "<section aria-labelledby=\"securities-title\">\n<h2 id=\"securities-title\">Securities that no "
        "holding or transaction uses</h2>\n<div class=\"scroll\"><table class=\"securities\">\n<thead><tr>"
        "<th scope=\"col\">Security</th><th scope=\"col\">Kind</th><th scope=\"col\" "
        "class=\"amount\">Price</th>"
        "<th scope=\"col\" class=\"amount\">As of</th></tr></thead>\n<tbody>\n");
    for (const Security& security : report.otherSecurities) {
        const auto currency = security.currency();
        html.write("<tr><th scope=\"row\"><bdi>{}</bdi><small>{}</small></th><td>{}</td>",
                   nameOf(security, security.id()), security.ticker().value_or(""),
                   kindInWords(security.kind()));
        html.write("<td class=\"amount\">{} <abbr>{}</abbr></td><td class=\"amount\">{}</td></tr>\n",
                   numberText(security.unitPrice()), currency ? currency->symbol : std::string(),
                   dayText(security.priceDate()));
    }
    html.write("</tbody>\n</table></div>\n</section>\n");
}

}  // namespace tool
