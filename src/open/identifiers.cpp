// SPDX-License-Identifier: Apache-2.0
#include "open/identifiers.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "memory/unpredictable_hash.h"
#include "open/shown_text.h"
#include "tree/node_ref.h"

namespace brackwell::opening {
namespace {

using BankTransactions = std::vector<std::shared_ptr<TvOFXStatementTransaction>>;

/// Two transactions with one identifier are the same when everything that people compare is the same. A
/// download may well list one twice.
bool areSame(const TvOFXStatementTransaction& a, const TvOFXStatementTransaction& b) {
    return a.amount() == b.amount() && a.originalDatePostedString() == b.originalDatePostedString() &&
           a.payeeName() == b.payeeName() && a.memo() == b.memo();
}

/// Finds for each transaction the first one with its identifier. The hash has a random key, since a document
/// could otherwise be made in which all identifiers share a slot.
class FirstByIdentifier {
public:
    explicit FirstByIdentifier(const BankTransactions& transactions)
        : transactions_(transactions), slots_(std::bit_ceil(transactions.size() * 2 + 1)) {}

    const TvOFXStatementTransaction& firstWith(std::string_view id, std::size_t number) {
        const std::size_t mask = slots_.size() - 1;
        for (std::size_t at = hash_(id) & mask;; at = (at + 1) & mask) {
            if (slots_[at] == 0) slots_[at] = static_cast<std::uint32_t>(number + 1);
            const TvOFXStatementTransaction& first = *transactions_[slots_[at] - 1];
            if (first.fiTransactionID() == id) return first;
        }
    }

private:
    const BankTransactions& transactions_;
    UnpredictableHash hash_;
    std::vector<std::uint32_t> slots_;  ///< open addressing; number + 1, 0 is free
};

/// The transactions of a statement with the identifier of an earlier, different one.
struct RepeatedIdentifiers {
    std::size_t count = 0;
    const TvOFXStatementTransaction* first = nullptr;

    void search(const BankTransactions& transactions) {
        FirstByIdentifier table(transactions);
        for (std::size_t number = 0; number < transactions.size(); ++number) {
            const TvOFXStatementTransaction& transaction = *transactions[number];
            const OptionalText id = transaction.fiTransactionID();
            if (!id || areSame(table.firstWith(*id, number), transaction)) continue;
            if (count++ == 0) first = &transaction;
        }
    }
};

}  // namespace

void findRepeatedIdentifiers(FindingList& findings, const KnownResponses& responses,
                             const TreePlaces& places) {
    for (const auto& statement : responses.statements) {
        RepeatedIdentifiers repeated;
        repeated.search(statement->statementTransactions());
        if (repeated.count == 0) continue;
        const bool isOne = repeated.count == 1;
        findings.add(FindingKind::repeatedIdentifier, FindingSeverity::note,
                     counted(repeated.count, "transaction has", "transactions have") +
                         " the same identifier (FITID) as an earlier, different one of the same statement" +
                         (isOne ? ": " : "; the first is ") + quoted(*repeated.first->fiTransactionID()) +
                         ".",
                     repeated.count,
                     places.offsetOf(reading::NodeRef::of(*repeated.first->originalParseData()).index()));
    }
}

}  // namespace brackwell::opening
