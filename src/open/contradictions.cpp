// SPDX-License-Identifier: Apache-2.0
#include "open/contradictions.h"

#include "open/shown_text.h"
#include "reading/node_ref.h"

namespace brackwell::opening {
namespace {

/// How many things do not add up, and the first of them.
struct Contradictions {
    std::size_t count = 0;
    std::optional<std::size_t> place;
    std::string stated;
    std::string computed;

    void add(const InvestmentRecord& record, std::string_view statedText, const Decimal& made,
             const TreePlaces& places) {
        if (count++ != 0) return;
        const ParseDictionary node = record.originalParseData();
        place = places.offsetOf(reading::NodeRef::of(node).index());
        stated = shownText(statedText);
        computed = made.toString();
    }
};

/// `what` is "position" or the like, `sum` what its parts should make.
void report(FindingList& findings, const Contradictions& found, const std::string& what,
            std::string_view sum) {
    if (found.count == 0) return;
    std::string text = found.count == 1
                           ? "1 " + what + " does not add up: its "
                           : std::to_string(found.count) + " " + what + "s do not add up: of the first the ";
    text.append(sum)
        .append(" is ")
        .append(found.stated)
        .append(", but its parts make ")
        .append(found.computed);
    findings.add(FindingKind::doesNotAddUp, FindingSeverity::note, text.append("."), found.count,
                 found.place);
}

}  // namespace

void findContradictions(FindingList& findings, const std::vector<InvestmentStatement>& statements,
                        const SecurityList& securities, const TreePlaces& places) {
    Contradictions positions;
    Contradictions transactions;
    for (const InvestmentStatement& statement : statements) {
        for (const Position& position : statement.positions()) {
            const std::optional<Security> security = securities.find(position);
            if (const auto made = contradictingMarketValue(position, security ? &*security : nullptr))
                positions.add(position, position.text("marketValue").value_or(""), *made, places);
        }
        for (const InvestmentTransaction& transaction : statement.transactions())
            if (const auto made = contradictingTotal(transaction))
                transactions.add(transaction, transaction.text("total").value_or(""), *made, places);
    }
    report(findings, positions, "position", "market value");
    report(findings, transactions, "investment transaction", "total");
}

}  // namespace brackwell::opening
