// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/bank_drafts.h"

#include <algorithm>
#include <utility>

#include "bookkeeping/coverage.h"
#include "bookkeeping/sayings.h"
#include "money/foreign_amount.h"
#include "text/shown_values.h"

namespace tool {
namespace {

using namespace brackwell;

Coverage coverageOf(const AccountHistory& account) {
    Coverage coverage;
    for (const HistoryStatement& held : account.statements) {
        const TvOFXAccountStatement& statement = *held.statement;
        auto start = statement.transactionStartDateTime();
        if (!start)
            for (const auto& transaction : statement.statementTransactions())
                if (const auto date = transaction->datePosted())
                    start = std::min(start.value_or(*date), *date);
        coverage.add(start, statement.transactionEndDateTime(), statement.ledgerBalanceDateTime());
    }
    coverage.finish();
    return coverage;
}

Identities identitiesOf(const AccountHistory& account) {
    Identities identities(identityOf(account));
    for (const HistoryEntry& entry : account.entries)
        identities.meet(entry.statement, entry.transaction->fiTransactionID(), entry.transaction->amount());
    identities.finish();
    return identities;
}

std::vector<BookFact> availableOf(const TvOFXAccountStatement& statement) {
    std::vector<BookFact> facts;
    if (const auto& amount = statement.availableBalanceAmount())
        facts.push_back({"availableBalance", withCurrency(shownAmount(*amount, statement.defaultCurrency()),
                                                          statement.defaultCurrency())});
    if (const auto date = statement.availableBalanceDateTime())
        facts.push_back({"availableBalanceDate", shownDate(date)});
    return facts;
}

void addSayings(Sayings& sayings, const HistoryStatement& held, BookBalance balance) {
    const TvOFXAccountStatement& statement = *held.statement;
    const auto date = statement.ledgerBalanceDateTime() ? statement.ledgerBalanceDateTime()
                                                        : statement.transactionEndDateTime();
    balance.day = firstBookDayText({date});
    balance.file = held.file;
    balance.facts = availableOf(statement);
    const auto& amount = statement.ledgerBalanceAmount();
    if (amount && !balance.day.empty()) {
        balance.amount = *amount;
        return sayings.add(std::move(balance), *date, statement.transactionEndDateTime());
    }
    BookRemark remark{
        balance.day, amount ? "A balance without a day" : "An available balance", {}, balance.facts};
    if (amount)
        remark.facts.push_back({"balance", withCurrency(shownAmount(*amount, statement.defaultCurrency()),
                                                        statement.defaultCurrency())});
    sayings.add(std::move(remark));
}

}  // namespace

BankDrafts::BankDrafts(const AccountHistory& account, std::string_view name, std::uint32_t place,
                       const BookContext& context)
    : account_(account), name_(name), place_(place), context_(context), identities_(identitiesOf(account)) {}

void BankDrafts::addTo(DraftLists& lists) {
    StatedBefore before;
    for (std::uint32_t i = 0; i < account_.entries.size(); ++i)
        if (!isStatedBefore(account_.entries[i], before)) addEntry(lists, i);
    const Coverage coverage = coverageOf(account_);
    Sayings sayings(lists, identities_, coverage, place_);
    for (std::uint32_t i = 0; i < account_.statements.size(); ++i) {
        const HistoryStatement& held = account_.statements[i];
        BookBalance balance;
        balance.account = name_;
        balance.commodity = context_.commodities.currency(held.statement->defaultCurrency());
        balance.statement = i;
        addSayings(sayings, held, std::move(balance));
    }
}

BookIdentity BankDrafts::identityOf(std::uint32_t transaction) const {
    return identities_.of(*bankTransaction(transaction));
}

std::vector<Posting> BankDrafts::postingsOf(const DraftEntry& draft) const {
    const HistoryEntry& entry = account_.entries[draft.transaction];
    const BookedAccount booked{name_, statementOf(entry).defaultCurrency(), entry.statement};
    return bankPostings(*entry.transaction, booked, context_.map.name(draft.counter), context_.commodities);
}

BookEntry BankDrafts::textsOf(std::uint32_t transaction, const BookIdentity& identity) const {
    return bankTexts(*bankTransaction(transaction), identity);
}

BookRemark BankDrafts::remarkOf(std::uint32_t transaction) const {
    return bankRemark(*bankTransaction(transaction), identityOf(transaction));
}

const TvOFXStatementTransaction* BankDrafts::bankTransaction(std::uint32_t transaction) const {
    return account_.entries[transaction].transaction;
}

const TvOFXAccountStatement& BankDrafts::statementOf(const HistoryEntry& entry) const {
    return *account_.statements[entry.statement].statement;
}

/// That on which it was posted; without one, what is nearest to it.
std::optional<BookDay> BankDrafts::dayOf(const HistoryEntry& entry) const {
    const TvOFXStatementTransaction& transaction = *entry.transaction;
    if (const auto posted = transaction.datePosted()) return firstBookDay({posted});
    const TvOFXAccountStatement& statement = statementOf(entry);
    return firstBookDay({transaction.dateUserInit(), transaction.dateFundsAvailable(),
                         statement.transactionEndDateTime(), statement.ledgerBalanceDateTime(),
                         statement.transactionStartDateTime()});
}

/// The history knows, but where an identifier is that of several transactions: there the content tells.
bool BankDrafts::isStatedBefore(const HistoryEntry& entry, StatedBefore& before) const {
    const TvOFXStatementTransaction& transaction = *entry.transaction;
    if (!identities_.isRepeated(transaction.fiTransactionID(), transaction.amount()))
        return !entry.isOriginal();
    return before.has(identities_.digestOf(transaction), entry.statement);
}

void BankDrafts::addEntry(DraftLists& lists, std::uint32_t number) const {
    const HistoryEntry& entry = account_.entries[number];
    const TvOFXStatementTransaction& transaction = *entry.transaction;
    const auto day = dayOf(entry);
    if (!day || !transaction.amount() || !isBookable(*transaction.amount()))
        return lists.remarks.push_back({place_, number});
    const OptionalText home = statementOf(entry).defaultCurrency();
    nameCurrencies(transaction, home, context_.commodities);
    lists.entries.push_back({*day, place_, number, counterAccountOf(transaction, context_.map)});
}

}  // namespace tool
