// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <vector>

#include "history/history.h"
#include "input/run.h"
#include "report/finding_list.h"
#include "report/html_page.h"
#include "report/html_writer.h"
#include "report/report.h"

namespace tool {
namespace {

bool runReport(Run& run) {
    History history;
    std::vector<FileFinding> found;
    const bool allRead =
        readHistory(run, history, [&found](const InputFile& input) { addFindings(found, input); });
    const brackwell::SecurityList securities(history.investments().securities());
    const FindingList findings(found);
    Report report;
    report.securities = &securities;
    report.accounts = figuresOf(history, run.options);
    report.investments = investmentFiguresOf(history, securities, run.options);
    distinguishNames(report.accounts, report.investments);
    report.currencies = figuresByCurrency(report.accounts, report.investments);
    report.otherSecurities = history.investments().otherSecurities();
    report.unread = history.unread();
    report.findings = &findings;
    report.filter = &run.options.filter;
    for (const AccountHistory& account : history.accounts()) report.repeats += account.repeats;
    for (const InvestmentAccount& account : history.investments().accounts())
        report.repeats += account.repeats;
    HtmlWriter html(run.output);
    writePage(html, report);
    return allRead;
}

constexpr const char* kReportHelp =
    "The page is self-contained: it loads nothing, and can be kept, sent or printed. An account that\n"
    "occurs in several files is shown once, and so are its transactions. Account numbers are\n"
    "masked but for their last four characters, unless --full is given. Without --sort the newest\n"
    "transactions come first. In the page the table of transactions is filtered, sorted by a column and\n"
    "saved as CSV, with the columns of \"brackwell csv --currencies\", or --kind investments for trades;\n"
    "account numbers are masked in it, too.\n\n"
    "Examples:\n"
    "  brackwell report july.ofx --output july.html\n"
    "  brackwell report --since 2025-01-01 --until 2025-12-31 *.ofx --output 2025.html\n";

}  // namespace

constexpr Command commands::kReport({
    .name = "report",
    .summary = "A page for the browser: balances, plots and a table to search in",
    .traits = kSeveralFiles | kReading | kFilter | kNumbers | kOutput | kForBrowser,
    .help = kReportHelp,
    .run = runReport,
});

}  // namespace tool
