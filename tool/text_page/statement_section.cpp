// SPDX-License-Identifier: Apache-2.0
#include "text_page/statement_section.h"

#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "accounts/account_names.h"
#include "command_line/options.h"
#include "money/foreign_amount.h"
#include "text/display_width.h"
#include "text/shown_values.h"
#include "text/transaction_text.h"
#include "text/value_text.h"
#include "text/visible_text.h"
#include "text_page/table.h"
#include "text_page/text_page.h"
#include "text_page/totals.h"

namespace tool {
namespace {

using brackwell::Decimal;
using brackwell::OptionalText;

std::string headingOf(const brackwell::TvOFXAccountStatement& statement, bool isFull) {
    if (const auto* bank = dynamic_cast<const brackwell::TvOFXStatementResponse*>(&statement)) {
        const brackwell::TvOFXBankAccount* account = bank->bankAccountFrom().get();
        if (account == nullptr) return "Bank statement without an account";
        return std::string(accountTypeName(account->accountType())) + " " +
               shownNumber(account->accountID(), isFull);
    }
    const auto* card = dynamic_cast<const brackwell::TvOFXCCStatementResponse*>(&statement);
    if (card == nullptr || !card->creditCardAccountFrom()) return "Card statement without an account";
    return "Credit card " + shownNumber(card->creditCardAccountFrom()->accountID(), isFull);
}

std::string balanceText(const std::optional<Decimal>& amount, std::optional<brackwell::Date> date,
                        OptionalText currency) {
    if (!amount) return {};
    return shownAmount(*amount, currency) + (date ? " on " + shownDate(date) : "");
}

void showFacts(TextPage& page, const brackwell::TvOFXAccountStatement& statement) {
    if (isTrouble(statement.status().get())) page.fact("Status", shownStatus(*statement.status()));
    if (const auto* bank = dynamic_cast<const brackwell::TvOFXStatementResponse*>(&statement);
        bank != nullptr && bank->bankAccountFrom()) {
        page.fact("Bank", bank->bankAccountFrom()->bankID());
        page.fact("Branch", bank->bankAccountFrom()->branchID());
    }
    page.fact("Currency", statement.defaultCurrency());
    page.fact("Period",
              shownPeriod(statement.transactionStartDateTime(), statement.transactionEndDateTime()));
    page.fact("Balance", balanceText(statement.ledgerBalanceAmount(), statement.ledgerBalanceDateTime(),
                                     statement.defaultCurrency()));
    page.fact("Available", balanceText(statement.availableBalanceAmount(),
                                       statement.availableBalanceDateTime(), statement.defaultCurrency()));
}

Table::Row rowOf(const brackwell::TvOFXStatementTransaction& transaction, OptionalText currency) {
    const auto date = transaction.datePosted();
    const std::string foreign = foreignSymbol(currencyOf(transaction), currency);
    std::string cells[] = {
        // A text that is no date is still worth seeing.
        date ? std::string(DateText(*date).day())
             : clipped(visibleText(transaction.originalDatePostedString().value_or("")), 10),
        visibleText(transaction.transactionType().value_or("")),
        visibleText(payeeOf(transaction).value_or("")),
        visibleText(transaction.memo().value_or("")),
        visibleText(numberOf(transaction).value_or("")),
        transaction.amount() ? shownAmount(*transaction.amount(), firstOf(foreign, currency)) : "",
        visibleText(foreign),
    };
    return {std::make_move_iterator(std::begin(cells)), std::make_move_iterator(std::end(cells))};
}

}  // namespace

void showStatement(TextPage& page, const brackwell::TvOFXAccountStatement& statement,
                   const Options& options) {
    if (!options.filter.takes(statement)) return;
    const Filter::Transactions transactions = options.filter.transactionsOf(statement);
    if (transactions.empty() && !options.filter.words.empty()) return;
    page.heading(headingOf(statement, options.showsFullNumbers));
    showFacts(page, statement);
    if (transactions.empty()) return page.paragraph(options.filter.noTransactions());
    Table table({{"Date", Column::Kind::text, 0, 9},
                 {"Type", Column::Kind::text, 6, 3},
                 {"Payee", Column::Kind::text, 8, 8},
                 {"Memo", Column::Kind::text, 8, 5},
                 {"Number", Column::Kind::text, 6, 4},
                 {"Amount", Column::Kind::amount, 0, 9},
                 {"", Column::Kind::text, 3, 7}});  // the currency, where it is not the statement's
    const OptionalText currency = statement.defaultCurrency();
    Totals totals;
    for (const auto* transaction : transactions) {
        table.measure(rowOf(*transaction, currency));
        totals.add(transaction->amount(), amountIn(*transaction, currency));
    }
    table.fit(page.width());
    page.emptyLine();
    table.writeTitles(page);
    for (const auto* transaction : transactions) {
        if (!page.isGood()) return;
        table.writeRow(page, rowOf(*transaction, currency));
    }
    page.emptyLine();
    totals.show(page, currency);
}

}  // namespace tool
