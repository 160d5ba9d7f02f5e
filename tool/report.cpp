// SPDX-License-Identifier: Apache-2.0
#include "history/history.h"
#include "report/markup.h"
#include "report/parts.h"
#include "run.h"

namespace tool {

bool runReport(Run& run) {
    History history;
    const bool allRead = readHistory(run, history);
    Report report;
    report.accounts = figuresOf(history, run.options);
    report.investments = investmentFiguresOf(history.investments(), run.options);
    report.currencies = figuresByCurrency(report.accounts, report.investments);
    report.otherSecurities = history.investments().otherSecurities();
    report.unread = history.unread();
    report.findings = history.findings();
    report.filter = &run.options.filter;
    for (const AccountHistory& account : history.accounts()) report.repeats += account.repeats;
    for (const InvestmentAccount& account : history.investments().accounts())
        report.repeats += account.repeats;
    Markup markup(run.output);
    writePage(markup, report);
    return allRead;
}

}  // namespace tool
