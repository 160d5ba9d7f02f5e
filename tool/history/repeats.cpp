// SPDX-License-Identifier: Apache-2.0
#include "history/repeats.h"

#include "history/room.h"
#include "money/foreign_amount.h"

namespace tool {

void Repeats::beginStatement(std::size_t transactions) {
    ++statement_;
    makeRoom(originals_, transactions);
    // An account with one statement only needs no index.
    if (statement_ == 1) return;
    for (; entered_ < originals_.size(); ++entered_) enter(static_cast<std::uint32_t>(entered_));
}

std::uint32_t Repeats::add(const Transaction& transaction, std::uint32_t number) {
    if (Original* original = findEqual(transaction)) {
        original->matchedIn = statement_;
        return original->number;
    }
    originals_.push_back({&transaction, number, 0});
    return number;
}

void Repeats::enter(std::uint32_t place) {
    const Transaction& transaction = *originals_[place].transaction;
    const auto identifier = transaction.fiTransactionID();
    if (identifier) withIdentifier_[{transaction.amount(), *identifier}].places.push_back(place);
    DateIndex& dated = identifier ? datedWithIdentifier_ : datedWithoutIdentifier_;
    dated[{transaction.amount(), transaction.datePosted()}].places.push_back(place);
}

Repeats::Original* Repeats::findEqual(const Transaction& transaction) {
    const auto identifier = transaction.fiTransactionID();
    if (identifier)
        if (Original* original = findEqualIn(withIdentifier_, transaction, *identifier)) return original;
    Original* original = findEqualIn(datedWithoutIdentifier_, transaction, transaction.datePosted());
    if (original == nullptr && !identifier)
        original = findEqualIn(datedWithIdentifier_, transaction, transaction.datePosted());
    return original;
}

template <class Second>
Repeats::Original* Repeats::findEqualIn(Index<Second>& index, const Transaction& transaction, Second second) {
    const auto found = index.find({transaction.amount(), second});
    return found == index.end() ? nullptr : findEqualIn(found->second, transaction);
}

Repeats::Original* Repeats::findEqualIn(Bucket& bucket, const Transaction& transaction) {
    if (std::exchange(bucket.statement, statement_) != statement_) bucket.matched = 0;
    std::size_t compared = 0;
    for (std::size_t i = bucket.matched; i < bucket.places.size() && compared < kMostCompared; ++i) {
        Original& original = originals_[bucket.places[i]];
        const bool isMatched = original.matchedIn == statement_;
        if (!isMatched) ++compared;
        const bool isFound = !isMatched && areSame(transaction, *original.transaction);
        if (!isMatched && !isFound) continue;
        // Never looked at again in this statement; what was in this place has been compared above.
        std::swap(bucket.places[i], bucket.places[bucket.matched++]);
        if (isFound) return &original;
    }
    return nullptr;
}

bool Repeats::areSame(const Transaction& a, const Transaction& b) const {
    return a.isEqualOFXStatementTransaction(&b) &&
           foreignSymbol(currencyOf(a), currency_) == foreignSymbol(currencyOf(b), currency_);
}

}  // namespace tool
