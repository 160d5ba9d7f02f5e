// SPDX-License-Identifier: Apache-2.0
#include <set>

#include "investments/facts.h"
#include "options.h"
#include "text/value_text.h"
#include "text/visible_text.h"
#include "view/page.h"
#include "view/sections.h"
#include "view/table.h"

namespace tool {
namespace {

using namespace brackwell;

/// The securities that are named somewhere: identifier and type, "" where no type is given.
class Named {
public:
    explicit Named(const OpenedDocument& document) {
        for (const InvestmentStatement& statement : document.investmentStatements()) {
            for (const Position& position : statement.positions()) add(position);
            for (const InvestmentTransaction& transaction : statement.transactions()) add(transaction);
        }
    }

    /// As SecurityList looks them up: where one of the two names no type, the identifier decides.
    bool has(const Security& security) const {
        const std::string_view id = security.id().value_or("");
        const std::string_view type = security.idType().value_or("");
        const auto first = names_.lower_bound({id, ""});
        if (first == names_.end() || first->first != id) return false;
        return type.empty() || first->second.empty() || names_.contains({id, type});
    }

private:
    template <class Object>
    void add(const Object& object) {
        if (const OptionalText id = object.securityID())
            names_.emplace(*id, object.securityIDType().value_or(""));
    }

    std::set<std::pair<std::string_view, std::string_view>> names_;  ///< texts of the document
};

Table::Row rowOf(const Security& security) {
    const auto currency = security.currency();
    return {
        visibleText(nameOf(security, security.id())),
        visibleText(security.ticker().value_or("")),
        shownUnits(security.unitPrice()),
        currency ? visibleText(currency->symbol) : std::string(),
        security.priceDate() ? std::string(DateText(*security.priceDate()).day()) : std::string(),
    };
}

}  // namespace

void showOtherSecurities(Page& page, const OpenedDocument& document, const Options& options) {
    const Named named(document);
    std::vector<Security> others = options.filter.chosenOf(document.securities());
    std::erase_if(others, [&named](const Security& security) { return named.has(security); });
    if (others.empty()) return;
    page.heading("Securities that no holding or transaction names");
    Table table({{"Security", Column::Kind::text, 8, 8},
                 {"Ticker", Column::Kind::text, 5, 5},
                 {"Price", Column::Kind::amount, 0, 9},
                 {"", Column::Kind::text, 3, 4},  // the price's currency
                 {"As of", Column::Kind::text, 10, 6}});
    for (const Security& security : others) table.measure(rowOf(security));
    table.fit(page.width());
    table.writeTitles(page);
    for (const Security& security : others) {
        if (!page.isGood()) return;
        table.writeRow(page, rowOf(security));
    }
}

}  // namespace tool
