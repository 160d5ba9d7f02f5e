// SPDX-License-Identifier: Apache-2.0
#include "open/investment_identifiers.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "memory/unpredictable_hash.h"
#include "open/shown_text.h"
#include "tree/node_ref.h"

namespace brackwell::opening {
namespace {

using InvestmentTransactions = InvestmentList<InvestmentTransaction>;

/// The same when all that people compare is.
bool areSame(const InvestmentTransaction& a, const InvestmentTransaction& b) {
    const auto first = a.bankTransaction();
    const auto second = b.bankTransaction();
    const bool haveSameBank =
        first && second ? first->amount() == second->amount() &&
                              first->originalDatePostedString() == second->originalDatePostedString()
                        : !first && !second;
    return haveSameBank && a.kind() == b.kind() && a.tradeDate() == b.tradeDate() &&
           a.securityID() == b.securityID() && a.units() == b.units() && a.total() == b.total();
}

/// The transactions whose identifier an earlier, different one has.
struct RepeatedInvestmentIdentifiers {
    std::size_t count = 0;
    std::size_t first = 0;  ///< its number

    void search(const InvestmentTransactions& transactions) {
        std::unordered_map<std::string_view, std::size_t, UnpredictableHash> known;
        for (std::size_t number = 0; number < transactions.size(); ++number) {
            const InvestmentTransaction transaction = transactions[number];
            const OptionalText id = transaction.fiTransactionID();
            if (!id) continue;
            const auto [entry, isNew] = known.try_emplace(*id, number);
            if (isNew || areSame(transactions[entry->second], transaction)) continue;
            if (count++ == 0) first = number;
        }
    }
};

}  // namespace

void findRepeatedInvestmentIdentifiers(FindingList& findings,
                                       const std::vector<InvestmentStatement>& statements,
                                       const TreePlaces& places) {
    for (const InvestmentStatement& statement : statements) {
        const InvestmentTransactions transactions = statement.transactions();
        RepeatedInvestmentIdentifiers repeated;
        repeated.search(transactions);
        if (repeated.count == 0) continue;
        const InvestmentTransaction first = transactions[repeated.first];
        const ParseDictionary node = first.originalParseData();
        findings.add(FindingKind::repeatedIdentifier, FindingSeverity::note,
                     counted(repeated.count, "investment transaction has", "investment transactions have") +
                         " the same identifier (FITID) as an earlier, different one of the same statement" +
                         (repeated.count == 1 ? ": " : "; the first is ") + quoted(*first.fiTransactionID()) +
                         ".",
                     repeated.count, places.offsetOf(reading::NodeRef::of(node).index()));
    }
}

}  // namespace brackwell::opening
