// SPDX-License-Identifier: Apache-2.0
#include "text_page/security_section.h"

#include <string>
#include <vector>

#include "command_line/options.h"
#include "investments/facts.h"
#include "investments/named_securities.h"
#include "text/shown_values.h"
#include "text/value_text.h"
#include "text/visible_text.h"
#include "text_page/table.h"
#include "text_page/text_page.h"

namespace tool {
namespace {

using namespace brackwell;

Table::Row rowOf(const Security& security) {
    const auto currency = security.currency();
    return {
        visibleText(nameOf(security, security.id())),
        visibleText(security.ticker().value_or("")),
        shownUnits(security.unitPrice()),
        currency ? visibleText(currency->symbol) : std::string(),
        dayText(security.priceDate()),
    };
}

}  // namespace

void showOtherSecurities(TextPage& page, const OpenedDocument& document, const Options& options) {
    NamedSecurities named;
    for (const InvestmentStatement& statement : document.investmentStatements()) named.add(statement);
    std::vector<Security> others = options.filter.securitiesOf(document);
    std::erase_if(others, [&named](const Security& security) { return named.has(security); });
    if (others.empty()) return;
    page.heading("Securities that no holding or transaction uses");
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
