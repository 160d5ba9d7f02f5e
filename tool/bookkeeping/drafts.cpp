// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/drafts.h"

#include <algorithm>
#include <string>
#include <utility>

#include "bookkeeping/bank_drafts.h"
#include "bookkeeping/investment_drafts.h"

namespace tool {
namespace {

using namespace brackwell;

std::string_view trimmedView(OptionalText text) { return trimWhiteSpace(text.value_or("")); }

/// The texts of one end of a transfer that the other does not have, so that they stay.
void keepTexts(Posting& posting, const BookEntry& from, const BookEntry& kept) {
    if (from.payee != kept.payee && !from.payee.empty()) posting.facts.push_back({"payeeName", from.payee});
    if (from.memo != kept.memo && !from.memo.empty()) posting.facts.push_back({"memo", from.memo});
    if (from.code != kept.code && !from.code.empty())
        posting.facts.push_back({"checkOrReferenceNumber", from.code});
    posting.facts.insert(posting.facts.end(), from.facts.begin(), from.facts.end());
}

}  // namespace

Drafts::Drafts(const History& history, const AccountMap& map)
    : map_(map),
      commodities_(map),
      names_(bookedNames(history, map)),
      securities_(history.investments().securities()) {
    const auto& investments = history.investments();
    std::size_t transactions = 0;
    for (const AccountHistory& account : history.accounts()) transactions += account.entries.size();
    for (const InvestmentAccount& account : investments.accounts()) transactions += account.entries.size();
    lists_.entries.reserve(transactions);
    // Currencies come before securities that have one for a ticker.
    for (const AccountHistory& account : history.accounts()) commodities_.currency(account.currency);
    for (const InvestmentAccount& account : investments.accounts()) commodities_.currency(account.currency);
    for (std::size_t i = 0; i < names_.banks.size(); ++i) addBank(history.accounts()[i], names_.banks[i]);
    for (std::size_t i = 0; i < names_.investments.size(); ++i)
        addInvestments(investments.accounts()[i], names_.investments[i]);
    for (const Security& security : investments.otherSecurities())
        commodities_.security(security.id(), security.idType(), security);
}

void Drafts::addBank(const AccountHistory& account, std::string_view name) {
    const auto place = static_cast<std::uint32_t>(accounts_.size());
    const auto source = std::make_shared<BankDrafts>(account, name, place, BookContext{map_, commodities_});
    const std::string_view bank =
        account.bankAccount ? trimmedView(account.bankAccount->bankID()) : std::string_view();
    accounts_.push_back({name, source, {bank, trimmedView(account.number())}});
    source->addTo(lists_);
}

void Drafts::addInvestments(const InvestmentAccount& account, const InvestmentNames& names) {
    const auto place = static_cast<std::uint32_t>(accounts_.size());
    const auto source = std::make_shared<InvestmentDrafts>(account, names, place, securities_,
                                                           BookContext{map_, commodities_});
    accounts_.push_back({names.securities, source});
    accounts_.push_back({names.cash, source});
    source->addTo(lists_);
}

std::size_t Drafts::leaveOutKnown(KnownJournal& journal) {
    if (!journal.hasIdentities()) return 0;
    const auto identityOf = [this](const DraftEntry& draft) {
        return sourceOf(draft).identityOf(draft.transaction);
    };
    // Those that are wholly the same come first, so that no other takes their places.
    for (DraftEntry& draft : lists_.entries) draft.isLeftOut = journal.takeDigest(identityOf(draft));
    std::size_t changed = 0;
    for (DraftEntry& draft : lists_.entries) {
        if (draft.isLeftOut || !journal.takeIdentifier(identityOf(draft))) continue;
        draft.isLeftOut = true;
        ++changed;
    }
    std::erase_if(lists_.remarks,
                  [&](const DraftRemark& remark) { return journal.takeDigest(remarkOf(remark).identity); });
    std::erase_if(lists_.balances,
                  [&](const BookBalance& balance) { return journal.takeDigest(balance.identity); });
    return changed;
}

std::vector<std::uint32_t> Drafts::ranksOfNames() const {
    std::vector<std::string_view> names;
    for (const Account& account : accounts_) names.push_back(account.name);
    std::ranges::sort(names);
    std::vector<std::uint32_t> ranks;
    for (const Account& account : accounts_)
        ranks.push_back(
            static_cast<std::uint32_t>(std::ranges::lower_bound(names, account.name) - names.begin()));
    return ranks;
}

std::vector<Posting> Drafts::postingsOf(const DraftEntry& draft) const {
    std::vector<Posting> postings = sourceOf(draft).postingsOf(draft);
    if (draft.isJoined) {
        const DraftEntry& other = lists_.entries[draft.partner];
        postings.back() = std::move(sourceOf(other).postingsOf(other).front());
    }
    return postings;
}

BookEntry Drafts::entryOf(const DraftEntry& draft) const {
    BookEntry entry = ownEntryOf(draft);
    if (draft.isJoined) {
        BookEntry other = ownEntryOf(lists_.entries[draft.partner]);
        Posting& posting = entry.postings.back();
        posting = std::move(other.postings.front());
        keepTexts(posting, other, entry);
    }
    return entry;
}

/// Without what its partner says.
BookEntry Drafts::ownEntryOf(const DraftEntry& draft) const {
    const AccountDrafts& source = sourceOf(draft);
    BookIdentity identity = source.identityOf(draft.transaction);
    BookEntry entry = source.textsOf(draft.transaction, identity);
    entry.day = bookDayText(draft.day);
    entry.postings = source.postingsOf(draft);
    entry.postings.front().identity = std::move(identity);
    return entry;
}

BookRemark Drafts::remarkOf(const DraftRemark& draft) const {
    return draft.isOfTransaction ? accounts_[draft.account].source->remarkOf(draft.number)
                                 : lists_.sayings[draft.number];
}

}  // namespace tool
