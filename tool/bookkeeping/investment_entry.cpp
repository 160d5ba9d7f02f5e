// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/investment_entry.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "investments/facts.h"
#include "money/foreign_amount.h"
#include "text/value_text.h"
#include "text/visible_text.h"

namespace tool {
namespace {

using namespace brackwell;

/// What an entry is made from.
struct InvestmentSourceData {
    const InvestmentTransaction& transaction;
    const InvestmentNames& names;
    const BookedAccount& account;
    const BookContext& context;
    std::string_view security;  ///< the commodity; "" for none
    std::string_view money;     ///< the commodity of the statement, or the one that amounts are in

    /// An amount in `money`, with the sign that the document has.
    std::optional<Decimal> moneyOf(const std::optional<Decimal>& amount) const {
        const auto converted = inStatementCurrency(amount, transaction.currency(), account.currency);
        return converted ? converted->shown() : amount;
    }
};

Decimal magnitude(const Decimal& amount) { return amount.isNegative() ? amount.negated() : amount; }

using Postings = std::vector<Posting>;

void post(Postings& postings, std::string_view account, const Decimal& quantity, std::string_view commodity) {
    postings.push_back({account, quantity, commodity});
}

/// Units against nothing that is known: what they are worth, the document does not say.
Postings unitsAlone(const InvestmentSourceData& source, const Decimal& units) {
    Postings postings;
    if (source.security.empty()) return postings;
    post(postings, source.names.securities, units, source.security);
    post(postings, source.context.map.name(BookRole::securities), units.negated(), source.security);
    return postings;
}

Postings moneyAlone(const InvestmentSourceData& source, const Decimal& total, BookRole role) {
    Postings postings;
    post(postings, source.names.cash, total, source.money);
    post(postings, source.context.map.name(role), total.negated(), source.money);
    return postings;
}

/// What a trade costs besides the price, by where it goes.
struct CostKind {
    std::optional<Decimal> (InvestmentTransaction::*get)() const noexcept;
    BookRole role;
    bool isOfSalesOnly;
};
constexpr CostKind kCosts[] = {
    {&InvestmentTransaction::commission, BookRole::commissions, false},
    {&InvestmentTransaction::load, BookRole::commissions, false},
    {&InvestmentTransaction::fees, BookRole::fees, false},
    {&InvestmentTransaction::taxes, BookRole::taxes, false},
    {&InvestmentTransaction::withholding, BookRole::taxes, true},
    {&InvestmentTransaction::stateWithholding, BookRole::taxes, true},
    {&InvestmentTransaction::penalty, BookRole::fees, true},
};

/// Postings of the costs, which a reversal gives back.
Postings costsOf(const InvestmentSourceData& source, bool isSale, bool isReversal) {
    Postings postings;
    for (const CostKind& cost : kCosts) {
        if (cost.isOfSalesOnly && !isSale) continue;
        const auto amount = source.moneyOf((source.transaction.*cost.get)());
        if (!amount || amount->isZero()) continue;
        const Decimal paid = magnitude(*amount);
        post(postings, source.context.map.name(cost.role), isReversal ? paid.negated() : paid, source.money);
    }
    return postings;
}

/// What units were exchanged for, with the sign of the money: the total without the costs.
std::optional<Decimal> valueWithout(const Postings& costs, const Decimal& total) {
    std::optional<Decimal> value = total.negated();
    for (const Posting& cost : costs)
        if (value) value = value->minus(cost.quantity);
    return value;
}

/// Units for a total that an account pays or gets.
Postings exchange(const InvestmentSourceData& source, const Decimal& units, const Decimal& total, bool isSale,
                  std::string_view payer) {
    const bool isReversal = isSale == units.isNegative() ? false : !units.isZero();
    Postings postings;
    Postings costs = costsOf(source, isSale, isReversal);
    auto value = valueWithout(costs, total);
    // Costs that are more than the total are none that were taken from it.
    if (!value || (!value->isZero() && value->isNegative() != units.isNegative())) {
        costs.clear();
        value = total.negated();
    }
    // For nothing is no price: programs take units with a price of 0 for others than those without.
    if (value->isZero()) {
        postings = unitsAlone(source, units);
    } else {
        post(postings, source.names.securities, units, source.security);
        postings.back().cost = magnitude(*value);
        postings.back().costCommodity = source.money;
    }
    post(postings, payer, total, source.money);
    std::ranges::move(costs, std::back_inserter(postings));
    return postings;
}

/// A purchase or a sale.
Postings trade(const InvestmentSourceData& source, bool isSale, std::string_view payer) {
    auto units = source.transaction.units();
    auto total = source.moneyOf(source.transaction.total());
    const bool hasUnits = units && !units->isZero() && !source.security.empty();
    if (hasUnits && (!total || units->isNegative() == total->isNegative())) {
        units = isSale ? magnitude(*units).negated() : magnitude(*units);
        if (total) total = isSale ? magnitude(*total) : magnitude(*total).negated();
    }
    if (hasUnits && total) return exchange(source, *units, *total, isSale, payer);
    if (hasUnits) return unitsAlone(source, *units);
    return total ? moneyAlone(source, *total, BookRole::securities) : Postings();
}

Postings purchase(const InvestmentSourceData& source) { return trade(source, false, source.names.cash); }
Postings sale(const InvestmentSourceData& source) { return trade(source, true, source.names.cash); }

// ---------------------------------------------------------------------------------------------
// Income and expenses

/// In the order of IncomeType.
constexpr BookRole kIncomeRoles[] = {BookRole::otherIncome, BookRole::gains,    BookRole::gains,
                                     BookRole::dividends,   BookRole::interest, BookRole::otherIncome};

BookRole incomeRole(const InvestmentTransaction& transaction) {
    return kIncomeRoles[static_cast<std::size_t>(transaction.incomeType().value_or(IncomeType::unknown))];
}

Postings income(const InvestmentSourceData& source) {
    const auto total = source.moneyOf(source.transaction.total());
    return total ? moneyAlone(source, *total, incomeRole(source.transaction)) : Postings();
}

template <BookRole role>
Postings moneyFor(const InvestmentSourceData& source) {
    const auto total = source.moneyOf(source.transaction.total());
    return total ? moneyAlone(source, *total, role) : Postings();
}

/// No cash is touched: the income pays.
Postings reinvestment(const InvestmentSourceData& source) {
    return trade(source, false, source.context.map.name(incomeRole(source.transaction)));
}

// ---------------------------------------------------------------------------------------------
// What is moved without money

/// From one sub-account to another of an account that has one name: both postings are its own.
Postings journal(const InvestmentSourceData& source) {
    Postings postings;
    const InvestmentTransaction& transaction = source.transaction;
    const bool isMoney = transaction.kind() == InvestmentTransactionKind::journalFund;
    const auto quantity = isMoney ? source.moneyOf(transaction.total()) : transaction.units();
    const std::string& account = isMoney ? source.names.cash : source.names.securities;
    const std::string_view commodity = isMoney ? source.money : source.security;
    if (!quantity || commodity.empty()) return postings;
    post(postings, account, *quantity, commodity);
    post(postings, account, quantity->negated(), commodity);
    return postings;
}

Postings transfer(const InvestmentSourceData& source) {
    const auto units = source.transaction.units();
    if (!units) return {};
    const auto action = source.transaction.transferAction();
    if (action == TransferAction::out) return unitsAlone(source, magnitude(*units).negated());
    return unitsAlone(source, *units);
}

Postings closure(const InvestmentSourceData& source) {
    const auto units = source.transaction.units();
    return units ? unitsAlone(source, *units) : Postings();
}

/// The new units in the place of the old ones, and cash for what makes no whole one.
Postings split(const InvestmentSourceData& source) {
    const InvestmentTransaction& transaction = source.transaction;
    const auto before = transaction.oldUnits();
    const auto after = transaction.newUnits();
    const auto difference = before && after ? after->minus(*before) : std::nullopt;
    Postings postings = difference ? unitsAlone(source, *difference) : Postings();
    const auto cash = source.moneyOf(transaction.cashForFractions());
    if (cash && !cash->isZero())
        std::ranges::move(moneyAlone(source, *cash, BookRole::gains), std::back_inserter(postings));
    return postings;
}

/// A bank transaction has an entry of its own kind.
Postings nothingHere(const InvestmentSourceData&) { return {}; }

using MakePostings = Postings (*)(const InvestmentSourceData&);

/// In the order of InvestmentTransactionKind.
constexpr std::array<MakePostings, 21> kMakers = {
    purchase,                          // buyDebt
    purchase,                          // buyFund
    purchase,                          // buyOption
    purchase,                          // buyOther
    purchase,                          // buyStock
    closure,                           // optionClosure
    income,                            // income
    moneyFor<BookRole::fees>,          // expense
    journal,                           // journalFund
    journal,                           // journalSecurity
    moneyFor<BookRole::interestPaid>,  // marginInterest
    reinvestment,                      // reinvestment
    moneyFor<BookRole::securities>,    // returnOfCapital
    sale,                              // sellDebt
    sale,                              // sellFund
    sale,                              // sellOption
    sale,                              // sellOther
    sale,                              // sellStock
    split,                             // split
    transfer,                          // transfer
    nothingHere,                       // bankTransaction
};
static_assert(kMakers.size() == static_cast<std::size_t>(InvestmentTransactionKind::bankTransaction) + 1);

/// Fields that an entry has elsewhere.
constexpr std::string_view kPlacedFields[] = {"fiTransactionID", "tradeDate",  "memo",          "total",
                                              "units",           "securityID", "securityIDType"};

std::vector<BookFact> factsOf(const InvestmentTransaction& transaction, bool isWhole) {
    std::vector<BookFact> facts;
    for (const InvestmentField& field : transaction.fields()) {
        const bool isPlaced = std::ranges::find(kPlacedFields, field.name) != std::end(kPlacedFields);
        if (isWhole || !isPlaced) facts.push_back({field.name, std::string(field.text)});
    }
    addCurrencyFacts(facts, transaction.currency());
    if (const auto other = transaction.transferAccount()) {
        if (const auto broker = other->brokerID().text())
            facts.push_back({"transferBrokerID", std::string(*broker)});
        if (const auto number = other->accountID().text())
            facts.push_back({"transferAccountID", std::string(*number)});
    }
    return facts;
}

bool isBookablePosting(const Posting& posting) {
    return isBookable(posting.quantity) && (!posting.cost || isBookable(*posting.cost));
}

std::string_view commodityOfAmounts(const InvestmentTransaction& transaction, const BookedAccount& account,
                                    const BookContext& context) {
    const auto currency = transaction.currency();
    const bool isUnknown = isForeign(currency, account.currency) && !currency->rate;
    return context.commodities.currency(isUnknown ? OptionalText(currency->symbol) : account.currency);
}

}  // namespace

std::vector<Posting> investmentPostings(const InvestmentTransaction& transaction,
                                        const std::optional<Security>& security, const InvestmentNames& names,
                                        const BookedAccount& account, const BookContext& context) {
    const InvestmentSourceData source{
        transaction,
        names,
        account,
        context,
        context.commodities.security(transaction.securityID(), transaction.securityIDType(), security),
        commodityOfAmounts(transaction, account, context)};
    Postings postings = kMakers[static_cast<std::size_t>(transaction.kind())](source);
    if (!std::ranges::all_of(postings, isBookablePosting)) return {};
    for (Posting& posting : postings) posting.statement = account.statement;
    return postings;
}

BookEntry investmentTexts(const InvestmentTransaction& transaction, const std::optional<Security>& security,
                          const BookIdentity& identity) {
    if (const auto bank = transaction.bankTransaction()) return bankTexts(*bank, identity);
    BookEntry entry;
    const std::string_view name = nameOf(security, transaction.securityID());
    entry.payee = visibleText(kindInWords(transaction) + " " + std::string(name));
    entry.memo = visibleText(transaction.memo().value_or(""));
    entry.facts = factsOf(transaction, false);
    if (!transaction.tradeDate()) entry.facts.push_back({"tradeDate", "none"});
    return entry;
}

BookRemark investmentRemark(const InvestmentTransaction& transaction, const BookIdentity& identity) {
    if (const auto bank = transaction.bankTransaction()) return bankRemark(*bank, identity);
    BookRemark remark;
    remark.day = dayText(dateOf(transaction));
    remark.identity = identity;
    remark.text =
        kindInWords(transaction) + ", without a day, or without units and money that journals can have";
    remark.facts = factsOf(transaction, true);
    return remark;
}

std::optional<Decimal> pricePerUnit(const Position& position, const std::optional<Security>& security) {
    const auto price = position.unitPrice();
    const auto units = position.units();
    const auto value = position.marketValue();
    const bool isPlain = position.kind() != PositionKind::debt && position.kind() != PositionKind::option;
    if (!price || price->isNegative()) return std::nullopt;
    if (!units || !value || units->isZero()) return isPlain ? price : std::nullopt;
    const Decimal wanted = magnitude(*value);
    // Wide enough for what was rounded, and far from the next factor.
    const auto tolerance = wanted.times(*Decimal::fromParts(false, 0, 2, -2));
    const auto contract = security ? security->sharesPerContract() : std::nullopt;
    for (const auto& factor : {std::optional(Decimal::fromInteger(1)), Decimal::fromParts(false, 0, 1, -2),
                               contract, std::optional(Decimal::fromInteger(100))}) {
        const auto unit = factor ? price->times(*factor) : std::nullopt;
        const auto made = unit ? unit->times(magnitude(*units)) : std::nullopt;
        const auto difference = made ? made->minus(wanted) : std::nullopt;
        if (difference && tolerance && magnitude(*difference) <= *tolerance) return unit;
    }
    return std::nullopt;
}

}  // namespace tool
