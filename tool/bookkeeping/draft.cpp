// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/draft.h"

#include <iterator>
#include <unordered_map>
#include <utility>

#include "bookkeeping/account_map.h"

namespace tool {
namespace {

using namespace brackwell;

/// Where the other end of a transfer is.
struct OtherEnd {
    std::string bank;  ///< "" for any
    std::string number;
};

std::string trimmedCopy(OptionalText text) { return std::string(trimWhiteSpace(text.value_or(""))); }

std::optional<OtherEnd> otherEndOf(const DraftEntry& draft) {
    if (draft.transaction == nullptr) return std::nullopt;
    if (const auto bank = draft.transaction->bankAccountTo())
        return OtherEnd{trimmedCopy(bank->bankID()), trimmedCopy(bank->accountID())};
    if (const auto card = draft.transaction->creditCardAccountTo())
        return OtherEnd{"", trimmedCopy(card->accountID())};
    return std::nullopt;
}

/// What two ends have in common, said for the account of this number.
std::string keyOfEnd(const std::string& number, const DraftEntry& draft, const Decimal& amount) {
    return number + '\n' + draft.entry.day + '\n' + draft.entry.postings.front().commodity + '\n' +
           amount.toString();
}

/// Two ends that have the same counter account are no conversion.
bool mayBeTransfer(const DraftEntry& draft) {
    return draft.transaction != nullptr && !draft.entry.postings.back().cost;
}

using Ends = std::unordered_map<std::string, std::vector<std::size_t>>;

/// The only entry that can be the other end.
std::optional<std::size_t> otherEnd(const std::vector<DraftEntry>& drafts,
                                    const std::vector<DraftAccount>& accounts, const Ends& ends,
                                    std::size_t place) {
    const DraftEntry& draft = drafts[place];
    const auto wanted = mayBeTransfer(draft) ? otherEndOf(draft) : std::nullopt;
    if (!wanted || wanted->number.empty()) return std::nullopt;
    const Decimal amount = draft.entry.postings.front().quantity.negated();
    const auto found = ends.find(keyOfEnd(wanted->number, draft, amount));
    if (found == ends.end() || found->second.size() != 1) return std::nullopt;
    const DraftEntry& other = drafts[found->second.front()];
    const std::string& bank = accounts[other.account].bank;
    const bool isBankOther = !wanted->bank.empty() && !bank.empty() && wanted->bank != bank;
    if (other.account == draft.account || isBankOther || amount.isZero()) return std::nullopt;
    return found->second.front();
}

/// The texts of one end that the other does not have, so that they stay.
void keepTexts(Posting& posting, const BookEntry& from, const BookEntry& kept) {
    if (from.payee != kept.payee && !from.payee.empty()) posting.facts.push_back({"payeeName", from.payee});
    if (from.memo != kept.memo && !from.memo.empty()) posting.facts.push_back({"memo", from.memo});
    if (from.code != kept.code && !from.code.empty())
        posting.facts.push_back({"checkOrReferenceNumber", from.code});
    posting.facts.insert(posting.facts.end(), from.facts.begin(), from.facts.end());
}

bool isUnknown(const std::string& account, const AccountMap& map) {
    return account == map.name(BookRole::unknownIncome) || account == map.name(BookRole::unknownExpense);
}

}  // namespace

void pairTransfers(std::vector<DraftEntry>& drafts, const std::vector<DraftAccount>& accounts) {
    Ends ends;
    for (std::size_t i = 0; i < drafts.size(); ++i) {
        const std::string& number = accounts[drafts[i].account].number;
        if (mayBeTransfer(drafts[i]) && !number.empty())
            ends[keyOfEnd(number, drafts[i], drafts[i].entry.postings.front().quantity)].push_back(i);
    }
    std::vector<std::optional<std::size_t>> claims;
    std::vector<std::size_t> claimed(drafts.size());
    for (std::size_t i = 0; i < drafts.size(); ++i) {
        claims.push_back(otherEnd(drafts, accounts, ends, i));
        if (claims.back()) ++claimed[*claims.back()];
    }
    for (std::size_t i = 0; i < drafts.size(); ++i) {
        if (!claims[i]) continue;
        const std::size_t other = *claims[i];
        const bool isMutual = claims[other] == i;
        const bool isOneWay = !otherEndOf(drafts[other]) && claimed[i] == 0;
        if (claimed[other] != 1 || !(isMutual || isOneWay) || claimed[i] > 1) continue;
        drafts[i].partner = other;
        drafts[other].partner = i;
    }
}

void joinTransfers(std::vector<DraftEntry>& drafts, const AccountMap& map) {
    for (std::size_t i = 0; i < drafts.size(); ++i) {
        DraftEntry& draft = drafts[i];
        if (!draft.partner || draft.isLeftOut) continue;
        DraftEntry& other = drafts[*draft.partner];
        if (other.isLeftOut) {
            Posting& counter = draft.entry.postings.back();
            if (isUnknown(counter.account, map)) counter.account = map.name(BookRole::transfers);
            continue;
        }
        // The end that names the other one tells what it was; of two, the first.
        DraftEntry& kept = otherEndOf(draft) ? draft : other;
        DraftEntry& joined = otherEndOf(draft) ? other : draft;
        Posting posting = std::move(joined.entry.postings.front());
        keepTexts(posting, joined.entry, kept.entry);
        kept.entry.postings.back() = std::move(posting);
        kept.partner.reset();
        joined.isLeftOut = true;
    }
    std::erase_if(drafts, [](const DraftEntry& draft) { return draft.isLeftOut; });
}

std::size_t leaveOutKnown(std::vector<DraftEntry>& drafts, KnownJournal& journal) {
    // Those that are wholly the same come first, so that no other takes their places.
    for (DraftEntry& draft : drafts)
        draft.isLeftOut = journal.takeDigest(draft.entry.postings.front().identity);
    std::size_t changed = 0;
    for (DraftEntry& draft : drafts) {
        if (draft.isLeftOut || !journal.takeIdentifier(draft.entry.postings.front().identity)) continue;
        draft.isLeftOut = true;
        ++changed;
    }
    return changed;
}

}  // namespace tool
