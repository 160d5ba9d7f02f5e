// SPDX-License-Identifier: Apache-2.0
#include "report/html_page.h"

#include <brackwell/version.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "filter/filter.h"
#include "history/history.h"
#include "history/period.h"
#include "report/account_section.h"
#include "report/assets.h"
#include "report/finding_list.h"
#include "report/html_writer.h"
#include "report/investment_section.h"
#include "report/overview.h"
#include "report/payee_section.h"
#include "report/transaction_table.h"
#include "text/counted.h"
#include "text/value_text.h"

namespace tool {
namespace {

Period periodOf(const Report& report) {
    Period period;
    for (const AccountFigures& account : report.accounts) {
        if (account.days.empty()) continue;
        period.include(account.days.front().day);
        period.include(account.days.back().day);
    }
    for (const InvestmentFigures& account : report.investments)
        for (const Trade& trade : account.trades) period.include(trade.date);
    return period;
}

std::size_t sumOf(const std::vector<AccountFigures>& accounts, auto count) {
    std::size_t sum = 0;
    for (const AccountFigures& account : accounts) sum += count(account);
    return sum;
}

/// Nothing is fetched, sent or run but the style and the script of the page itself, known by their hashes.
void writeHead(HtmlWriter& html) {
    html.write(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
        "style-src 'sha256-{}'; script-src 'sha256-{}'; base-uri 'none'; form-action 'none'\"/>\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
        "<meta name=\"color-scheme\" content=\"light dark\"/>\n"
        "<meta name=\"referrer\" content=\"no-referrer\"/>\n"
        "<meta name=\"generator\" content=\"brackwell " BRACKWELL_VERSION_STRING
        "\"/>\n"
        "<title>Account report</title>\n<style>",
        std::string_view(kPageStyleHash.data(), kPageStyleHash.size()),
        std::string_view(kPageScriptHash.data(), kPageScriptHash.size()));
    html.write(kPageStyle);
    html.write("</style>\n</head>\n<body>\n");
}

/// Which transactions were asked for, where that is not all of them.
void writeChoice(HtmlWriter& html, const Filter& filter) {
    if (!filter.since && !filter.before && filter.words.empty()) return;
    html.write("<p>Only transactions");
    if (filter.since) html.write(" from {}", dayText(filter.since));
    if (filter.before) html.write(" until {}", dayText(*filter.before - std::chrono::milliseconds(1)));
    for (const std::string& word : filter.words) {
        const bool isFirst = &word == filter.words.data();
        html.write(" {} <q><bdi>{}</bdi></q>", isFirst ? "that contain" : "and", word);
    }
    html.write("; balances follow from all transactions.</p>\n");
}

void writeTitle(HtmlWriter& html, const Report& report) {
    const Period period = periodOf(report);
    std::size_t transactions =
        sumOf(report.accounts, [](const AccountFigures& account) { return account.transactions.size(); });
    for (const InvestmentFigures& account : report.investments) transactions += account.trades.size();
    html.write("<header class=\"title\" id=\"top\">\n<h1>Account report</h1>\n<p>{}, {}",
               counted(report.accountCount(), "account", "accounts"),
               counted(transactions, "transaction", "transactions"));
    if (period.first)
        html.write(", <time>{}</time> to <time>{}</time>", dayText(period.first), dayText(period.last));
    html.write("</p>\n");
    writeChoice(html, *report.filter);
    html.write("</header>\n");
}

void writeNotes(HtmlWriter& html, const Report& report) {
    const std::size_t withoutDate =
        sumOf(report.accounts, [](const auto& account) { return account.withoutDate; });
    const std::size_t withoutAmount =
        sumOf(report.accounts, [](const auto& account) { return account.withoutAmount; });
    const std::size_t foreign = sumOf(report.accounts, [](const auto& account) { return account.foreign; });
    const bool hasNotes = report.repeats + withoutDate + withoutAmount + foreign != 0;
    if (report.unread.empty() && report.findings->all().empty() && !hasNotes) return;
    html.write("<ul class=\"notes\" aria-label=\"Notes\">\n");
    for (const std::string& file : report.unread)
        html.write("<li><bdi>{}</bdi> could not be read, or not as a whole.</li>\n", file);
    writeFindingSummary(html, *report.findings);
    if (report.repeats > 0)
        html.write("<li>{} in more than one statement and counted once.</li>\n",
                   counted(report.repeats, "transaction was", "transactions were"));
    if (withoutDate > 0)
        html.write(
            "<li>{} no date: listed at the end of the table and included in the sums, but not in the "
            "plots.</li>\n",
            counted(withoutDate, "transaction has", "transactions have"));
    if (withoutAmount > 0)
        html.write("<li>{} no amount; counted as zero.</li>\n",
                   counted(withoutAmount, "transaction has", "transactions have"));
    if (foreign > 0)
        html.write("<li>{} in another currency without an exchange rate; not counted.</li>\n",
                   counted(foreign, "transaction is", "transactions are"));
    html.write("</ul>\n");
}

void writeFoot(HtmlWriter& html) {
    html.write(
        "<footer><p>Days and months are those of UTC. Amounts are exact but for those that a rate has "
        "converted; these and the plots are rounded. "
        "Made with brackwell " BRACKWELL_VERSION_STRING ".</p></footer>\n</main>\n<script>");
    html.write(kPageScript);
    html.write("</script>\n</body>\n</html>\n");
}

}  // namespace

void writePage(HtmlWriter& html, const Report& report) {
    writeHead(html);
    html.write("<main>\n");
    writeTitle(html, report);
    writeNotes(html, report);
    if (report.accountCount() == 0)
        html.write("<p class=\"note\">There are no statements of accounts.</p>\n");
    writeOverview(html, report);
    for (std::size_t i = 0; i < report.currencies.size(); ++i)
        writeCurrency(html, report.currencies[i], i + 1);
    for (std::size_t i = 0; i < report.accounts.size(); ++i)
        writeAccount(html, report.accounts[i], i + 1, report);
    for (std::size_t i = 0; i < report.investments.size(); ++i)
        writeInvestment(html, report.investments[i], i + 1, *report.findings);
    writeOtherSecurities(html, report);
    writePayees(html, report);
    writeTransactions(html, report);
    writeAllFindings(html, *report.findings);
    writeFoot(html);
}

}  // namespace tool
