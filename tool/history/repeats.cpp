// SPDX-License-Identifier: Apache-2.0
#include "history/repeats.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "history/equal_groups.h"
#include "history/history.h"
#include "money/foreign_amount.h"

namespace tool {
namespace {

using Transaction = brackwell::TvOFXStatementTransaction;

constexpr std::uint32_t kNobody = std::numeric_limits<std::uint32_t>::max();

bool hasIdentifier(const HistoryEntry& entry) { return entry.transaction->fiTransactionID().has_value(); }

/// Originals of earlier statements that have something in common. Those that were matched in the present
/// statement go in front.
struct Bucket {
    std::uint32_t begin;  ///< the first member's place among those of all buckets
    std::uint32_t count = 0;
    std::uint32_t matched = 0;
    std::uint32_t statement = kNobody;
};

/// The transactions that have amount and identifier in common, or amount and date. One that has them in
/// common with no other, as most have, takes four bytes.
class RepeatIndex {
public:
    bool isEmpty() const noexcept { return buckets_.empty(); }

    /// Takes the numbers of entries that have them in common.
    void addGroup(const std::vector<HistoryEntry>& entries, std::span<const HashedNumber> group) {
        const auto place = static_cast<std::uint32_t>(buckets_.size());
        const auto identified = static_cast<std::size_t>(std::ranges::count_if(
            group, [&entries](const HashedNumber& each) { return hasIdentifier(entries[each.number]); }));
        if (places_.empty()) places_.resize(entries.size(), kNobody);
        for (const HashedNumber& each : group) places_[each.number] = place;
        for (const std::size_t count : {group.size() - identified, identified}) {
            buckets_.push_back({static_cast<std::uint32_t>(members_.size())});
            members_.resize(members_.size() + count);
        }
    }

    void enter(std::uint32_t number, bool isIdentified) {
        if (Bucket* bucket = bucketOf(number, isIdentified))
            members_[bucket->begin + bucket->count++] = number;
    }
    /// Those with or without an identifier that have the same as one entry; null when there is no other.
    Bucket* bucketOf(std::uint32_t number, bool isIdentified) {
        if (places_.empty() || places_[number] == kNobody) return nullptr;
        return &buckets_[places_[number] + (isIdentified ? 1 : 0)];
    }
    std::uint32_t& member(const Bucket& bucket, std::uint32_t place) {
        return members_[bucket.begin + place];
    }

private:
    std::vector<std::uint32_t> places_;  ///< by entry the first of its two buckets, or kNobody
    std::vector<Bucket> buckets_;        ///< of each group without and with an identifier
    std::vector<std::uint32_t> members_;
};

/// The entries of an account by amount and identifier.
RepeatIndex indexByIdentifier(const std::vector<HistoryEntry>& entries) {
    RepeatIndex index;
    forEachGroup(
        entries.size(),
        [&entries](std::uint32_t number) -> std::optional<std::uint64_t> {
            const auto identifier = entries[number].transaction->fiTransactionID();
            if (!identifier) return std::nullopt;
            return std::hash<std::string_view>()(*identifier);
        },
        [&entries](std::uint32_t number) {
            const Transaction& transaction = *entries[number].transaction;
            return std::pair(transaction.amount(), transaction.fiTransactionID());
        },
        [&](std::span<const HashedNumber> group) { index.addGroup(entries, group); });
    return index;
}

/// The same by amount and date, where one without an identifier may be looked for.
RepeatIndex indexByDate(const std::vector<HistoryEntry>& entries) {
    RepeatIndex index;
    if (std::ranges::all_of(entries, hasIdentifier)) return index;
    forEachGroup(
        entries.size(),
        [&entries](std::uint32_t number) -> std::optional<std::uint64_t> {
            const auto date = entries[number].transaction->datePosted();
            return date ? static_cast<std::uint64_t>(date->time_since_epoch().count()) : 0;
        },
        [&entries](std::uint32_t number) {
            const Transaction& transaction = *entries[number].transaction;
            return std::pair(transaction.amount(), transaction.datePosted());
        },
        [&](std::span<const HashedNumber> group) {
            const bool allIdentified = std::ranges::all_of(
                group, [&](const HashedNumber& each) { return hasIdentifier(entries[each.number]); });
            if (!allIdentified) index.addGroup(entries, group);
        });
    return index;
}

/// Finds the repeats of one account.
class RepeatFinder {
public:
    explicit RepeatFinder(AccountHistory& account)
        : account_(account),
          entries_(account.entries),
          byIdentifier_(indexByIdentifier(entries_)),
          byDate_(indexByDate(entries_)) {}

    /// Goes from statement to statement, since only what stands in earlier ones counts.
    void find() {
        if (byIdentifier_.isEmpty() && byDate_.isEmpty()) return;
        matchedIn_.resize(entries_.size(), kNobody);
        const auto count = static_cast<std::uint32_t>(entries_.size());
        for (std::uint32_t begin = 0, end = 0; begin < count; begin = end) {
            const std::uint32_t statement = entries_[begin].statement;
            for (; end < count && entries_[end].statement == statement; ++end) note(end);
            for (std::uint32_t i = begin; i < end; ++i)
                if (entries_[i].isOriginal()) enter(i);
        }
    }

private:
    void note(std::uint32_t number) {
        const std::uint32_t original = originalOf(number);
        if (original == kNobody) return;
        entries_[number].original = original;
        matchedIn_[original] = entries_[number].statement;
        ++account_.repeats;
    }
    void enter(std::uint32_t number) {
        const bool isIdentified = hasIdentifier(entries_[number]);
        if (isIdentified) byIdentifier_.enter(number, true);
        byDate_.enter(number, isIdentified);
    }
    std::uint32_t originalOf(std::uint32_t number);
    std::uint32_t originalIn(RepeatIndex& index, std::uint32_t number, bool isIdentified);
    bool areSame(std::uint32_t a, std::uint32_t b) const;

    AccountHistory& account_;
    std::vector<HistoryEntry>& entries_;
    RepeatIndex byIdentifier_;
    RepeatIndex byDate_;
    std::vector<std::uint32_t> matchedIn_;  ///< the statement that had an original's last match
};

std::uint32_t RepeatFinder::originalOf(std::uint32_t number) {
    const bool isIdentified = hasIdentifier(entries_[number]);
    std::uint32_t original = isIdentified ? originalIn(byIdentifier_, number, true) : kNobody;
    if (original == kNobody) original = originalIn(byDate_, number, false);
    if (original == kNobody && !isIdentified) original = originalIn(byDate_, number, true);
    return original;
}

std::uint32_t RepeatFinder::originalIn(RepeatIndex& index, std::uint32_t number, bool isIdentified) {
    Bucket* const bucket = index.bucketOf(number, isIdentified);
    if (bucket == nullptr) return kNobody;
    const std::uint32_t statement = entries_[number].statement;
    if (std::exchange(bucket->statement, statement) != statement) bucket->matched = 0;
    std::size_t compared = 0;
    for (std::uint32_t i = bucket->matched; i < bucket->count && compared < kMostCompared; ++i) {
        const std::uint32_t original = index.member(*bucket, i);
        const bool isMatched = matchedIn_[original] == statement;
        if (!isMatched) ++compared;
        const bool isFound = !isMatched && areSame(number, original);
        if (!isMatched && !isFound) continue;
        // Never looked at again in this statement; what was in this place has been compared above.
        std::swap(index.member(*bucket, i), index.member(*bucket, bucket->matched++));
        if (isFound) return original;
    }
    return kNobody;
}

bool RepeatFinder::areSame(std::uint32_t a, std::uint32_t b) const {
    const Transaction& first = *entries_[a].transaction;
    const Transaction& second = *entries_[b].transaction;
    return first.isEqualOFXStatementTransaction(&second) &&
           foreignSymbol(currencyOf(first), account_.currency) ==
               foreignSymbol(currencyOf(second), account_.currency);
}

}  // namespace

void noteRepeats(AccountHistory& account) {
    if (account.statements.size() > 1) RepeatFinder(account).find();
}

}  // namespace tool
