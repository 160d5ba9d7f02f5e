// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "filter/filter.h"
#include "history/history.h"
#include "report/assets.h"
#include "report/markup.h"
#include "report/parts.h"
#include "text/value_text.h"

namespace tool {
namespace {

struct Period {
    std::optional<std::chrono::sys_days> first;
    std::optional<std::chrono::sys_days> last;
};

void include(Period& period, std::chrono::sys_days day) {
    period.first = std::min(period.first.value_or(day), day);
    period.last = std::max(period.last.value_or(day), day);
}

Period periodOf(const Report& report) {
    Period period;
    for (const AccountFigures& account : report.accounts) {
        if (account.days.empty()) continue;
        include(period, account.days.front().day);
        include(period, account.days.back().day);
    }
    for (const InvestmentFigures& account : report.investments)
        for (const Trade& trade : account.trades)
            if (trade.date) include(period, dayOf(*trade.date));
    return period;
}

std::string counted(std::size_t count, const std::string& one, const std::string& several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

std::size_t sumOf(const std::vector<AccountFigures>& accounts, auto count) {
    std::size_t sum = 0;
    for (const AccountFigures& account : accounts) sum += count(account);
    return sum;
}

/// Nothing is fetched, sent or run but the style and the script of the page itself, known by their hashes.
void writeHead(Markup& markup) {
    markup.write(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
        "style-src 'sha256-{}'; script-src 'sha256-{}'; base-uri 'none'; form-action 'none'\"/>\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
        "<meta name=\"color-scheme\" content=\"light dark\"/>\n"
        "<meta name=\"referrer\" content=\"no-referrer\"/>\n"
        "<meta name=\"generator\" content=\"brackwell " BRACKWELL_VERSION
        "\"/>\n"
        "<title>Account report</title>\n<style>",
        std::string_view(kPageStyleHash.data(), kPageStyleHash.size()),
        std::string_view(kPageScriptHash.data(), kPageScriptHash.size()));
    markup.write(kPageStyle);
    markup.write("</style>\n</head>\n<body>\n");
}

/// Which transactions were asked for, where that is not all of them.
void writeChoice(Markup& markup, const Filter& filter) {
    if (!filter.since && !filter.before && filter.words.empty()) return;
    markup.write("<p>Only transactions");
    if (filter.since) markup.write(" from {}", dayText(filter.since));
    if (filter.before) markup.write(" until {}", dayText(*filter.before - std::chrono::milliseconds(1)));
    for (const std::string& word : filter.words) {
        const bool isFirst = &word == filter.words.data();
        markup.write(" {} <q><bdi>{}</bdi></q>", isFirst ? "that contain" : "and", word);
    }
    markup.write("; balances follow from all transactions.</p>\n");
}

void writeTitle(Markup& markup, const Report& report) {
    const Period period = periodOf(report);
    std::size_t transactions =
        sumOf(report.accounts, [](const AccountFigures& account) { return account.transactions.size(); });
    for (const InvestmentFigures& account : report.investments) transactions += account.trades.size();
    markup.write("<header class=\"title\">\n<h1>Account report</h1>\n<p>{}, {}",
                 counted(report.accountCount(), "account", "accounts"),
                 counted(transactions, "transaction", "transactions"));
    if (period.first)
        markup.write(", <time>{}</time> to <time>{}</time>", dayText(*period.first), dayText(*period.last));
    markup.write("</p>\n");
    writeChoice(markup, *report.filter);
    markup.write("</header>\n");
}

void writeFinding(Markup& markup, const FileFinding& found) {
    markup.write("<li><bdi>{}</bdi>", found.file);
    if (found.finding.line != 0) markup.write(", line {}", std::to_string(found.finding.line));
    markup.write(": <bdi>{}</bdi></li>\n", found.finding.text);
}

void writeNotes(Markup& markup, const Report& report) {
    const std::size_t withoutDate =
        sumOf(report.accounts, [](const auto& account) { return account.withoutDate; });
    const std::size_t withoutAmount =
        sumOf(report.accounts, [](const auto& account) { return account.withoutAmount; });
    const std::size_t foreign = sumOf(report.accounts, [](const auto& account) { return account.foreign; });
    const bool hasNotes = report.repeats + withoutDate + withoutAmount + foreign != 0;
    if (report.unread.empty() && report.findings.empty() && !hasNotes) return;
    markup.write("<ul class=\"notes\" aria-label=\"Notes\">\n");
    for (const std::string& file : report.unread)
        markup.write("<li>The file <bdi>{}</bdi> could not be read and is left out.</li>\n", file);
    for (const FileFinding& found : report.findings) writeFinding(markup, found);
    if (report.repeats > 0)
        markup.write("<li>{} in more than one statement and counted once.</li>\n",
                     counted(report.repeats, "transaction was", "transactions were"));
    if (withoutDate > 0)
        markup.write("<li>{} no date: at the end of the table, in the sums, but not in the plots.</li>\n",
                     counted(withoutDate, "transaction has", "transactions have"));
    if (withoutAmount > 0)
        markup.write("<li>{} no amount and counted as nothing.</li>\n",
                     counted(withoutAmount, "transaction has", "transactions have"));
    if (foreign > 0)
        markup.write("<li>{} in another currency without a rate and not counted.</li>\n",
                     counted(foreign, "transaction is", "transactions are"));
    markup.write("</ul>\n");
}

void writeFoot(Markup& markup) {
    markup.write(
        "<footer><p>Days and months are those of UTC. Amounts are exact but for those that a rate has "
        "converted; these and the plots are rounded. "
        "Made with brackwell " BRACKWELL_VERSION ".</p></footer>\n</main>\n<script>");
    markup.write(kPageScript);
    markup.write("</script>\n</body>\n</html>\n");
}

}  // namespace

std::string dayText(const std::optional<brackwell::Date>& date) {
    return date ? std::string(DateText(*date).day()) : std::string();
}

void writePage(Markup& markup, const Report& report) {
    writeHead(markup);
    markup.write("<main>\n");
    writeTitle(markup, report);
    writeNotes(markup, report);
    if (report.accountCount() == 0)
        markup.write("<p class=\"note\">There are no statements of accounts.</p>\n");
    writeOverview(markup, report);
    for (std::size_t i = 0; i < report.currencies.size(); ++i)
        writeCurrency(markup, report.currencies[i], i + 1);
    for (std::size_t i = 0; i < report.accounts.size(); ++i) writeAccount(markup, report.accounts[i], i + 1);
    for (std::size_t i = 0; i < report.investments.size(); ++i)
        writeInvestment(markup, report.investments[i], i + 1);
    writeOtherSecurities(markup, report);
    writeTransactions(markup, report);
    writeFoot(markup);
}

}  // namespace tool
