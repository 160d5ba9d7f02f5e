// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/transfers.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bookkeeping/digest.h"

namespace tool {
namespace {

using namespace brackwell;

constexpr std::uint32_t kNone = DraftEntry::kNoPartner;

/// The account that a transaction names as the other one.
struct OtherAccount {
    std::string bank;  ///< "" for any
    std::string number;
};

std::string trimmedCopy(OptionalText text) { return std::string(trimWhiteSpace(text.value_or(""))); }

std::optional<OtherAccount> namedAccount(const Drafts& drafts, const DraftEntry& draft) {
    const TvOFXStatementTransaction* transaction = drafts.bankTransaction(draft);
    if (transaction == nullptr) return std::nullopt;
    if (const auto bank = transaction->bankAccountTo())
        return OtherAccount{trimmedCopy(bank->bankID()), trimmedCopy(bank->accountID())};
    if (const auto card = transaction->creditCardAccountTo())
        return OtherAccount{"", trimmedCopy(card->accountID())};
    return std::nullopt;
}

/// What the two ends of a transfer must have in common, as it is in one of the two accounts.
struct TransferEnd {
    std::string_view number;  ///< of that account
    BookDay day;
    std::string_view commodity;
    Decimal amount;
    std::uint32_t draft = kNone;  ///< that says it

    bool operator<(const TransferEnd& other) const {
        if (number != other.number) return number < other.number;
        if (day != other.day) return day < other.day;
        if (commodity != other.commodity) return commodity < other.commodity;
        return amount < other.amount;
    }
    std::uint64_t digest() const {
        return Digest().add(number).add(bookDayText(day)).add(commodity).add(amount.toString()).value();
    }
};

/// Finds the partners of drafts. What is kept of a draft is kept of those only that might be an end.
class TransferPairs {
public:
    explicit TransferPairs(Drafts& drafts) : drafts_(drafts), entries_(drafts.lists().entries) {}

    void find() {
        noteWanted();
        if (wanted_.empty()) return;
        noteEnds();
        claims_.reserve(entries_.size());
        claimed_.resize(entries_.size());
        for (const DraftEntry& draft : entries_) {
            claims_.push_back(otherEnd(draft));
            if (claims_.back() != kNone) ++claimed_[claims_.back()];
        }
        for (std::uint32_t i = 0; i < entries_.size(); ++i) pair(i);
    }

private:
    /// The end that a draft is; nothing for one that cannot be any. Two ends that have the same counter
    /// account are no conversion.
    std::optional<TransferEnd> endOf(const DraftEntry& draft) const {
        if (drafts_.bankTransaction(draft) == nullptr) return std::nullopt;
        const std::vector<Posting> postings = drafts_.postingsOf(draft);
        if (postings.back().cost) return std::nullopt;
        const Posting& own = postings.front();
        return TransferEnd{drafts_.transferAccountOf(draft).number, draft.day, own.commodity, own.quantity};
    }
    /// The end that there must be in an account of this number.
    std::optional<TransferEnd> oppositeEnd(const DraftEntry& draft, std::string_view number) const {
        auto end = number.empty() ? std::nullopt : endOf(draft);
        if (end) *end = {number, end->day, end->commodity, end->amount.negated()};
        return end;
    }
    void noteWanted();
    void noteEnds();
    std::uint32_t otherEnd(const DraftEntry& draft) const;
    void pair(std::uint32_t place);

    Drafts& drafts_;
    std::vector<DraftEntry>& entries_;
    std::vector<std::uint64_t> wanted_;   ///< digests of ends that drafts name; sorted
    std::vector<TransferEnd> ends_;       ///< that have one of these; sorted
    std::vector<std::uint32_t> claims_;   ///< for each draft the only one that can be its other end, or kNone
    std::vector<std::uint32_t> claimed_;  ///< how many claim it
};

void TransferPairs::noteWanted() {
    for (const DraftEntry& draft : entries_)
        if (const auto named = namedAccount(drafts_, draft))
            if (const auto end = oppositeEnd(draft, named->number)) wanted_.push_back(end->digest());
    std::ranges::sort(wanted_);
}

void TransferPairs::noteEnds() {
    for (std::uint32_t i = 0; i < entries_.size(); ++i) {
        auto end = endOf(entries_[i]);
        if (!end || end->number.empty() || !std::ranges::binary_search(wanted_, end->digest())) continue;
        end->draft = i;
        ends_.push_back(*end);
    }
    std::stable_sort(ends_.begin(), ends_.end());
}

std::uint32_t TransferPairs::otherEnd(const DraftEntry& draft) const {
    const auto named = namedAccount(drafts_, draft);
    const auto wanted = named ? oppositeEnd(draft, named->number) : std::nullopt;
    if (!wanted || wanted->amount.isZero()) return kNone;
    const auto [first, last] = std::equal_range(ends_.begin(), ends_.end(), *wanted);
    if (last - first != 1) return kNone;
    const DraftEntry& other = entries_[first->draft];
    const std::string_view bank = drafts_.transferAccountOf(other).bank;
    const bool isBankOther = !named->bank.empty() && !bank.empty() && named->bank != bank;
    return other.account == draft.account || isBankOther ? kNone : first->draft;
}

/// Makes partners of a draft and the one that it claims, if that claims it, too, or names no account.
void TransferPairs::pair(std::uint32_t place) {
    const std::uint32_t other = claims_[place];
    if (other == kNone) return;
    const bool isMutual = claims_[other] == place;
    const bool isOneWay = !namedAccount(drafts_, entries_[other]) && claimed_[place] == 0;
    if (claimed_[other] != 1 || !(isMutual || isOneWay) || claimed_[place] > 1) return;
    entries_[place].partner = other;
    entries_[other].partner = place;
}

bool isUnknown(CounterAccount account, const AccountMap& map) {
    const std::string& name = map.name(account);
    return name == map.name(BookRole::unknownIncome) || name == map.name(BookRole::unknownExpense);
}

}  // namespace

void pairTransfers(Drafts& drafts) { TransferPairs(drafts).find(); }

void joinTransfers(Drafts& drafts) {
    auto& entries = drafts.lists().entries;
    for (DraftEntry& draft : entries) {
        if (draft.partner == kNone || draft.isLeftOut || draft.isJoined) continue;
        DraftEntry& other = entries[draft.partner];
        if (other.isLeftOut) {
            if (isUnknown(draft.counter, drafts.map())) draft.counter = counterAccount(BookRole::transfers);
            continue;
        }
        // The end that names the other one tells what it was; of two, the first.
        const bool isKept = namedAccount(drafts, draft).has_value();
        (isKept ? draft : other).isJoined = true;
        (isKept ? other : draft).isLeftOut = true;
    }
}

}  // namespace tool
