// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/book_maker.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "bookkeeping/balances.h"
#include "bookkeeping/book_format.h"
#include "bookkeeping/transfers.h"
#include "money/sum.h"
#include "text/counted.h"
#include "text/shown_values.h"

namespace tool {
namespace {

using namespace brackwell;

/// Makes one book.
class BookMaker {
public:
    BookMaker(Drafts& drafts, KnownJournal& journal, const BookSettings& settings, BookNotes& notes)
        : drafts_(drafts), lists_(drafts.lists()), journal_(journal), settings_(settings), notes_(notes) {}

    Book make() {
        book_.drafts = &drafts_;
        noteAlike();
        pairTransfers(drafts_);
        leaveOut();
        joinTransfers(drafts_);
        sortEntries();
        sortBalances();
        BalanceCheck check(book_.balances);
        lookThroughEntries(check);
        noteOlderThanOpening();
        settleBalances(check);
        takePrices();
        declareAccounts();
        declareCommodities();
        return std::move(book_);
    }

private:
    void note(std::string text) { notes_.push_back({"", std::move(text)}); }
    void noteAlike();
    void leaveOut();
    void noteCorrections();
    void sortEntries();
    void sortBalances();
    void lookThroughEntries(BalanceCheck& check);
    void use(const Posting& posting, const std::string& day);
    void noteOlderThanOpening();
    void settleBalances(BalanceCheck& check);
    void takeOpening(const OpeningBalance& opening);
    void noteObjection(const BookBalance& balance);
    void takePrices();
    void declareAccounts();
    void declareCommodities();

    /// Postings of days before that of an opening balance.
    struct Older {
        std::size_t count = 0;
        Sum sum;
    };

    Drafts& drafts_;
    DraftLists& lists_;
    KnownJournal& journal_;
    const BookSettings& settings_;
    BookNotes& notes_;
    std::set<std::string_view> known_;                  ///< accounts of which a journal has transactions
    std::map<std::string_view, std::string> accounts_;  ///< that are used, with the days from which on
    std::set<std::string_view> commodities_;            ///< that are used
    std::map<std::pair<std::string_view, std::string_view>, Older>
        older_;  ///< by day of the opening and commodity
    Book book_;
};

void BookMaker::noteAlike() {
    if (drafts_.alike() > 0)
        note(std::to_string(drafts_.alike()) +
             " accounts have numbers that other accounts have, too; their names end in digests. An account "
             "map can give them others.");
}

void BookMaker::leaveOut() {
    const std::size_t changed = drafts_.leaveOutKnown(journal_);
    if (changed > 0)
        note(counted(changed, "transaction has", "transactions have") +
             " the identifier and amount of one in the journal, but another day or other texts; left out.");
    for (const DraftEntry& draft : lists_.entries)
        if (draft.isLeftOut) known_.insert(drafts_.nameOf(draft));
    noteCorrections();
}

/// A correction takes the place of another transaction, or deletes it.
void BookMaker::noteCorrections() {
    const auto corrections = std::ranges::count_if(lists_.entries, [this](const DraftEntry& draft) {
        const auto* transaction = draft.isLeftOut ? nullptr : drafts_.bankTransaction(draft);
        return transaction != nullptr && transaction->correctionFITID().has_value();
    });
    if (corrections > 0)
        note(counted(static_cast<std::size_t>(corrections), "transaction corrects", "transactions correct") +
             " an earlier one (correctionFITID in the journal), which stays as it is.");
}

/// By day, then by the name of the account; else as the documents have them.
void BookMaker::sortEntries() {
    const std::vector<std::uint32_t> ranks = drafts_.ranksOfNames();
    book_.entries.reserve(lists_.entries.size());
    for (std::uint32_t i = 0; i < lists_.entries.size(); ++i)
        if (!lists_.entries[i].isLeftOut) book_.entries.push_back(i);
    std::ranges::sort(book_.entries, [&](std::uint32_t a, std::uint32_t b) {
        const DraftEntry& first = lists_.entries[a];
        const DraftEntry& second = lists_.entries[b];
        return std::tuple(first.day, ranks[first.account], a) <
               std::tuple(second.day, ranks[second.account], b);
    });
}

void BookMaker::sortBalances() {
    book_.balances = std::move(lists_.balances);
    std::ranges::stable_sort(book_.balances, [](const BookBalance& a, const BookBalance& b) {
        return std::tie(a.day, a.account, a.commodity) < std::tie(b.day, b.account, b.commodity);
    });
}

/// Takes from the entries what is needed of all of them before the first is written.
void BookMaker::lookThroughEntries(BalanceCheck& check) {
    for (const std::uint32_t number : book_.entries) {
        const DraftEntry& draft = lists_.entries[number];
        const std::string day = bookDayText(draft.day);
        for (const Posting& posting : drafts_.postingsOf(draft)) {
            use(posting, day);
            check.add(day, posting);
            const std::string_view opening = journal_.openingDay(posting.account);
            if (opening.empty() || day >= opening) continue;
            Older& older = older_[{opening, posting.commodity}];
            ++older.count;
            older.sum.add(posting.quantity);
        }
    }
}

/// Accounts are open early enough for what a later import brings of the time before.
void BookMaker::use(const Posting& posting, const std::string& day) {
    const auto account = accounts_.try_emplace(posting.account, "1970-01-01").first;
    if (day < account->second) account->second = day;
    commodities_.insert(posting.commodity);
    commodities_.insert(posting.costCommodity);
}

/// What an account began with has older transactions in it already.
void BookMaker::noteOlderThanOpening() {
    for (const auto& [key, older] : older_) {
        const auto& [day, commodity] = key;
        note(counted(older.count, "posting is", "postings are") + " of a day before the opening balance of " +
             std::string(day) + " in the journal, which has them in it already: take " +
             (older.sum.value() ? withCurrency(older.sum.value()->toString(), commodity) : "them") +
             " off it, and give it an earlier day.");
    }
}

void BookMaker::settleBalances(BalanceCheck& check) {
    const auto knows = [this](std::string_view account) {
        return !settings_.hasOpenings || known_.contains(account) || journal_.uses(account);
    };
    for (const OpeningBalance& opening : check.settle(knows)) takeOpening(opening);
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
    auto& postings = openings.back().postings;
    postings.push_back({opening.account, opening.amount, opening.commodity});
    use(postings.back(), opening.day);
    postings.back().facts.push_back({kOpeningName, opening.day});
    postings.push_back({drafts_.map().name(BookRole::opening), opening.amount.negated(), opening.commodity});
    use(postings.back(), opening.day);
}

void BookMaker::noteObjection(const BookBalance& balance) {
    notes_.push_back(
        {std::string(balance.file), "The balance of " + balance.day + ", " +
                                        withCurrency(balance.amount.toString(), balance.commodity) +
                                        ", is only a comment: " + balance.objection + "."});
}

void BookMaker::takePrices() {
    auto& prices = lists_.prices;
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
    for (const BookBalance& balance : book_.balances)
        if (balance.objection.empty()) use({balance.account, {}, balance.commodity}, balance.day);
    for (const auto& [name, day] : accounts_)
        if (!journal_.declares(name)) book_.accounts.push_back({name, day});
}

void BookMaker::declareCommodities() {
    for (const BookBalance& balance : book_.balances) commodities_.insert(balance.commodity);
    for (const BookPrice& price : book_.prices) commodities_.insert(price.currency);
    for (BookCommodity& commodity : drafts_.commodities().all()) {
        book_.decimals.emplace(commodity.name, commodity.decimals);
        if (commodity.isCurrency && !commodities_.contains(commodity.name)) continue;
        if (!journal_.declares(commodity.name)) book_.commodities.push_back(std::move(commodity));
    }
}

}  // namespace

Book makeBook(Drafts& drafts, KnownJournal& journal, const BookSettings& settings, BookNotes& notes) {
    return BookMaker(drafts, journal, settings, notes).make();
}

}  // namespace tool
