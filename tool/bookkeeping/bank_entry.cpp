// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/bank_entry.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>
#include <variant>

#include "money/foreign_amount.h"
#include "text/transaction_text.h"
#include "text/value_text.h"
#include "text/visible_text.h"

namespace tool {
namespace {

using namespace brackwell;

/// The fields of a transaction that have places of their own in an entry, or that repeat what others say.
constexpr std::array<std::string_view, 8> kBookedFields = {
    "datePosted", "amount", "fiTransactionID",    "checkOrReferenceNumber",
    "payeeName",  "memo",   "originalDataString", "originalDatePostedString",
};

void addFact(std::vector<BookFact>& facts, std::string_view name, OptionalText text) {
    if (text && !trimWhiteSpace(*text).empty()) facts.push_back({name, std::string(*text)});
}
void addFact(std::vector<BookFact>& facts, std::string_view name, std::optional<Date> date) {
    if (date) facts.push_back({name, dayText(date)});
}
void addFact(std::vector<BookFact>&, std::string_view, const std::optional<Decimal>&) {}
void addFact(std::vector<BookFact>& facts, std::string_view, const std::shared_ptr<TvOFXPayee>& payee) {
    if (!payee) return;
    addFact(facts, "payeeAddress", OptionalText(payee->address()));
    addFact(facts, "payeeCity", payee->city());
    addFact(facts, "payeeState", payee->state());
    addFact(facts, "payeeZipCode", payee->zipCode());
    addFact(facts, "payeeCountry", payee->country());
    addFact(facts, "payeePhoneNumber", payee->phoneNumber());
}
template <class Account>
void addFact(std::vector<BookFact>& facts, std::string_view name, const std::shared_ptr<Account>& account) {
    if (account) addFact(facts, name, account->accountID());
}

std::vector<BookFact> factsOf(const TvOFXStatementTransaction& transaction) {
    std::vector<BookFact> facts;
    for (const auto& field : TvOFXStatementTransaction::fields()) {
        if (std::ranges::find(kBookedFields, field.name) != kBookedFields.end()) continue;
        std::visit([&](const auto get) { addFact(facts, field.name, (transaction.*get)()); }, field.get);
    }
    addCurrencyFacts(facts, currencyOf(transaction));
    return facts;
}

/// A FITID that the identity does not show as it is.
void addHiddenIdentifier(std::vector<BookFact>& facts, OptionalText identifier,
                         const BookIdentity& identity) {
    const std::string_view text = trimWhiteSpace(identifier.value_or(""));
    if (!text.empty() && !identity.identifier.starts_with(std::string(text) + "."))
        facts.push_back({"fiTransactionID", std::string(text)});
}

/// Accounts that the type of a transaction (TRNTYPE) tells.
struct TypedAccount {
    std::string_view type;
    BookRole spent;
    BookRole received;
};
constexpr TypedAccount kTypedAccounts[] = {
    {"FEE", BookRole::fees, BookRole::fees},
    {"SRVCHG", BookRole::fees, BookRole::fees},
    {"INT", BookRole::interestPaid, BookRole::interest},
    {"DIV", BookRole::unknownExpense, BookRole::dividends},
};

Decimal magnitudeOf(const Decimal& amount) { return amount.isNegative() ? amount.negated() : amount; }

}  // namespace

CounterAccount counterAccountOf(const TvOFXStatementTransaction& transaction, const AccountMap& map) {
    const auto named =
        map.counterAccountFor(payeeOf(transaction).value_or(""), transaction.memo().value_or(""));
    if (named) return *named;
    if (transaction.bankAccountTo() || transaction.creditCardAccountTo())
        return counterAccount(BookRole::transfers);
    const bool isSpent = transaction.amount()->isNegative();
    const auto* const typed = std::ranges::find(
        kTypedAccounts, trimWhiteSpace(transaction.transactionType().value_or("")), &TypedAccount::type);
    if (typed != std::end(kTypedAccounts)) return counterAccount(isSpent ? typed->spent : typed->received);
    return counterAccount(isSpent ? BookRole::unknownExpense : BookRole::unknownIncome);
}

std::vector<Posting> bankPostings(const TvOFXStatementTransaction& transaction, const BookedAccount& account,
                                  std::string_view counterAccount, Commodities& commodities) {
    const Decimal& stated = *transaction.amount();
    const auto currency = currencyOf(transaction);
    const std::string_view home = commodities.currency(account.currency);
    std::vector<Posting> postings{{account.name, stated, home, account.statement},
                                  {counterAccount, stated.negated(), home}};
    Posting& own = postings.front();
    Posting& other = postings.back();
    if (isForeign(currency, account.currency)) {
        const std::string_view foreign = commodities.currency(currency->symbol);
        const auto converted = amountIn(transaction, account.currency);
        other.commodity = foreign;
        if (converted) {
            own.quantity = converted->shown();
            other.cost = magnitudeOf(own.quantity);
            other.costCommodity = home;
        } else {
            own.commodity = foreign;
        }
    }
    // Two names for one currency need no price.
    if (other.commodity == own.commodity && other.cost) {
        other.quantity = own.quantity.negated();
        other.cost.reset();
    }
    return postings;
}

bool isBookable(const Decimal& number) {
    constexpr std::ptrdiff_t most = 24;
    constexpr std::ptrdiff_t mostBeforePoint = 15;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const std::string text = number.toString();
    const auto point = std::ranges::find(text, '.');
    return std::count_if(text.begin(), text.end(), isDigit) <= most &&
           std::count_if(text.begin(), point, isDigit) <= mostBeforePoint;
}

void addCurrencyFacts(std::vector<BookFact>& facts, const std::optional<TransactionCurrency>& currency) {
    if (!currency) return;
    addFact(facts, currency->isConverted ? "convertedFrom" : "statedIn", OptionalText(currency->symbol));
    if (currency->rate) facts.push_back({"currencyRate", currency->rate->toString()});
}

void nameCurrencies(const TvOFXStatementTransaction& transaction, OptionalText statementCurrency,
                    Commodities& commodities) {
    commodities.currency(statementCurrency);
    const auto currency = currencyOf(transaction);
    if (isForeign(currency, statementCurrency)) commodities.currency(currency->symbol);
}

BookEntry bankTexts(const TvOFXStatementTransaction& transaction, const BookIdentity& identity) {
    BookEntry entry;
    entry.payee = visibleText(payeeOf(transaction).value_or(""));
    entry.memo = visibleText(transaction.memo().value_or(""));
    entry.code = visibleText(transaction.checkOrReferenceNumber().value_or(""));
    entry.facts = factsOf(transaction);
    if (!transaction.datePosted()) addFact(entry.facts, "datePosted", OptionalText("none"));
    addHiddenIdentifier(entry.facts, transaction.fiTransactionID(), identity);
    return entry;
}

BookRemark bankRemark(const TvOFXStatementTransaction& transaction, const BookIdentity& identity) {
    BookRemark remark;
    remark.day = dayText(transaction.datePosted());
    remark.identity = identity;
    const bool isTooLong = transaction.amount() && !isBookable(*transaction.amount());
    remark.text =
        isTooLong ? "A transaction with more digits than journals have"
                  : std::string("A transaction without ") + (transaction.amount() ? "a day" : "an amount");
    if (transaction.amount()) remark.facts.push_back({"amount", transaction.amount()->toString()});
    addFact(remark.facts, "payeeName", payeeOf(transaction));
    addFact(remark.facts, "memo", transaction.memo());
    addFact(remark.facts, "checkOrReferenceNumber", transaction.checkOrReferenceNumber());
    for (BookFact& fact : factsOf(transaction)) remark.facts.push_back(std::move(fact));
    addHiddenIdentifier(remark.facts, transaction.fiTransactionID(), identity);
    return remark;
}

}  // namespace tool
