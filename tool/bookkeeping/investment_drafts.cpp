// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/investment_drafts.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>

#include "bookkeeping/coverage.h"
#include "bookkeeping/sayings.h"
#include "investments/facts.h"
#include "money/foreign_amount.h"
#include "text/shown_values.h"

namespace tool {
namespace {

using namespace brackwell;

Coverage coverageOf(const InvestmentAccount& account) {
    Coverage coverage;
    for (const InvestmentSource& source : account.statements)
        coverage.add(source.statement.start(), source.statement.end(), source.statement.asOf());
    coverage.finish();
    return coverage;
}

Identities identitiesOf(const InvestmentAccount& account) {
    Identities identities(identityOf(account));
    for (const InvestmentEntry& entry : account.entries)
        identities.meet(entry.statement, identifierOf(entry.transaction), amountOf(entry.transaction));
    identities.finish();
    return identities;
}

void addFields(std::vector<BookFact>& facts, const std::vector<InvestmentField>& fields) {
    for (const InvestmentField& field : fields) facts.push_back({field.name, std::string(field.text)});
}

/// What a statement says of cash: in the balance, the rest beside it.
void addCash(Sayings& sayings, const InvestmentSource& source, BookBalance balance) {
    const InvestmentStatement& statement = source.statement;
    const auto stated = statement.balance();
    if (stated) {
        addFields(balance.facts, stated->fields());
        for (const ListedBalance& listed : stated->listed()) addFields(balance.facts, listed.fields());
        std::erase_if(balance.facts, [](const BookFact& fact) { return fact.name == "cash"; });
    }
    BookRemark plan{balance.day, "What a retirement plan is worth", {}, {}};
    if (const auto amounts = statement.balance401k()) addFields(plan.facts, amounts->fields());
    sayings.add(std::move(plan));
    const auto cash = stated ? stated->cash() : std::nullopt;
    if (cash && !balance.day.empty()) {
        balance.amount = *cash;
        return sayings.add(std::move(balance), *statement.asOf(), statement.end());
    }
    BookRemark remark{balance.day, "Balances that are not those of the cash", {}, std::move(balance.facts)};
    if (cash) remark.facts.push_back({"cash", shownAmount(*cash, statement.currency())});
    sayings.add(std::move(remark));
}

/// Units that a short position has are owed.
Decimal heldUnits(const Position& position) {
    const Decimal units = position.units().value_or(Decimal());
    const bool isShort = position.positionType() == PositionType::shortPosition;
    return isShort && !units.isNegative() ? units.negated() : units;
}

std::vector<BookFact> factsOf(const Position& position) {
    constexpr std::string_view placed[] = {"securityID", "securityIDType", "units"};
    std::vector<BookFact> facts;
    addFields(facts, position.fields());
    std::erase_if(facts, [&placed](const BookFact& fact) {
        return std::ranges::find(placed, fact.name) != std::end(placed);
    });
    addCurrencyFacts(facts, position.currency());
    return facts;
}

/// The price of a position's unit on the day of which it is.
void addPrice(std::vector<BookPrice>& prices, const Position& position,
              const std::optional<Security>& security, const InvestmentStatement& statement,
              std::string_view commodity, Commodities& commodities) {
    const auto price = pricePerUnit(position, security);
    const std::string day = firstBookDayText({position.priceDate(), statement.asOf()});
    if (!price || !isBookable(*price) || day.empty()) return;
    const auto currency = position.currency();
    const bool isOther = isForeign(currency, statement.currency());
    prices.push_back({day, commodity, *price,
                      commodities.currency(isOther ? OptionalText(currency->symbol) : statement.currency())});
}

/// The positions of a statement by commodity, since one may be held in several sub-accounts, and their
/// prices.
void addPositions(DraftLists& lists, Sayings& sayings, const InvestmentSource& source,
                  const BookBalance& plain, const SecurityLookup& securities, Commodities& commodities) {
    std::map<std::string_view, BookBalance> held;
    for (const Position& position : source.statement.positions()) {
        const auto security = securities.find(position);
        const std::string_view commodity =
            commodities.security(position.securityID(), position.securityIDType(), security);
        std::vector<BookFact> facts = factsOf(position);
        if (commodity.empty() || !position.units() || plain.day.empty()) {
            addFields(facts, position.fields());
            sayings.add(BookRemark{plain.day, "A position without units or a day", {}, std::move(facts)});
            continue;
        }
        BookBalance& balance = held.try_emplace(commodity, plain).first->second;
        balance.commodity = commodity;
        const auto sum = balance.amount.plus(heldUnits(position));
        if (sum) balance.amount = *sum;
        std::ranges::move(facts, std::back_inserter(balance.facts));
        addPrice(lists.prices, position, security, source.statement, commodity, commodities);
    }
    for (auto& [commodity, balance] : held)
        sayings.add(std::move(balance), *source.statement.asOf(), source.statement.end());
}

}  // namespace

InvestmentDrafts::InvestmentDrafts(const InvestmentAccount& account, const InvestmentNames& names,
                                   std::uint32_t place, const SecurityList& securities,
                                   const BookContext& context)
    : account_(account),
      names_(names),
      place_(place),
      securities_(securities),
      context_(context),
      identities_(identitiesOf(account)) {}

void InvestmentDrafts::addTo(DraftLists& lists) {
    StatedBefore before;
    for (std::uint32_t i = 0; i < account_.entries.size(); ++i)
        if (!isStatedBefore(i, before)) addEntry(lists, i);
    const Coverage coverage = coverageOf(account_);
    Sayings sayings(lists, identities_, coverage, place_);
    for (std::uint32_t i = 0; i < account_.statements.size(); ++i) {
        const InvestmentSource& source = account_.statements[i];
        BookBalance plain;
        plain.day = firstBookDayText({source.statement.asOf()});
        plain.account = names_.securities;
        plain.statement = i;
        plain.file = source.file;
        addPositions(lists, sayings, source, plain, securitiesOf(source), context_.commodities);
        plain.account = names_.cash;
        plain.commodity = context_.commodities.currency(source.statement.currency());
        addCash(sayings, source, std::move(plain));
    }
}

BookIdentity InvestmentDrafts::identityOf(std::uint32_t transaction) const {
    return identities_.of(account_.entries[transaction].transaction);
}

std::vector<Posting> InvestmentDrafts::postingsOf(const DraftEntry& draft) const {
    return postingsOf(account_.entries[draft.transaction], draft.counter);
}

BookEntry InvestmentDrafts::textsOf(std::uint32_t transaction, const BookIdentity& identity) const {
    const InvestmentEntry& entry = account_.entries[transaction];
    return investmentTexts(entry.transaction, securityOf(entry), identity);
}

BookRemark InvestmentDrafts::remarkOf(std::uint32_t transaction) const {
    return investmentRemark(account_.entries[transaction].transaction, identityOf(transaction));
}

SecurityLookup InvestmentDrafts::securitiesOf(const InvestmentSource& source) const {
    return {*source.securities, securities_};
}

std::optional<Security> InvestmentDrafts::securityOf(const InvestmentEntry& entry) const {
    return securitiesOf(account_.statements[entry.statement]).find(entry.transaction);
}

/// That of the transaction, else that of its statement. A bank transaction of a day that no journal has is of
/// no other day.
std::optional<BookDay> InvestmentDrafts::dayOf(const InvestmentEntry& entry) const {
    const InvestmentStatement& statement = account_.statements[entry.statement].statement;
    const auto bank = entry.transaction.bankTransaction();
    const auto date = bank ? bank->datePosted() : dateOf(entry.transaction);
    if (bank && date) return firstBookDay({date});
    return firstBookDay({date, statement.end(), statement.asOf(), statement.start()});
}

/// As with bank accounts, the content tells where an identifier is that of several transactions.
bool InvestmentDrafts::isStatedBefore(std::uint32_t number, StatedBefore& before) const {
    const InvestmentEntry& entry = account_.entries[number];
    if (!identities_.isRepeated(identifierOf(entry.transaction), amountOf(entry.transaction)))
        return !entry.isOriginal();
    return before.has(identities_.digestOf(entry.transaction), entry.statement);
}

void InvestmentDrafts::addEntry(DraftLists& lists, std::uint32_t number) const {
    const InvestmentEntry& entry = account_.entries[number];
    const auto bank = entry.transaction.bankTransaction();
    const auto day = dayOf(entry);
    const CounterAccount counter =
        bank && bank->amount() ? counterAccountOf(*bank, context_.map) : CounterAccount();
    const std::vector<Posting> postings = day ? postingsOf(entry, counter) : std::vector<Posting>();
    if (postings.empty()) return lists.remarks.push_back({place_, number});
    const std::uint32_t place = postings.front().account == names_.securities ? place_ : place_ + 1;
    lists.entries.push_back({*day, place, number, counter});
}

std::vector<Posting> InvestmentDrafts::postingsOf(const InvestmentEntry& entry,
                                                  CounterAccount counter) const {
    const InvestmentStatement& statement = account_.statements[entry.statement].statement;
    BookedAccount booked{names_.cash, statement.currency(), entry.statement};
    const auto bank = entry.transaction.bankTransaction();
    if (!bank) return investmentPostings(entry.transaction, securityOf(entry), names_, booked, context_);
    if (!bank->amount() || !isBookable(*bank->amount())) return {};
    return bankPostings(*bank, booked, context_.map.name(counter), context_.commodities);
}

}  // namespace tool
