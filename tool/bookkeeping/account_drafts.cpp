// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/account_drafts.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "bookkeeping/coverage.h"
#include "bookkeeping/identity.h"
#include "history/room.h"
#include "investments/facts.h"
#include "money/foreign_amount.h"
#include "text/shown_values.h"

namespace tool {
namespace {

using namespace brackwell;

std::string trimmedOf(OptionalText text) { return std::string(trimWhiteSpace(text.value_or(""))); }

/// The first of some dates that has a place in a journal.
std::string firstDay(std::initializer_list<std::optional<Date>> dates) {
    for (const auto& date : dates)
        if (std::string day = bookDay(date); !day.empty()) return day;
    return {};
}

/// Balances and remarks of one account. What several statements say equally is said once.
class Sayings {
public:
    Sayings(Drafts& drafts, const Identities& identities, const Coverage& coverage)
        : drafts_(drafts), identities_(identities), coverage_(coverage) {}

    /// A balance of a day, in a statement of which the transactions end on another one. Where that is long
    /// before, those of other statements are needed, too.
    void add(BookBalance balance, Date date, std::optional<Date> end) {
        if (!isBookable(balance.amount)) {
            BookRemark remark{
                balance.day, "A balance with more digits than journals have", {}, std::move(balance.facts)};
            remark.facts.push_back({"balance", withCurrency(balance.amount.toString(), balance.commodity)});
            return add(std::move(remark));
        }
        const bool isLate = end && std::chrono::floor<std::chrono::days>(date) - std::chrono::days(1) >
                                       std::chrono::floor<std::chrono::days>(*end);
        balance.isCovered = coverage_.covers(isLate ? *end : date, date);
        if (isLate) balance.statement = std::numeric_limits<std::uint32_t>::max();
        balance.identity = identities_.of("balance " + balance.account, balance);
        if (met_.insert(balance.identity.digest).second) drafts_.balances.push_back(std::move(balance));
    }
    void add(BookRemark remark) {
        if (remark.facts.empty()) return;
        Digest digest;
        for (const BookFact& fact : remark.facts) digest.add(fact.name).add(fact.text);
        BookBalance named;
        named.day = remark.day;
        remark.identity = identities_.of(remark.text + digest.text(), named);
        if (met_.insert(remark.identity.digest).second) drafts_.remarks.push_back(std::move(remark));
    }

private:
    Drafts& drafts_;
    const Identities& identities_;
    const Coverage& coverage_;
    std::set<std::string> met_;
};

/// Tells which of an account's transactions an earlier statement had already. The history knows, but where
/// an identifier is that of several transactions: there the content tells, and of equal ones the number.
class StatedBefore {
public:
    bool has(const BookIdentity& identity, OptionalText identifier, std::uint32_t statement,
             bool isRepeated) {
        const bool tellsNothing = identity.identifier.empty() && !trimmedOf(identifier).empty();
        if (!tellsNothing) return isRepeated;
        Equal& equal = equals_[identity.digest];
        if (equal.statement != statement) equal = {equal.count, 0, statement};
        if (++equal.met <= equal.count) return true;
        ++equal.count;
        return false;
    }

private:
    struct Equal {
        std::size_t count = 0;  ///< of all statements, each in one statement
        std::size_t met = 0;    ///< in this statement
        std::optional<std::uint32_t> statement = {};
    };
    std::map<std::string, Equal> equals_;
};

// ---------------------------------------------------------------------------------------------
// Bank and card accounts

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
    return identities;
}

std::vector<BookFact> availableOf(const TvOFXAccountStatement& statement) {
    std::vector<BookFact> facts;
    if (const auto& amount = statement.availableBalanceAmount())
        facts.push_back(
            {"availableBalance", withCurrency(shownAmount(*amount), statement.defaultCurrency())});
    if (const auto date = statement.availableBalanceDateTime())
        facts.push_back({"availableBalanceDate", shownDate(date)});
    return facts;
}

void addSayings(Sayings& sayings, const HistoryStatement& held, std::uint32_t number, const std::string& name,
                const BookContext& context) {
    const TvOFXAccountStatement& statement = *held.statement;
    const auto date = statement.ledgerBalanceDateTime() ? statement.ledgerBalanceDateTime()
                                                        : statement.transactionEndDateTime();
    const std::string day = bookDay(date);
    BookBalance balance{day,       name,
                        {},        context.commodities.currency(statement.defaultCurrency()),
                        {},        number,
                        held.file, true,
                        "",        availableOf(statement)};
    const auto& amount = statement.ledgerBalanceAmount();
    if (amount && !day.empty()) {
        balance.amount = *amount;
        return sayings.add(std::move(balance), *date, statement.transactionEndDateTime());
    }
    BookRemark remark{day, amount ? "A balance without a day" : "An available balance", {}, balance.facts};
    if (amount)
        remark.facts.push_back({"balance", withCurrency(shownAmount(*amount), statement.defaultCurrency())});
    sayings.add(std::move(remark));
}

void addEntry(Drafts& drafts, const AccountHistory& account, const HistoryEntry& entry,
              const BookIdentity& identity, const std::string& name, const BookContext& context) {
    const TvOFXAccountStatement& statement = *account.statements[entry.statement].statement;
    const BookedAccount booked{
        name, statement.defaultCurrency(), entry.statement,
        firstDay({entry.transaction->dateUserInit(), entry.transaction->dateFundsAvailable(),
                  statement.transactionEndDateTime(), statement.ledgerBalanceDateTime(),
                  statement.transactionStartDateTime()})};
    auto made = bankEntry(*entry.transaction, booked, identity, context);
    if (!made) return drafts.remarks.push_back(bankRemark(*entry.transaction, identity));
    DraftEntry draft;
    draft.entry = std::move(*made);
    draft.account = drafts.accounts.size() - 1;
    draft.transaction = entry.transaction;
    drafts.entries.push_back(std::move(draft));
}

// ---------------------------------------------------------------------------------------------
// Investment accounts

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
    if (cash) remark.facts.push_back({"cash", shownAmount(*cash)});
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

std::optional<Decimal> bookablePrice(const Position& position, const std::optional<Security>& security) {
    const auto price = pricePerUnit(position, security);
    return price && isBookable(*price) ? price : std::nullopt;
}

/// The positions of a statement by commodity, since one may be held in several sub-accounts, and their
/// prices.
void addPositions(Drafts& drafts, Sayings& sayings, const InvestmentSource& source, const BookBalance& plain,
                  const SecurityLookup& securities, const BookContext& context) {
    std::map<std::string, BookBalance> held;
    for (const Position& position : source.statement.positions()) {
        const auto security = securities.find(position);
        const std::string commodity =
            context.commodities.security(position.securityID(), position.securityIDType(), security);
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
        balance.facts.insert(balance.facts.end(), facts.begin(), facts.end());
        const auto price = bookablePrice(position, security);
        const auto currency = position.currency();
        const std::string day = firstDay({position.priceDate(), source.statement.asOf()});
        if (price && !day.empty())
            drafts.prices.push_back(
                {day, commodity, *price,
                 context.commodities.currency(isForeign(currency, source.statement.currency())
                                                  ? OptionalText(currency->symbol)
                                                  : source.statement.currency())});
    }
    for (auto& [commodity, balance] : held)
        sayings.add(std::move(balance), *source.statement.asOf(), source.statement.end());
}

void addEntry(Drafts& drafts, const InvestmentAccount& account, const InvestmentEntry& entry,
              const BookIdentity& identity, const InvestmentNames& names, const SecurityList& others,
              const BookContext& context) {
    const InvestmentSource& source = account.statements[entry.statement];
    const InvestmentStatement& statement = source.statement;
    const SecurityLookup securities(*source.securities, others);
    const BookedAccount booked{"", statement.currency(), entry.statement,
                               firstDay({statement.end(), statement.asOf(), statement.start()})};
    auto made = investmentEntry(entry.transaction, securities.find(entry.transaction), names, booked,
                                identity, context);
    if (!made) return drafts.remarks.push_back(investmentRemark(entry.transaction, identity));
    DraftEntry draft;
    draft.entry = std::move(*made);
    draft.account = drafts.accounts.size() - 1;
    drafts.entries.push_back(std::move(draft));
}

}  // namespace

void addAccount(Drafts& drafts, const AccountHistory& account, const std::string& name,
                const BookContext& context) {
    const Identities identities = identitiesOf(account);
    const Coverage coverage = coverageOf(account);
    drafts.accounts.push_back(
        {account.bankAccount ? trimmedOf(account.bankAccount->bankID()) : "", trimmedOf(account.number())});
    StatedBefore before;
    makeRoom(drafts.entries, account.entries.size());
    for (const HistoryEntry& entry : account.entries) {
        const BookIdentity identity = identities.of(*entry.transaction);
        if (!before.has(identity, entry.transaction->fiTransactionID(), entry.statement, !entry.isOriginal()))
            addEntry(drafts, account, entry, identity, name, context);
    }
    Sayings sayings(drafts, identities, coverage);
    for (std::size_t i = 0; i < account.statements.size(); ++i)
        addSayings(sayings, account.statements[i], static_cast<std::uint32_t>(i), name, context);
}

void addAccount(Drafts& drafts, const InvestmentAccount& account, const InvestmentNames& names,
                const SecurityList& others, const BookContext& context) {
    const Identities identities = identitiesOf(account);
    const Coverage coverage = coverageOf(account);
    drafts.accounts.emplace_back();
    StatedBefore before;
    for (std::size_t i = 0; i < account.entries.size(); ++i) {
        const InvestmentEntry& entry = account.entries[i];
        const BookIdentity identity = identities.of(entry.transaction);
        if (!before.has(identity, identifierOf(entry.transaction), entry.statement, entry.original != i))
            addEntry(drafts, account, entry, identity, names, others, context);
    }
    Sayings sayings(drafts, identities, coverage);
    for (std::size_t i = 0; i < account.statements.size(); ++i) {
        const InvestmentSource& source = account.statements[i];
        const SecurityLookup securities(*source.securities, others);
        BookBalance plain;
        plain.day = bookDay(source.statement.asOf());
        plain.account = names.securities;
        plain.statement = static_cast<std::uint32_t>(i);
        plain.file = source.file;
        addPositions(drafts, sayings, source, plain, securities, context);
        plain.account = names.cash;
        plain.commodity = context.commodities.currency(source.statement.currency());
        addCash(sayings, source, std::move(plain));
    }
}

}  // namespace tool
