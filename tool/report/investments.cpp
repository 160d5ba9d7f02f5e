// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <map>

#include "investments/facts.h"
#include "report/amounts.h"
#include "report/axis.h"
#include "report/markup.h"
#include "report/parts.h"
#include "report/plots.h"
#include "view/sections.h"

namespace tool {
namespace {

using namespace brackwell;

void writeAmountFact(Markup& markup, std::string_view label, const std::optional<Decimal>& amount) {
    if (amount) markup.write("<div><dt>{}</dt><dd>{}</dd></div>\n", label, amountText(*amount));
}

/// A margin balance is not in what an account is worth, which nobody should have to guess.
std::string marginText(const InvestmentStatement& latest) {
    const auto balance = latest.balance();
    const auto margin = balance ? balance->margin() : std::nullopt;
    if (!margin || margin->isZero()) return {};
    return ", without the margin balance of " + amountText(*margin) + ",";
}

void writeHead(Markup& markup, const InvestmentFigures& figures, std::size_t place) {
    markup.write(
        "<section class=\"account investment\" id=\"investment-{}\" "
        "aria-labelledby=\"investment-title-{}\">\n<header>"
        "<div><h2 id=\"investment-title-{}\"><bdi>{}</bdi></h2><p><bdi>{}</bdi></p></div>",
        place, place, place, figures.name(), figures.account->institution());
    if (figures.worth)
        markup.write("<p class=\"balance\"><strong>{} <abbr>{}</abbr></strong>Holdings and cash{} {}</p>",
                     amountText(*figures.worth), figures.account->currency, marginText(figures.latest),
                     dayText(figures.latest.asOf()));
    else
        markup.write("<p class=\"balance\">What it is worth is not stated: {}</p>",
                     whyNoWorth(figures.latest));
    markup.write("</header>\n");
}

std::string periodOf(const std::vector<Trade>& trades) {
    std::optional<Date> first;
    std::optional<Date> last;
    for (const Trade& trade : trades) {
        if (!trade.date) continue;
        first = std::min(first.value_or(*trade.date), *trade.date);
        last = std::max(last.value_or(*trade.date), *trade.date);
    }
    if (!first || dayOf(*first) == dayOf(*last)) return dayText(first);
    return dayText(first) + " to " + dayText(last);
}

/// The OFX standard's percentages stand as they are, amounts with a currency of their own.
std::string listedText(const ListedBalance& balance) {
    if (!balance.value()) return std::string(balance.text("value").value_or(""));
    if (balance.type() == BalanceType::percent) return balance.value()->toString() + " %";
    if (balance.type() == BalanceType::number) return balance.value()->toString();
    const auto currency = balance.currency();
    return withCurrency(amountText(*balance.value()),
                        currency && !currency->isConverted ? currency->symbol : std::string());
}

void writeBalances(Markup& markup, const InvestmentStatement& latest) {
    if (const auto balance = latest.balance()) {
        writeAmountFact(markup, "Cash", balance->cash());
        writeAmountFact(markup, "Margin", balance->margin());
        writeAmountFact(markup, "Short", balance->shortBalance());
        writeAmountFact(markup, "Buying power", balance->buyingPower());
        for (const ListedBalance& listed : balance->listed())
            writeFact(markup, listed.name().value_or("Balance"), listedText(listed));
    }
    if (const auto plan = latest.balance401k()) writeAmountFact(markup, "Plan", plan->total());
}

void writeFacts(Markup& markup, const InvestmentFigures& figures) {
    const InvestmentAccount& account = *figures.account;
    markup.write("<dl class=\"facts\">\n");
    writeBalances(markup, figures.latest);
    if (!figures.trades.empty()) writeFlowFacts(markup, figures.flow);
    writeFact(markup, "Transactions", std::to_string(figures.trades.size()));
    writeFact(markup, "Traded", periodOf(figures.trades));
    writeFact(markup, "Currency", account.currency.empty() ? "not stated" : account.currency);
    writeFact(markup, "Broker", account.broker);
    markup.write("</dl>\n");
}

/// A bar and the share of all that is held that it stands for. What is owed has its own colour.
void writeShare(Markup& markup, const std::optional<Amount>& known, double sum) {
    if (!known) return markup.write("<td class=\"amount\">\u2013</td>");
    const double value = approximate(known->exact);
    const double share = sum > 0 ? std::abs(value) / sum * 100 : 0;
    markup.write(
        "<td class=\"amount\"><svg class=\"share\" viewBox=\"0 0 100 10\" preserveAspectRatio=\"none\" "
        "aria-hidden=\"true\"><rect class=\"whole\" width=\"100\" height=\"10\"/>"
        "<rect class=\"{}\" width=\"{}\" height=\"10\"/></svg><span>{} %</span></td>",
        value < 0 ? "out" : "in", Coordinate{share}, Coordinate{std::round(share * 10) / 10});
}

/// A value that is not known in the account's currency as it is written.
std::string unknownValueOf(const Position& position) {
    const auto currency = position.currency();
    if (!position.marketValue()) return "not known";
    return withCurrency(amountText(*position.marketValue()), currency ? currency->symbol : std::string());
}

void writeHolding(Markup& markup, const Holding& holding, double sum) {
    const auto& [position, security, value] = holding;
    const std::string_view ticker = security ? security->ticker().value_or("") : std::string_view();
    markup.write("<tr><th scope=\"row\"><bdi>{}</bdi>", nameOf(security, position.securityID()));
    if (!ticker.empty()) markup.write("<small>{}</small>", ticker);
    markup.write("</th><td class=\"amount\">{}</td><td class=\"amount\">{}</td>",
                 numberText(position.units()), numberText(position.unitPrice()));
    markup.write("<td class=\"amount\">{}</td>", value ? amountText(*value) : unknownValueOf(position));
    writeShare(markup, value, sum);
    markup.write("<td class=\"amount more\">{}</td></tr>\n", dayText(position.priceDate()));
}

void writeSumOfHoldings(Markup& markup, const std::vector<Holding>& holdings) {
    if (holdings.size() < 2) return;
    Worth worth;
    for (const Holding& holding : holdings) worth.add(holding.value);
    markup.write("<tfoot>\n<tr><th scope=\"row\">Sum");
    if (worth.withoutValue > 0) markup.write("<small>{} without a value</small>", worth.withoutValue);
    markup.write(
        "</th><td></td><td></td><td class=\"amount\">{}</td><td></td><td class=\"more\"></td></tr>\n"
        "</tfoot>\n",
        amountText(worth.positions));
}

void writeHoldings(Markup& markup, const InvestmentFigures& figures, double sum) {
    markup.write(
        "<h3>Holdings</h3>\n<div class=\"scroll\"><table class=\"holdings\">\n<thead><tr>"
        "<th scope=\"col\">Security</th><th scope=\"col\" class=\"amount\">Units</th>"
        "<th scope=\"col\" class=\"amount\">Price</th><th scope=\"col\" class=\"amount\">Value {}</th>"
        "<th scope=\"col\" class=\"amount\">Share</th>"
        "<th scope=\"col\" class=\"amount more\">As of</th></tr></thead>\n<tbody>\n",
        figures.account->currency);
    for (const Holding& holding : figures.holdings) {
        if (!markup.isGood()) return;
        writeHolding(markup, holding, sum);
    }
    markup.write("</tbody>\n");
    writeSumOfHoldings(markup, figures.holdings);
    markup.write("</table></div>\n");
}

void writeKinds(Markup& markup, const InvestmentFigures& figures, double sum) {
    std::map<std::string_view, Worth> kinds;
    for (const Holding& holding : figures.holdings)
        kinds[kindInWords(holding.position.kind())].add(holding.value);
    markup.write(
        "<figure><figcaption>Value by kind</figcaption>\n<div class=\"scroll\"><table class=\"kinds\">\n"
        "<thead><tr><th scope=\"col\">Kind</th><th scope=\"col\" class=\"amount\">Value {}</th>"
        "<th scope=\"col\" class=\"amount\">Share</th></tr></thead>\n<tbody>\n",
        figures.account->currency);
    for (const auto& [kind, worth] : kinds) {
        markup.write("<tr><th scope=\"row\">{}", kind);
        if (worth.withoutValue > 0) markup.write("<small>{} without a value</small>", worth.withoutValue);
        markup.write("</th><td class=\"amount\">{}</td>", amountText(worth.positions));
        writeShare(markup, worth.positions.amount(), sum);
        markup.write("</tr>\n");
    }
    markup.write("</tbody>\n</table></div></figure>\n");
}

/// What the holdings come to, counting what is owed as what is held.
double sumOfHoldings(const InvestmentFigures& figures) {
    double sum = 0;
    for (const Holding& holding : figures.holdings)
        if (holding.value) sum += std::abs(approximate(holding.value->exact));
    return sum;
}

void writeIncomeFigure(Markup& markup, const InvestmentFigures& figures, std::size_t place) {
    markup.write(
        "<figure><figcaption>Income <span class=\"key\">from securities, with what was "
        "reinvested</span></figcaption>\n");
    writeIncomePlot(markup, figures.income.months, figures.name(), figures.account->currency,
                    "income-" + std::to_string(place));
    markup.write("</figure>\n");
}

void writePlots(Markup& markup, const InvestmentFigures& figures, double sum, std::size_t place) {
    if (figures.holdings.empty() && figures.income.months.empty()) return;
    markup.write("<div class=\"plots\">\n");
    if (!figures.holdings.empty()) writeKinds(markup, figures, sum);
    if (!figures.income.months.empty()) writeIncomeFigure(markup, figures, place);
    markup.write("</div>\n");
}

Sum sumOf(const Income& income) {
    Sum sum = income.withoutDate;
    for (const MonthFlow& month : income.months) sum.add(month.flow.net());
    return sum;
}

void writeIncomeMonths(Markup& markup, const InvestmentFigures& figures) {
    const Income& income = figures.income;
    if (income.months.empty() && income.undated == 0) return;
    markup.write(
        "<details><summary>Income as a table</summary>\n<div class=\"scroll\"><table class=\"months "
        "income\">\n"
        "<thead><tr><th scope=\"col\">Month</th><th scope=\"col\" class=\"amount\">Income "
        "{}</th></tr></thead>\n"
        "<tbody>\n",
        figures.account->currency);
    for (const MonthFlow& month : income.months)
        markup.write("<tr><th scope=\"row\">{}</th><td class=\"amount\">{}</td></tr>\n",
                     dayText(std::chrono::sys_days(month.month / 1)).substr(0, 7),
                     amountText(month.flow.net()));
    if (income.undated > 0)
        markup.write("<tr><th scope=\"row\">no date</th><td class=\"amount\">{}</td></tr>\n",
                     amountText(income.withoutDate));
    markup.write(
        "</tbody>\n<tfoot>\n<tr><th scope=\"row\">Sum</th><td class=\"amount\">{}</td></tr>\n</tfoot>\n"
        "</table></div></details>\n",
        amountText(sumOf(income)));
}

void writeNotes(Markup& markup, const InvestmentFigures& figures) {
    const bool isAny = !figures.latest.positions().isEmpty();
    if (figures.holdings.empty())
        markup.write("<p class=\"note\">{}</p>\n",
                     isAny ? "No holdings that were asked for." : "No holdings.");
    if (figures.income.unknown > 0)
        markup.write("<p class=\"note\">Income without an amount in {}, which is not counted: {}.</p>\n",
                     figures.account->currency.empty() ? "the account's currency" : figures.account->currency,
                     figures.income.unknown);
}

}  // namespace

void writeInvestment(Markup& markup, const InvestmentFigures& figures, std::size_t number) {
    const double sum = sumOfHoldings(figures);
    writeHead(markup, figures, number);
    writeFacts(markup, figures);
    writeNotes(markup, figures);
    writePlots(markup, figures, sum, number);
    writeIncomeMonths(markup, figures);
    if (!figures.holdings.empty()) writeHoldings(markup, figures, sum);
    markup.write("</section>\n");
}

void writeOtherSecurities(Markup& markup, const Report& report) {
    if (report.otherSecurities.empty()) return;
    markup.write(
        "<section aria-labelledby=\"securities-title\">\n<h2 id=\"securities-title\">Securities that no "
        "holding "
        "or transaction names</h2>\n<div class=\"scroll\"><table class=\"securities\">\n<thead><tr>"
        "<th scope=\"col\">Security</th><th scope=\"col\">Kind</th><th scope=\"col\" "
        "class=\"amount\">Price</th>"
        "<th scope=\"col\" class=\"amount\">As of</th></tr></thead>\n<tbody>\n");
    for (const Security& security : report.otherSecurities) {
        const auto currency = security.currency();
        markup.write("<tr><th scope=\"row\"><bdi>{}</bdi><small>{}</small></th><td>{}</td>",
                     nameOf(security, security.id()), security.ticker().value_or(""),
                     kindInWords(security.kind()));
        markup.write("<td class=\"amount\">{} <abbr>{}</abbr></td><td class=\"amount\">{}</td></tr>\n",
                     numberText(security.unitPrice()), currency ? currency->symbol : std::string(),
                     dayText(security.priceDate()));
    }
    markup.write("</tbody>\n</table></div>\n</section>\n");
}

}  // namespace tool
