// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/book_maker.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "bookkeeping/account_drafts.h"
#include "bookkeeping/balances.h"
#include "bookkeeping/book_format.h"
#include "bookkeeping/booked_accounts.h"
#include "bookkeeping/commodities.h"
#include "money/sum.h"
#include "text/shown_values.h"

namespace tool {
namespace {

using namespace brackwell;

/// True for a transaction that takes the place of another one, or deletes it.
bool isCorrection(const DraftEntry& draft) {
    return draft.transaction != nullptr && draft.transaction->correctionFITID().has_value();
}

/// Makes one book.
class BookMaker {
public:
    BookMaker(History history, const AccountMap& map, KnownJournal& journal, const BookSettings& settings,
              BookNotes& notes)
        : history_(std::move(history)),
          map_(map),
          journal_(journal),
          settings_(settings),
          notes_(notes),
          commodities_(map) {}

    Book make() {
        readAccounts();
        pairTransfers(drafts_.entries, drafts_.accounts);
        leaveOut();
        joinTransfers(drafts_.entries, map_);
        history_ = {};  // what the entries are made of
        takeEntries();
        noteOlderThanOpening();
        takeBalances();
        takePrices();
        book_.remarks = std::move(drafts_.remarks);
        declareAccounts();
        declareCommodities();
        return std::move(book_);
    }

private:
    void readAccounts();
    void leaveOut();
    void takeEntries();
    void noteOlderThanOpening();
    void takeBalances();
    void takeOpening(const OpeningBalance& opening);
    void noteObjection(const BookBalance& balance);
    void takePrices();
    void declareAccounts();
    void declareCommodities();

    History history_;
    const AccountMap& map_;
    KnownJournal& journal_;
    const BookSettings& settings_;
    BookNotes& notes_;
    Commodities commodities_;
    Drafts drafts_;
    std::set<std::string> known_;  ///< accounts of which a journal has transactions
    Book book_;
};

void BookMaker::readAccounts() {
    const BookedNames names = bookedNames(history_, map_);
    const BookContext context{map_, commodities_};
    if (names.alike > 0)
        notes_.push_back({"", std::to_string(names.alike) +
                                  " accounts have numbers that other accounts have, too; their names end in "
                                  "digests. An account map can give them others."});
    // Currencies come before securities that have one for a ticker.
    for (const AccountHistory& account : history_.accounts()) commodities_.currency(account.currency);
    const auto& investments = history_.investments();
    for (const InvestmentAccount& account : investments.accounts()) commodities_.currency(account.currency);
    for (std::size_t i = 0; i < names.banks.size(); ++i)
        addAccount(drafts_, history_.accounts()[i], names.banks[i], context);
    const SecurityList others(investments.securities());
    for (std::size_t i = 0; i < names.investments.size(); ++i)
        addAccount(drafts_, investments.accounts()[i], names.investments[i], others, context);
    for (const Security& security : investments.otherSecurities())
        commodities_.security(security.id(), security.idType(), security);
}

void BookMaker::leaveOut() {
    const std::size_t changed = leaveOutKnown(drafts_.entries, journal_);
    if (changed > 0)
        notes_.push_back(
            {"", std::to_string(changed) + (changed == 1 ? " transaction has" : " transactions have") +
                     " the identifier and amount of one in the journal, but another day or other "
                     "texts; left out."});
    for (const DraftEntry& draft : drafts_.entries)
        if (draft.isLeftOut) known_.insert(draft.entry.postings.front().account);
    std::size_t corrections = 0;
    for (const DraftEntry& draft : drafts_.entries) corrections += !draft.isLeftOut && isCorrection(draft);
    if (corrections > 0)
        notes_.push_back({"", std::to_string(corrections) +
                                  (corrections == 1 ? " transaction corrects" : " transactions correct") +
                                  " an earlier one (correctionFITID in the journal), which stays as it is."});
    const auto isKnown = [this](const auto& item) { return journal_.takeDigest(item.identity); };
    std::erase_if(drafts_.remarks, isKnown);
    std::erase_if(drafts_.balances, isKnown);
}

void BookMaker::takeEntries() {
    book_.entries.reserve(drafts_.entries.size());
    for (DraftEntry& draft : drafts_.entries) book_.entries.push_back(std::move(draft.entry));
    drafts_.entries = {};
    std::ranges::stable_sort(book_.entries, [](const BookEntry& a, const BookEntry& b) {
        return std::tie(a.day, a.postings.front().account) < std::tie(b.day, b.postings.front().account);
    });
}

/// What an account began with has older transactions in it already.
void BookMaker::noteOlderThanOpening() {
    std::map<std::pair<std::string, std::string>, std::pair<std::size_t, Sum>> older;
    for (const BookEntry& entry : book_.entries)
        for (const Posting& posting : entry.postings) {
            const std::string day = journal_.openingDay(posting.account);
            if (day.empty() || entry.day >= day) continue;
            auto& [count, sum] = older[{day, posting.commodity}];
            ++count;
            sum.add(posting.quantity);
        }
    for (const auto& [key, counted] : older) {
        const auto& [count, sum] = counted;
        notes_.push_back({"", std::to_string(count) + (count == 1 ? " posting is" : " postings are") +
                                  " of a day before the opening balance of " + key.first +
                                  " in the journal, which has them in it already: take " +
                                  (sum.value() ? withCurrency(sum.value()->toString(), key.second) : "them") +
                                  " off it, and give it an earlier day."});
    }
}

void BookMaker::takeBalances() {
    book_.balances = std::move(drafts_.balances);
    std::ranges::stable_sort(book_.balances, [](const BookBalance& a, const BookBalance& b) {
        return std::tie(a.day, a.account, a.commodity) < std::tie(b.day, b.account, b.commodity);
    });
    const auto knows = [this](const std::string& account) {
        return !settings_.hasOpenings || known_.contains(account) || journal_.uses(account);
    };
    for (const OpeningBalance& opening : settleBalances(book_.entries, book_.balances, knows))
        takeOpening(opening);
    for (BookBalance& balance : book_.balances) {
        if (!settings_.hasAssertions && balance.objection.empty())
            balance.objection = "not asserted";
        else if (!balance.objection.empty() && balance.objection != kHeldEarlier)
            noteObjection(balance);
    }
}

/// One entry for each account, with a pair of postings for each commodity.
void BookMaker::takeOpening(const OpeningBalance& opening) {
    auto& openings = book_.openings;
    if (openings.empty() || openings.back().postings.front().account != opening.account) {
        openings.emplace_back();
        openings.back().day = opening.day;
        openings.back().payee = "Opening balance";
    }
    openings.back().postings.push_back(
        {opening.account, opening.amount, opening.commodity, {}, {}, {}, 0, {{kOpeningName, opening.day}}});
    openings.back().postings.push_back(
        {map_.name(BookRole::opening), opening.amount.negated(), opening.commodity, {}, {}, {}, 0, {}});
}

void BookMaker::noteObjection(const BookBalance& balance) {
    notes_.push_back({balance.file, "The balance of " + balance.day + ", " +
                                        withCurrency(balance.amount.toString(), balance.commodity) +
                                        ", is only a comment: " + balance.objection + "."});
}

void BookMaker::takePrices() {
    auto& prices = drafts_.prices;
    std::erase_if(prices, [this](const BookPrice& price) {
        return journal_.hasPrice(priceLine(price, settings_.format));
    });
    std::ranges::stable_sort(prices, [](const BookPrice& a, const BookPrice& b) {
        return std::tie(a.day, a.commodity) < std::tie(b.day, b.commodity);
    });
    std::set<std::string> met;
    for (BookPrice& price : prices)
        if (met.insert(priceLine(price, settings_.format)).second) book_.prices.push_back(std::move(price));
}

void BookMaker::declareAccounts() {
    // Early enough for what a later import brings of the time before.
    const std::string early = "1970-01-01";
    std::map<std::string, std::string> days;
    const auto use = [&](const std::string& account, const std::string& day) {
        const auto place = days.try_emplace(account, early).first;
        place->second = std::min(place->second, day);
    };
    for (const auto* entries : {&book_.openings, &book_.entries})
        for (const BookEntry& entry : *entries)
            for (const Posting& posting : entry.postings) use(posting.account, entry.day);
    for (const BookBalance& balance : book_.balances)
        if (balance.objection.empty()) use(balance.account, balance.day);
    for (const auto& [name, day] : days)
        if (!journal_.declares(name)) book_.accounts.push_back({name, day});
}

void BookMaker::declareCommodities() {
    std::set<std::string> used;
    for (const auto* entries : {&book_.openings, &book_.entries})
        for (const BookEntry& entry : *entries)
            for (const Posting& posting : entry.postings)
                used.insert({posting.commodity, posting.costCommodity});
    for (const BookBalance& balance : book_.balances) used.insert(balance.commodity);
    for (const BookPrice& price : book_.prices) used.insert(price.currency);
    for (BookCommodity& commodity : commodities_.all()) {
        book_.decimals.emplace(commodity.name, commodity.decimals);
        if (commodity.isCurrency && !used.contains(commodity.name)) continue;
        if (!journal_.declares(commodity.name)) book_.commodities.push_back(std::move(commodity));
    }
}

}  // namespace

Book makeBook(History history, const AccountMap& map, KnownJournal& journal, const BookSettings& settings,
              BookNotes& notes) {
    return BookMaker(std::move(history), map, journal, settings, notes).make();
}

}  // namespace tool
