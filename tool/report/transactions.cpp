// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "filter/filter.h"
#include "history/history.h"
#include "report/amounts.h"
#include "report/markup.h"
#include "report/parts.h"
#include "text/value_text.h"

namespace tool {
namespace {

using brackwell::Date;
using brackwell::Decimal;
using brackwell::OptionalText;
using brackwell::TvOFXStatementTransaction;

/// A transaction, and the number of its account on the page.
struct Row {
    const TvOFXStatementTransaction* transaction;
    std::size_t account;
};

/// Whether the first comes before the second; what is absent comes last.
template <class Value>
bool comesBefore(const std::optional<Value>& first, const std::optional<Value>& second) noexcept {
    return first && (!second || *first < *second);
}

/// In the order that is wanted; otherwise the newest first. Those without a date or amount come last.
std::vector<Row> rowsOf(const Report& report) {
    std::vector<Row> rows;
    for (std::size_t i = 0; i < report.accounts.size(); ++i)
        for (const auto* transaction : report.accounts[i].transactions) rows.push_back({transaction, i + 1});
    const auto date = [](const Row& row) { return row.transaction->datePosted(); };
    const auto amount = [](const Row& row) { return row.transaction->amount(); };
    if (report.filter->order == Order::document) std::ranges::stable_sort(rows, std::ranges::greater(), date);
    if (report.filter->order == Order::date) std::ranges::stable_sort(rows, comesBefore<Date>, date);
    if (report.filter->order == Order::amount) std::ranges::stable_sort(rows, comesBefore<Decimal>, amount);
    return rows;
}

OptionalText firstOf(OptionalText first, OptionalText second) noexcept {
    return first && !first->empty() ? first : second;
}

OptionalText numberOf(const TvOFXStatementTransaction& transaction) noexcept {
    return firstOf(transaction.checkOrReferenceNumber(), transaction.referenceNumber());
}

/// "-999999.99" fits into the column of amounts together with a currency.
constexpr std::size_t kUsualAmount = 10;

/// The columns that there are besides date, description, type and amount.
struct Columns {
    bool account = false;        ///< there are several
    bool number = false;         ///< a transaction has one
    bool currency = false;       ///< stands beside every amount, since there are several
    bool longAmounts = false;    ///< need more room than amounts mostly do
    std::string commonCurrency;  ///< of all amounts otherwise
};

Columns columnsOf(const Report& report, const std::vector<Row>& rows) {
    Columns columns;
    columns.account = report.accounts.size() > 1;
    columns.number = std::ranges::any_of(
        rows, [](const Row& row) { return !numberOf(*row.transaction).value_or("").empty(); });
    columns.commonCurrency = report.accounts.front().history->currency;
    columns.currency = std::ranges::any_of(report.accounts, [&](const AccountFigures& account) {
        return account.history->currency != columns.commonCurrency;
    });
    if (columns.currency) columns.commonCurrency.clear();
    columns.longAmounts = std::ranges::any_of(rows, [](const Row& row) {
        const std::optional<Decimal> amount = row.transaction->amount();
        return amount && amount->toString().size() > kUsualAmount;
    });
    return columns;
}

/// The cells of a row.
class Cells {
public:
    Cells(Markup& markup, const Report& report, const Columns& columns) : markup_(markup), columns_(columns) {
        for (const AccountFigures& account : report.accounts) names_.push_back(account.name());
    }

    void write(const Row& row, const std::string& currency) {
        const TvOFXStatementTransaction& transaction = *row.transaction;
        markup_.write("<tr data-account=\"{}\">", row.account);
        writeDate(transaction);
        writeWhat(transaction);
        markup_.write("<td>{}</td>", transaction.transactionType().value_or(""));
        if (columns_.account) markup_.write("<td>{}</td>", names_[row.account - 1]);
        if (columns_.number) markup_.write("<td>{}</td>", numberOf(transaction).value_or(""));
        writeAmount(transaction.amount(), currency);
        markup_.write("</tr>\n");
    }

private:
    void writeDate(const TvOFXStatementTransaction& transaction) {
        if (transaction.datePosted())
            markup_.write("<td>{}</td>", DateText(*transaction.datePosted()).day());
        else  // a text that is no date is still worth seeing
            markup_.write("<td class=\"none\">{}</td>",
                          firstOf(transaction.originalDatePostedString(), "no date").value_or(""));
    }
    void writeWhat(const TvOFXStatementTransaction& transaction) {
        const std::shared_ptr<brackwell::TvOFXPayee> payee = transaction.payee();
        const OptionalText name = firstOf(transaction.payeeName(), payee ? payee->name() : std::nullopt);
        markup_.write("<th scope=\"row\">{}", name.value_or(""));
        if (!transaction.memo().value_or("").empty()) markup_.write("<small>{}</small>", *transaction.memo());
        markup_.write("</th>");
    }
    void writeAmount(const std::optional<brackwell::Decimal>& amount, const std::string& currency) {
        if (!amount) return markup_.write("<td class=\"none\">no amount</td>");
        markup_.write("<td class=\"{}\">{}", amount->isNegative() ? "out" : "in", signedAmountText(*amount));
        if (columns_.currency) markup_.write(" <abbr>{}</abbr>", currency);
        markup_.write("</td>");
    }

    Markup& markup_;
    Columns columns_;
    std::vector<std::string> names_;
};

/// Hidden until the script finds that it runs.
void writeFilter(Markup& markup, const Report& report) {
    markup.write(
        "<form id=\"filter\" hidden=\"hidden\" role=\"search\" aria-label=\"Filter transactions\">\n"
        "<label class=\"wide\">Search <input type=\"search\" name=\"q\" autocomplete=\"off\"/></label>\n"
        "<label>From <input type=\"date\" name=\"from\"/></label>\n"
        "<label>Until <input type=\"date\" name=\"until\"/></label>\n");
    if (report.accounts.size() > 1) {
        markup.write("<label>Account <select name=\"account\"><option value=\"\">All</option>");
        for (std::size_t i = 0; i < report.accounts.size(); ++i)
            markup.write("<option value=\"{}\">{}</option>", i + 1, report.accounts[i].name());
        markup.write("</select></label>\n");
    }
    markup.write(
        "<label>Direction <select name=\"flow\"><option value=\"\">In and out</option>"
        "<option value=\"in\">In</option><option value=\"out\">Out</option></select></label>\n"
        "<button type=\"reset\">Clear</button>\n<p id=\"found\" role=\"status\"></p>\n</form>\n");
}

void writeHead(Markup& markup, const Columns& columns) {
    markup.write(
        "<table id=\"transactions\" class=\"transactions {}\" data-currency=\"{}\">\n<thead><tr>"
        "<th scope=\"col\">Date</th><th scope=\"col\">Description</th><th scope=\"col\">Type</th>",
        columns.longAmounts ? "long" : "usual", columns.commonCurrency);
    if (columns.account) markup.write("<th scope=\"col\" class=\"whose\">Account</th>");
    if (columns.number) markup.write("<th scope=\"col\" class=\"number\">Number</th>");
    markup.write("<th scope=\"col\">Amount {}</th></tr></thead>\n<tbody>\n", columns.commonCurrency);
}

}  // namespace

void writeTransactions(Markup& markup, const Report& report) {
    const std::vector<Row> rows = rowsOf(report);
    if (rows.empty()) return;
    markup.write(
        "<section aria-labelledby=\"transactions-title\">\n<h2 "
        "id=\"transactions-title\">Transactions</h2>\n");
    writeFilter(markup, report);
    const Columns columns = columnsOf(report, rows);
    writeHead(markup, columns);
    Cells cells(markup, report, columns);
    for (const Row& row : rows) {
        if (!markup.isGood()) return;
        cells.write(row, report.accounts[row.account - 1].history->currency);
    }
    markup.write("</tbody>\n</table>\n</section>\n");
}

}  // namespace tool
