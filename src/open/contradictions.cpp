// SPDX-License-Identifier: Apache-2.0
#include "open/contradictions.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "tree/node_ref.h"

namespace brackwell::opening {
namespace {

/// True when nothing can be said without the security: it says how many shares an option is for.
bool needsSecurity(const Position& position) noexcept { return position.kind() == PositionKind::option; }
bool needsSecurity(const InvestmentTransaction&) noexcept { return false; }

/// How many things do not add up, and the first of them.
struct Contradictions {
    std::size_t count = 0;
    std::optional<std::size_t> place;
    std::string stated;
    std::string computed;

    void add(const InvestmentRecord& record, const Decimal& value, const Decimal& made,
             const TreePlaces& places) {
        if (count++ != 0) return;
        const ParseDictionary node = record.originalParseData();
        place = places.offsetOf(reading::NodeRef::of(node).index());
        stated = value.toString();
        computed = made.toString();
    }
};

/// What the parts of an object make, when that is another value than its own. The security is looked up only
/// where it can make a difference.
template <class Object>
std::optional<Decimal> contradiction(std::optional<Decimal> (*contradicting)(const Object&, const Security*),
                                     const Object& object, const SecurityList& securities) {
    const auto made = contradicting(object, nullptr);
    if (!made && !needsSecurity(object)) return std::nullopt;
    const std::optional<Security> security = securities.find(object);
    return security ? contradicting(object, &*security) : made;
}

/// `what` is "position" or the like, `sum` what its parts should make.
void report(FindingList& findings, const Contradictions& found, const std::string& what,
            std::string_view sum) {
    if (found.count == 0) return;
    std::string text = found.count == 1
                           ? "1 " + what + " does not add up: its "
                           : std::to_string(found.count) + " " + what + "s do not add up: the first one's ";
    text.append(sum)
        .append(" is ")
        .append(found.stated)
        .append(", but its parts add up to ")
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
        for (const Position& position : statement.positions())
            if (const auto made = contradiction(contradictingMarketValue, position, securities))
                positions.add(position, *position.marketValue(), *made, places);
        for (const InvestmentTransaction& transaction : statement.transactions())
            if (const auto made = contradiction(contradictingTotal, transaction, securities))
                transactions.add(transaction, *transaction.total(), *made, places);
    }
    report(findings, positions, "position", "market value");
    report(findings, transactions, "investment transaction", "total");
}

}  // namespace brackwell::opening
