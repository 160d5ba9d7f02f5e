// SPDX-License-Identifier: Apache-2.0
#include "text_page/investment_section.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/account_number.h"
#include "command_line/options.h"
#include "investments/facts.h"
#include "investments/security_lookup.h"
#include "money/foreign_amount.h"
#include "text/counted.h"
#include "text/shown_values.h"
#include "text/transaction_text.h"
#include "text/value_text.h"
#include "text/visible_text.h"
#include "text_page/listed_balance.h"
#include "text_page/plan_section.h"
#include "text_page/table.h"
#include "text_page/text_page.h"
#include "text_page/totals.h"

namespace tool {
namespace {

using namespace brackwell;

std::string amountCell(const std::optional<Decimal>& amount, OptionalText currency) {
    return amount ? shownAmount(*amount, currency) : std::string();
}

/// A day, or a text that is none, which is still worth seeing.
std::string dayOrText(std::optional<Date> date, OptionalText text) {
    return date ? dayText(date) : visibleText(text.value_or(""));
}

void showListed(TextPage& page, const std::vector<ListedBalance>& balances, OptionalText statementCurrency) {
    for (const ListedBalance& balance : balances) {
        const OptionalText name = balance.name() ? balance.name() : balance.explanation();
        const std::string date = shownDate(balance.asOf());
        page.fact(name.value_or("Balance"),
                  shownBalance(balance, statementCurrency) + (date.empty() ? "" : " on " + date));
    }
}

void showBalance(TextPage& page, const InvestmentBalance& balance, OptionalText statementCurrency) {
    page.fact("Cash", amountCell(balance.cash(), statementCurrency));
    page.fact("Margin", amountCell(balance.margin(), statementCurrency));
    page.fact("Short", amountCell(balance.shortBalance(), statementCurrency));
    page.fact("Buying power", amountCell(balance.buyingPower(), statementCurrency));
    showListed(page, balance.listed(), statementCurrency);
}

void showFacts(TextPage& page, const InvestmentStatement& statement) {
    const auto account = statement.account();
    if (isTrouble(statement.status().get())) page.fact("Status", shownStatus(*statement.status()));
    if (account) page.fact("Broker", account->brokerID().text());
    page.fact("Currency", statement.currency());
    page.fact("As of", shownDate(statement.asOf()));
    page.fact("Period", shownPeriod(statement.start(), statement.end()));
    if (const auto balance = statement.balance()) showBalance(page, *balance, statement.currency());
    page.fact("Notice", statement.marketingInfo());
}

/// A table of objects, each made into a row twice, so that none are kept.
template <class Object, class MakeRow>
void showTable(TextPage& page, const std::vector<Column>& columns, const std::vector<Object>& objects,
               const MakeRow& rowOf) {
    Table table(columns);
    for (const Object& object : objects) table.measure(rowOf(object));
    table.fit(page.width());
    table.writeTitles(page);
    for (const Object& object : objects) {
        if (!page.isGood()) return;
        table.writeRow(page, rowOf(object));
    }
}

OptionalText tickerOf(const std::optional<Security>& security) {
    return security ? security->ticker() : std::nullopt;
}

// ---------------------------------------------------------------------------------------------
// Holdings

Table::Row rowOf(const Position& position, const SecurityLookup& securities, OptionalText currency) {
    const auto security = securities.find(position);
    const std::string foreign = foreignSymbol(position.currency(), currency);
    return {
        visibleText(nameOf(security, position.securityID())),
        visibleText(tickerOf(security).value_or("")),
        shownUnits(position.units()),
        shownUnits(position.unitPrice()),
        amountCell(position.marketValue(), firstOf(foreign, currency)),
        visibleText(foreign),
        dayOrText(position.priceDate(), position.text("priceDate")),
    };
}

void showWorth(TextPage& page, const InvestmentStatement& statement, const std::vector<Position>& positions) {
    Worth worth;
    for (const Position& position : positions) worth.add(valueOf(position, statement));
    std::string text = counted(positions.size(), "position", "positions");
    text += ": worth " + withCurrency(shownSum(worth.positions, statement.currency()), statement.currency());
    if (worth.withoutValue > 0) text += " (" + std::to_string(worth.withoutValue) + " without a value)";
    page.fact("Total", text);
}

void showHoldings(TextPage& page, const InvestmentStatement& statement, const SecurityLookup& securities,
                  const std::vector<Position>& positions) {
    if (positions.empty()) {
        if (!statement.positions().isEmpty()) page.paragraph("No holdings match the filter.");
        return;
    }
    page.emptyLine();
    showTable(page,
              {{"Holding", Column::Kind::text, 8, 8},
               {"Ticker", Column::Kind::text, 5, 5},
               {"Units", Column::Kind::amount, 0, 9},
               {"Price", Column::Kind::amount, 0, 9},
               {"Value", Column::Kind::amount, 0, 9},
               {"", Column::Kind::text, 3, 7},  // the currency, where it is not the statement's
               {"As of", Column::Kind::text, 10, 6}},
              positions,
              [&](const Position& position) { return rowOf(position, securities, statement.currency()); });
    page.emptyLine();
    showWorth(page, statement, positions);
}

// ---------------------------------------------------------------------------------------------
// Transactions

/// What a transaction is about: the security, or whom a bank transaction was with.
std::string subjectOf(const InvestmentTransaction& transaction, const SecurityLookup& securities) {
    const auto bank = transaction.bankTransaction();
    if (!bank) return visibleText(nameOf(securities.find(transaction), transaction.securityID()));
    return visibleText(payeeOf(*bank).value_or(""));
}

/// The text of a date that is none.
OptionalText writtenDateOf(const InvestmentTransaction& transaction) {
    const auto bank = transaction.bankTransaction();
    return bank ? bank->originalDatePostedString() : transaction.text("tradeDate");
}

/// Of a split the new units: it has no others.
std::optional<Decimal> unitsOf(const InvestmentTransaction& transaction) {
    return transaction.units() ? transaction.units() : transaction.newUnits();
}

Table::Row rowOf(const InvestmentTransaction& transaction, const SecurityLookup& securities,
                 OptionalText currency) {
    const std::string foreign = foreignSymbol(currencyOf(transaction), currency);
    return {
        dayOrText(dateOf(transaction), writtenDateOf(transaction)),
        kindInWords(transaction),
        subjectOf(transaction, securities),
        shownUnits(unitsOf(transaction)),
        shownUnits(transaction.unitPrice()),
        amountCell(amountOf(transaction), firstOf(foreign, currency)),
        visibleText(foreign),
        visibleText(memoOf(transaction).value_or("")),
    };
}

void showTransactions(TextPage& page, const InvestmentStatement& statement, const SecurityLookup& securities,
                      const std::vector<InvestmentTransaction>& transactions, const Filter& filter) {
    if (transactions.empty()) return page.paragraph(filter.noTransactions());
    page.emptyLine();
    showTable(page,
              {{"Date", Column::Kind::text, 10, 9},
               {"Kind", Column::Kind::text, 8, 7},
               {"Security", Column::Kind::text, 8, 8},
               {"Units", Column::Kind::amount, 0, 9},
               {"Price", Column::Kind::amount, 0, 9},
               {"Total", Column::Kind::amount, 0, 9},
               {"", Column::Kind::text, 3, 6},  // the currency, where it is not the statement's
               {"Memo", Column::Kind::text, 8, 4}},
              transactions, [&](const InvestmentTransaction& transaction) {
                  return rowOf(transaction, securities, statement.currency());
              });
    Totals totals;
    for (const InvestmentTransaction& transaction : transactions)
        totals.add(amountOf(transaction), amountOf(transaction, statement));
    page.emptyLine();
    totals.show(page, statement.currency());
}

std::string headingOf(const InvestmentStatement& statement, bool isFull) {
    const auto account = statement.account();
    if (!account) return "Investment statement without an account";
    return "Investment account " + shownNumber(accountNumber(account.get()), isFull);
}

}  // namespace

void showInvestments(TextPage& page, const InvestmentStatement& statement, const SecurityLookup& securities,
                     const Options& options) {
    const Filter& filter = options.filter;
    if (!filter.takes(statement)) return;
    const std::vector<Position> positions = filter.positionsOf(statement, securities);
    const std::vector<InvestmentTransaction> transactions = filter.transactionsOf(statement, securities);
    if (!filter.words.empty() && positions.empty() && transactions.empty()) return;
    page.heading(headingOf(statement, options.showsFullNumbers));
    showFacts(page, statement);
    showPlan(page, statement);
    showHoldings(page, statement, securities, positions);
    showTransactions(page, statement, securities, transactions, filter);
}

}  // namespace tool
