// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "history/history.h"
#include "investments/facts.h"
#include "investments/security_lookup.h"
#include "report/amounts.h"
#include "report/axis.h"
#include "report/markup.h"
#include "report/parts.h"
#include "view/sections.h"

namespace tool {
namespace {

using namespace brackwell;

/// What the section of an account is made of.
struct Section {
    const InvestmentAccount& account;
    const InvestmentStatement& latest;
    const SecurityLookup& securities;
    const Filter& filter;
};

double approximately(const std::optional<Decimal>& value) noexcept {
    return value ? std::abs(approximate(*value)) : 0;
}

void writeFact(Markup& markup, std::string_view label, const std::optional<Decimal>& amount) {
    if (amount) markup.write("<div><dt>{}</dt><dd>{}</dd></div>\n", label, amountText(*amount));
}

void writeFact(Markup& markup, std::string_view label, OptionalText text) {
    if (text && !text->empty()) markup.write("<div><dt>{}</dt><dd><bdi>{}</bdi></dd></div>\n", label, *text);
}

void writeHead(Markup& markup, const Section& section, const std::string& number, std::size_t place) {
    markup.write(
        "<section class=\"account\" id=\"investment-{}\" aria-labelledby=\"investment-title-{}\">\n<header>"
        "<div><h2 id=\"investment-title-{}\">Investment account <bdi>{}</bdi></h2><p><bdi>{}</bdi></p></div>",
        place, place, place, number, section.account.institution());
    if (const auto worth = totalWorthOf(section.latest))
        markup.write("<p class=\"balance\"><strong>{} <abbr>{}</abbr></strong>Holdings and cash {}</p>",
                     amountText(*worth), section.account.currency, dayText(section.latest.asOf()));
    else
        markup.write("<p class=\"balance\">What it is worth is not stated</p>");
    markup.write("</header>\n");
}

void writeFacts(Markup& markup, const Section& section) {
    markup.write("<dl class=\"facts\">\n");
    if (const auto balance = section.latest.balance()) {
        writeFact(markup, "Cash", balance->cash());
        writeFact(markup, "Margin", balance->margin());
        writeFact(markup, "Short", balance->shortBalance());
        writeFact(markup, "Buying power", balance->buyingPower());
        for (const ListedBalance& listed : balance->listed())
            writeFact(markup, listed.name().value_or("Balance"), listed.value());
    }
    if (const auto plan = section.latest.balance401k()) writeFact(markup, "Plan", plan->total());
    writeFact(markup, "Broker", OptionalText(section.account.broker));
    writeFact(markup, "Currency", OptionalText(section.account.currency));
    markup.write("</dl>\n");
}

/// A bar and the share that it stands for.
void writeShare(Markup& markup, double value, double sum) {
    const double share = sum > 0 ? value / sum * 100 : 0;
    markup.write(
        "<td><svg class=\"share\" viewBox=\"0 0 100 10\" preserveAspectRatio=\"none\" aria-hidden=\"true\">"
        "<rect class=\"in\" width=\"{}\" height=\"10\"/></svg> {} %</td>",
        Coordinate{share}, Coordinate{std::round(share * 10) / 10});
}

void writeHolding(Markup& markup, const Section& section, const Position& position, double sum) {
    const auto security = section.securities.find(position);
    const auto value = valueOf(position, section.latest);
    markup.write("<tr><th scope=\"row\"><bdi>{}</bdi><small>{}</small></th>",
                 nameOf(security, position.securityID()),
                 security ? security->ticker().value_or("") : std::string_view());
    markup.write("<td class=\"amount\">{}</td><td class=\"amount\">{}</td>", shownUnits(position.units()),
                 shownUnits(position.unitPrice()));
    markup.write("<td class=\"amount\">{}</td>", value ? amountText(*value) : std::string("not known"));
    writeShare(markup, approximately(value), sum);
    markup.write("<td>{}</td></tr>\n", dayText(position.priceDate()));
}

void writeHoldings(Markup& markup, const Section& section, const std::vector<Position>& positions,
                   double sum) {
    markup.write(
        "<div class=\"scroll\"><table class=\"holdings\">\n<thead><tr><th scope=\"col\">Holding</th>"
        "<th scope=\"col\" class=\"amount\">Units</th><th scope=\"col\" class=\"amount\">Price</th>"
        "<th scope=\"col\" class=\"amount\">Value {}</th><th scope=\"col\">Share</th>"
        "<th scope=\"col\">As of</th></tr></thead>\n<tbody>\n",
        section.account.currency);
    for (const Position& position : positions) writeHolding(markup, section, position, sum);
    markup.write("</tbody>\n</table></div>\n");
}

void writeKinds(Markup& markup, const Section& section, const std::vector<Position>& positions, double sum) {
    std::map<std::string_view, Worth> kinds;
    for (const Position& position : positions)
        kinds[kindInWords(position.kind())].add(valueOf(position, section.latest));
    markup.write(
        "<div class=\"scroll\"><table class=\"months kinds\">\n<thead><tr><th scope=\"col\">Kind</th>"
        "<th scope=\"col\" class=\"amount\">Value {}</th><th "
        "scope=\"col\">Share</th></tr></thead>\n<tbody>\n",
        section.account.currency);
    for (const auto& [kind, worth] : kinds) {
        markup.write("<tr><th scope=\"row\">{}", kind);
        if (worth.withoutValue > 0) markup.write("<small>{} without a value</small>", worth.withoutValue);
        markup.write("</th><td class=\"amount\">{}</td>", amountText(worth.positions));
        writeShare(markup, approximately(worth.positions.value()), sum);
        markup.write("</tr>\n");
    }
    markup.write("</tbody>\n</table></div>\n");
}

void writeAllHoldings(Markup& markup, const Section& section) {
    const std::vector<Position> positions = section.filter.positionsOf(section.latest, section.securities);
    if (positions.empty()) {
        const bool isAny = !section.latest.positions().isEmpty();
        return markup.write("<p class=\"note\">{}</p>\n",
                            isAny ? "No holdings that were asked for." : "No holdings.");
    }
    double sum = 0;
    for (const Position& position : positions) sum += approximately(valueOf(position, section.latest));
    writeHoldings(markup, section, positions, sum);
    writeKinds(markup, section, positions, sum);
}

// ---------------------------------------------------------------------------------------------
// Transactions

/// A transaction with what is asked of it again and again.
struct Trade {
    InvestmentTransaction transaction;
    const InvestmentStatement& statement;
    std::optional<Date> date;
    std::optional<Decimal> amount;
};

/// Whether the first comes before the second in the order that is wanted: the newest first, unless it is
/// another one.
bool comesFirst(const Trade& first, const Trade& second, Order order) noexcept {
    if (order == Order::amount) return comesBefore(first.amount, second.amount);
    if (order == Order::date) return comesBefore(first.date, second.date);
    return first.date && (!second.date || *first.date > *second.date);
}

/// Those that are wanted, each once.
std::vector<Trade> tradesOf(const Section& section) {
    std::vector<Trade> trades;
    for (std::size_t number = 0; number < section.account.entries.size(); ++number) {
        const InvestmentEntry& entry = section.account.entries[number];
        if (entry.original != number || !section.filter.takes(entry.transaction, section.securities))
            continue;
        const InvestmentStatement& statement = section.account.statements[entry.statement].statement;
        trades.push_back({entry.transaction, statement, dateOf(entry.transaction),
                          amountOf(entry.transaction, statement)});
    }
    std::vector<const Trade*> sorted;
    for (const Trade& trade : trades) sorted.push_back(&trade);
    std::ranges::stable_sort(sorted, [&section](const Trade* first, const Trade* second) {
        return comesFirst(*first, *second, section.filter.order);
    });
    std::vector<Trade> ordered;
    for (const Trade* trade : sorted) ordered.push_back(*trade);
    return ordered;
}

std::string_view subjectOf(const Trade& trade, const SecurityLookup& securities) {
    const auto bank = trade.transaction.bankTransaction();
    if (bank) return bank->payeeName().value_or("");
    return nameOf(securities.find(trade.transaction), trade.transaction.securityID());
}

void writeTrade(Markup& markup, const Trade& trade, const SecurityLookup& securities) {
    markup.write("<tr><td>{}</td><td>{}</td><th scope=\"row\"><bdi>{}</bdi><small>{}</small></th>",
                 trade.date ? dayText(trade.date) : std::string("no date"), kindInWords(trade.transaction),
                 subjectOf(trade, securities), memoOf(trade.transaction).value_or(""));
    markup.write("<td class=\"amount\">{}</td><td class=\"amount\">{}</td>",
                 shownUnits(trade.transaction.units()), shownUnits(trade.transaction.unitPrice()));
    markup.write("<td class=\"amount\">{}</td></tr>\n",
                 trade.amount ? signedAmountText(*trade.amount) : std::string());
}

void writeTrades(Markup& markup, const Section& section, const std::vector<Trade>& trades) {
    if (trades.empty()) return markup.write("<p class=\"note\">No transactions.</p>\n");
    markup.write(
        "<div class=\"scroll\"><table class=\"trades\">\n<thead><tr><th scope=\"col\">Date</th>"
        "<th scope=\"col\">Kind</th><th scope=\"col\">Security</th>"
        "<th scope=\"col\" class=\"amount\">Units</th><th scope=\"col\" class=\"amount\">Price</th>"
        "<th scope=\"col\" class=\"amount\">Total {}</th></tr></thead>\n<tbody>\n",
        section.account.currency);
    for (const Trade& trade : trades) {
        if (!markup.isGood()) return;
        writeTrade(markup, trade, section.securities);
    }
    markup.write("</tbody>\n</table></div>\n");
}

/// What a transaction brought in; nothing for one that is no income. Income that was reinvested at once is
/// money that leaves the account.
std::optional<Decimal> incomeOf(const Trade& trade) {
    const InvestmentTransactionKind kind = trade.transaction.kind();
    if (kind == InvestmentTransactionKind::income) return trade.amount;
    if (kind != InvestmentTransactionKind::reinvestment || !trade.amount) return std::nullopt;
    return trade.amount->isNegative() ? trade.amount->negated() : trade.amount;
}

void writeIncome(Markup& markup, const Section& section, const std::vector<Trade>& trades) {
    std::map<std::string, Sum> months;
    for (const Trade& trade : trades)
        if (const auto income = incomeOf(trade))
            months[trade.date ? dayText(trade.date).substr(0, 7) : "no date"].add(*income);
    if (months.empty()) return;
    markup.write(
        "<div class=\"scroll\"><table class=\"months income\">\n<thead><tr><th scope=\"col\">Month</th>"
        "<th scope=\"col\" class=\"amount\">Income {}</th></tr></thead>\n<tbody>\n",
        section.account.currency);
    for (const auto& [month, sum] : months)
        markup.write("<tr><th scope=\"row\">{}</th><td class=\"amount\">{}</td></tr>\n", month,
                     amountText(sum));
    markup.write("</tbody>\n</table></div>\n");
}

}  // namespace

void writeInvestments(Markup& markup, const Report& report) {
    const SecurityList own;
    const SecurityList all(report.investments->securities());
    const SecurityLookup securities(own, all);
    std::size_t place = 0;
    for (const InvestmentAccount& account : report.investments->accounts()) {
        const InvestmentStatement latest = account.latest();
        const Section section{account, latest, securities, *report.filter};
        const std::vector<Trade> trades = tradesOf(section);
        writeHead(markup, section, dottedNumber(account.number, report.showsFullNumbers), ++place);
        writeFacts(markup, section);
        writeAllHoldings(markup, section);
        writeIncome(markup, section, trades);
        writeTrades(markup, section, trades);
        markup.write("</section>\n");
    }
}

}  // namespace tool
