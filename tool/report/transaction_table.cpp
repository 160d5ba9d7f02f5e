// SPDX-License-Identifier: Apache-2.0
#include "report/transaction_table.h"

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "filter/filter.h"
#include "history/history.h"
#include "investments/facts.h"
#include "money/foreign_amount.h"
#include "report/amounts.h"
#include "report/csv_lines.h"
#include "report/finding_list.h"
#include "report/html_writer.h"
#include "report/way_up.h"
#include "text/display_width.h"
#include "text/shown_values.h"
#include "text/transaction_text.h"
#include "text/value_text.h"

namespace tool {
namespace {

using brackwell::Date;
using brackwell::Decimal;
using brackwell::InvestmentTransaction;
using brackwell::OptionalText;
using brackwell::TvOFXStatementTransaction;

/// A transaction of a bank or card account, or else of an investment account.
struct TransactionRow {
    const TvOFXStatementTransaction* transaction;
    const HistoryStatement* source;  ///< that has it
    const Trade* trade;
    std::uint32_t account;  ///< its number on the page
    std::optional<Date> date;
    std::optional<Amount> amount;
};

/// Where a row comes from. There may be millions, so a row is made when it is written.
struct RowPlace {
    std::uint32_t account;      ///< its number on the page
    std::uint32_t transaction;  ///< in its figures

    auto operator<=>(const RowPlace&) const = default;
};

TransactionRow rowAt(const Report& report, const RowPlace& place) {
    const std::size_t account = place.account - 1;
    if (account >= report.accounts.size()) {
        const Trade& trade = report.investments[account - report.accounts.size()].trades[place.transaction];
        return {nullptr, nullptr, &trade, place.account, trade.date, trade.amount};
    }
    const AccountFigures& figures = report.accounts[account];
    const TvOFXStatementTransaction& transaction = *figures.transactions[place.transaction];
    return {
        &transaction,  figures.sources[place.transaction], nullptr,
        place.account, transaction.datePosted(),           amountIn(transaction, figures.history->currency)};
}

/// The places of all rows, without an order of values.
std::vector<RowPlace> placesOf(const Report& report) {
    std::vector<std::size_t> counts;
    for (const AccountFigures& figures : report.accounts) counts.push_back(figures.transactions.size());
    for (const InvestmentFigures& figures : report.investments) counts.push_back(figures.trades.size());
    std::vector<RowPlace> places;
    places.reserve(std::accumulate(counts.begin(), counts.end(), std::size_t{0}));
    for (std::uint32_t account = 0; account < counts.size(); ++account)
        for (std::uint32_t i = 0; i < counts[account]; ++i) places.push_back({account + 1, i});
    return places;
}

/// Sorts places by a value of their rows; equal ones keep their order.
template <class Value, class Before>
void sortBy(std::vector<RowPlace>& places, const Report& report, Value TransactionRow::*value,
            Before comesBefore) {
    std::vector<std::pair<Value, RowPlace>> order;
    order.reserve(places.size());
    for (const RowPlace& place : places) order.emplace_back(rowAt(report, place).*value, place);
    std::ranges::sort(order, [comesBefore](const auto& a, const auto& b) {
        if (comesBefore(a.first, b.first)) return true;
        return !comesBefore(b.first, a.first) && a.second < b.second;
    });
    std::ranges::transform(order, places.begin(), [](const auto& each) { return each.second; });
}

/// In the order that is wanted; otherwise the newest first. Those without a date or amount come last.
std::vector<RowPlace> orderedPlaces(const Report& report) {
    std::vector<RowPlace> places = placesOf(report);
    const Order order = report.filter->order;
    if (order == Order::document) sortBy(places, report, &TransactionRow::date, std::ranges::greater());
    if (order == Order::date) sortBy(places, report, &TransactionRow::date, comesBefore<Date>);
    if (order == Order::amount) sortBy(places, report, &TransactionRow::amount, comesBefore<Amount>);
    return places;
}

/// What the page says of an account: its name and its currency.
struct Named {
    AccountName name;
    std::string currency;
    OptionalText number;  ///< in full
    std::string shown;    ///< what the page shows of it
};

std::vector<Named> namesOf(const Report& report) {
    std::vector<Named> names;
    for (const AccountFigures& account : report.accounts)
        names.push_back({account.name, account.history->currency, account.history->number(), account.number});
    for (const InvestmentFigures& account : report.investments)
        names.push_back({account.name, account.account->currency, account.account->number, account.number});
    return names;
}

/// The number of a bank transaction, also of one in an investment account.
OptionalText numberInRow(const TransactionRow& row) {
    if (row.transaction != nullptr) return numberOf(*row.transaction);
    const auto bank = row.trade->transaction.bankTransaction();
    return bank ? numberOf(*bank) : std::nullopt;
}

/// ", costs 6.50": what a purchase or a sale cost beside the securities; "" for nothing.
std::string costsOf(const InvestmentTransaction& transaction, OptionalText currency) {
    Sum costs;
    for (const auto& cost :
         {transaction.commission(), transaction.fees(), transaction.taxes(), transaction.load()})
        if (cost) costs.add(*cost);
    return costs.value() == Decimal() ? std::string() : ", costs " + amountText(costs, currency);
}

/// "2 at 12.50, costs 1.00"; of a split, what the units have become.
std::string quantityOf(const InvestmentTransaction& transaction, const std::string& accountCurrency) {
    const std::string units = numberText(transaction.units());
    const std::string price = numberText(transaction.unitPrice());
    if (!units.empty()) {
        const std::string foreign = foreignSymbol(currencyOf(transaction), accountCurrency);
        return units + (price.empty() ? " units" : " at " + price) +
               costsOf(transaction, firstOf(foreign, accountCurrency));
    }
    const std::string before = numberText(transaction.oldUnits());
    const std::string after = numberText(transaction.newUnits());
    if (after.empty()) return {};
    return before.empty() ? after + " units" : before + " became " + after + " units";
}

/// What a transaction is about: its security; where money is moved, between which parts of the account.
std::string subjectOf(const Trade& trade) {
    const InvestmentTransaction& transaction = trade.transaction;
    const std::string_view name = nameOf(trade.security, transaction.securityID());
    if (!name.empty()) return std::string(name);
    const OptionalText from = transaction.text("fromSubAccount");
    const OptionalText to = transaction.text("toSubAccount");
    if (!from || !to) return kindInWords(transaction);
    return std::string(*from).append(" to ").append(*to);
}

/// An amount that is not in the account's currency as it is written.
std::string foreignAmountOf(const TransactionRow& row, const std::string& accountCurrency) {
    const bool isTrade = row.trade != nullptr;
    const auto currency = isTrade ? currencyOf(row.trade->transaction) : currencyOf(*row.transaction);
    const auto amount = isTrade ? amountOf(row.trade->transaction) : row.transaction->amount();
    const std::string symbol = foreignSymbol(currency, accountCurrency);
    if (!amount || (row.amount && symbol.empty())) return {};
    return withCurrency(amountText(*amount, firstOf(symbol, accountCurrency)), symbol);
}

/// How many characters the column of amounts has room for; page.css makes it as wide. Longer ones break.
constexpr std::array<std::size_t, 4> kAmountRooms{12, 16, 19, 22};
constexpr std::size_t kUsualNumber = 9;

/// The columns that there are besides date, description, type and amount.
struct Columns {
    bool account = false;        ///< there are several
    bool number = false;         ///< a transaction has one
    bool currency = false;       ///< stands beside every amount, since there are several
    bool trades = false;         ///< what they are called needs more room than the types of banks
    bool longNumbers = false;    ///< of cheques and references need more room than they mostly do
    std::size_t amountRoom = 0;  ///< one of kAmountRooms
    std::string commonCurrency;  ///< of all amounts otherwise
};

/// What stands in the column of amounts; the currency of the account follows it where there are several. Most
/// transactions that only move securities have no amount.
std::string amountCellText(const TransactionRow& row, const std::string& accountCurrency,
                           const std::string& foreign) {
    if (row.amount) return signedAmountText(*row.amount, accountCurrency);
    const bool isTrade = row.trade != nullptr && !row.trade->movesMoney;
    return !foreign.empty() ? foreign : std::string(isTrade ? "\u2013" : "no amount");
}

/// How many characters wide a row's amount is.
std::size_t amountWidth(const TransactionRow& row, const std::string& accountCurrency, bool withCurrency) {
    if (!row.amount)
        return displayWidth(amountCellText(row, accountCurrency, foreignAmountOf(row, accountCurrency)));
    const std::size_t width = displayWidth(amountCellText(row, accountCurrency, ""));
    return withCurrency ? width + 1 + displayWidth(accountCurrency) : width;
}

/// The smallest room that so many characters fit into.
std::size_t amountRoomFor(std::size_t characters) noexcept {
    const auto* const room = std::ranges::lower_bound(kAmountRooms, characters);
    return room == kAmountRooms.end() ? kAmountRooms.back() : *room;
}

Columns columnsOf(const std::vector<Named>& names, const std::vector<RowPlace>& places,
                  const Report& report) {
    Columns columns;
    columns.account = names.size() > 1;
    columns.commonCurrency = names.front().currency;
    columns.currency = std::ranges::any_of(
        names, [&](const Named& account) { return account.currency != columns.commonCurrency; });
    if (columns.currency) columns.commonCurrency.clear();
    std::size_t widestAmount = 0;
    for (const RowPlace& place : places) {
        const TransactionRow row = rowAt(report, place);
        const std::size_t number = numberInRow(row).value_or("").size();
        columns.number = columns.number || number > 0;
        columns.longNumbers = columns.longNumbers || number > kUsualNumber;
        columns.trades = columns.trades || row.trade != nullptr;
        const std::string& currency = names[row.account - 1].currency;
        widestAmount = std::max(widestAmount, amountWidth(row, currency, columns.currency));
    }
    columns.amountRoom = amountRoomFor(widestAmount);
    return columns;
}

/// The cells of a row.
class Cells {
public:
    Cells(HtmlWriter& html, const std::vector<Named>& names, const Columns& columns, const Report& report)
        : markup_(html),
          names_(names),
          columns_(columns),
          findings_(*report.findings),
          lines_(*report.securities) {}

    void write(const TransactionRow& row) {
        writeLine(row);
        const std::string& currency = names_[row.account - 1].currency;
        const std::string foreign = foreignAmountOf(row, currency);
        const std::string converted = row.amount ? foreign : std::string();
        if (row.transaction != nullptr)
            writeBank(*row.transaction, converted);
        else
            writeTrade(*row.trade, currency, converted);
        if (columns_.account) writeAccount(names_[row.account - 1].name);
        if (columns_.number) markup_.write("<td>{}</td>", numberInRow(row).value_or(""));
        writeAmount(row, foreign);
        markup_.write("</tr>\n");
    }

private:
    /// Begins a row, which has its line of a table in CSV with it.
    void writeLine(const TransactionRow& row) {
        const Named& account = names_[row.account - 1];
        if (row.transaction != nullptr)
            markup_.write("<tr data-account=\"{}\" data-bank=\"{}\">", row.account,
                          ExactText{lines_.of(*row.transaction, *row.source, account.number, account.shown)});
        else
            markup_.write("<tr data-account=\"{}\" data-investments=\"{}\">", row.account,
                          ExactText{lines_.of(*row.trade, account.number, account.shown)});
    }
    void writeBank(const TvOFXStatementTransaction& transaction, const std::string& converted) {
        writeDate(transaction.datePosted(), transaction.originalDatePostedString());
        const bool hasPayee = !payeeOf(transaction).value_or("").empty();
        markup_.write("<th scope=\"row\">{}", payeeOrMemoOf(transaction).value_or(""));
        writeSmall(converted);
        if (hasPayee) writeSmall(transaction.memo());
        writeFound(identityOf(transaction));
        markup_.write("</th><td>{}</td>", transaction.transactionType().value_or(""));
    }
    void writeTrade(const Trade& trade, const std::string& currency, const std::string& converted) {
        const InvestmentTransaction& transaction = trade.transaction;
        const auto bank = transaction.bankTransaction();
        writeDate(trade.date, bank ? bank->originalDatePostedString() : transaction.text("tradeDate"));
        if (bank)
            markup_.write("<th scope=\"row\">{}", payeeOf(*bank).value_or(""));
        else
            markup_.write("<th scope=\"row\">{}", subjectOf(trade));
        writeSmall(quantityOf(transaction, currency));
        writeSmall(converted);
        writeSmall(memoOf(transaction));
        writeFound(identityOf(transaction));
        markup_.write("</th><td>{}</td>", kindInWords(transaction));
    }
    /// What is to be said of a transaction.
    void writeFound(const void* identity) {
        for (const FileFinding* found : findings_.about(identity))
            markup_.write("<small class=\"found\">{}</small>", found->finding.text);
    }
    void writeDate(const std::optional<Date>& date, OptionalText text) {
        if (date)
            markup_.write("<td>{}</td>", DateText(*date).day());
        else  // a text that is no date is still worth seeing
            markup_.write("<td class=\"none\">{}</td>", firstOf(text, "no date").value_or(""));
    }
    void writeAccount(const AccountName& name) {
        markup_.write("<td>");
        writeName(markup_, name);
        markup_.write("</td>");
    }
    void writeSmall(OptionalText text) {
        if (!text.value_or("").empty()) markup_.write("<small>{}</small>", *text);
    }
    /// What buys or sells securities is neither in nor out.
    void writeAmount(const TransactionRow& row, const std::string& foreign) {
        const std::string text = amountCellText(row, names_[row.account - 1].currency, foreign);
        if (!row.amount) return markup_.write("<td class=\"none\">{}</td>", text);
        const bool movesMoney = row.trade == nullptr || row.trade->movesMoney;
        const std::string_view flow = row.amount->isNegative() ? "out" : "in";
        markup_.write("<td class=\"{}\">{}", movesMoney ? flow : "trade", text);
        if (columns_.currency) markup_.write(" <abbr>{}</abbr>", names_[row.account - 1].currency);
        markup_.write("</td>");
    }

    HtmlWriter& markup_;
    const std::vector<Named>& names_;
    Columns columns_;
    const FindingList& findings_;
    CsvLines lines_;
};

/// Saves the rows that are shown, of one kind.
void writeSaving(HtmlWriter& html, const char* table, const char* label, const std::string& columns) {
    html.write("<button type=\"button\" data-table=\"{}\" data-columns=\"{}\">{}</button>\n", table, columns,
               label);
}

/// Hidden until the script finds that it runs.
void writeFilter(HtmlWriter& html, const std::vector<Named>& names, const Report& report) {
    const bool hasTrades = !report.investments.empty();
    html.write(
        "<form id=\"filter\" hidden=\"hidden\" role=\"search\" aria-label=\"Filter transactions\">\n"
        "<label class=\"wide\">Search <input type=\"search\" name=\"q\" autocomplete=\"off\"/></label>\n"
        "<label>From <input type=\"date\" name=\"from\"/></label>\n"
        "<label>Until <input type=\"date\" name=\"until\"/></label>\n");
    if (names.size() > 1) {
        html.write("<label>Account <select name=\"account\"><option value=\"\">All</option>");
        for (std::size_t i = 0; i < names.size(); ++i)
            html.write("<option value=\"{}\">{}</option>", i + 1, names[i].name.text());
        html.write("</select></label>\n");
    }
    html.write(
        "<label>Direction <select name=\"flow\"><option value=\"\">In and out</option>"
        "<option value=\"in\">In</option><option value=\"out\">Out</option>");
    if (hasTrades) html.write("<option value=\"trade\">Bought, sold, moved</option>");
    html.write(
        "</select></label>\n<label>Order <select name=\"sort\"><option value=\"\">As listed</option></select>"
        "</label>\n<button type=\"reset\">Clear</button>\n");
    if (!report.accounts.empty())
        writeSaving(html, "bank", hasTrades ? "Save payments as CSV" : "Save as CSV", CsvLines::bankHeader());
    if (hasTrades) writeSaving(html, "investments", "Save trades as CSV", CsvLines::investmentHeader());
    html.write("<p id=\"found\" role=\"status\"></p>\n</form>\n");
}

void writeHead(HtmlWriter& html, const Columns& columns) {
    html.write(
        "<table id=\"transactions\" class=\"transactions amounts-{} {}\" data-currency=\"{}\">\n<thead><tr>"
        "<th scope=\"col\" data-sort=\"date\">Date</th><th scope=\"col\" "
        "data-sort=\"description\">Description</th>"
        "<th scope=\"col\" data-sort=\"type\">Type</th>",
        columns.amountRoom, columns.trades ? "trades" : "payments", columns.commonCurrency);
    if (columns.account) html.write("<th scope=\"col\" class=\"whose\" data-sort=\"account\">Account</th>");
    if (columns.number)
        html.write("<th scope=\"col\" class=\"number {}\" data-sort=\"number\">Number</th>",
                   columns.longNumbers ? "wide" : "usual");
    html.write("<th scope=\"col\" data-sort=\"amount\">Amount {}</th></tr></thead>\n<tbody>\n",
               columns.commonCurrency);
}

}  // namespace

void writeTransactions(HtmlWriter& html, const Report& report) {
    const std::vector<RowPlace> places = orderedPlaces(report);
    if (places.empty()) return;
    html.write(
        "<section aria-labelledby=\"transactions-title\">\n<h2 "
        "id=\"transactions-title\">Transactions</h2>\n");
    const std::vector<Named> names = namesOf(report);
    writeFilter(html, names, report);
    const Columns columns = columnsOf(names, places, report);
    writeHead(html, columns);
    Cells cells(html, names, columns, report);
    for (const RowPlace& place : places) {
        if (!html.isGood()) return;
        cells.write(rowAt(report, place));
    }
    html.write("</tbody>\n</table>\n");
    writeWayUp(html);
    html.write("</section>\n");
}

}  // namespace tool
