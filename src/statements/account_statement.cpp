// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>

#include "fields/description.h"
#include "fields/element_table.h"
#include "memory/large_pages.h"
#include "memory/rollback.h"

namespace brackwell {
namespace {

std::string textOf(const std::optional<Decimal>& amount) {
    return amount ? amount->toString() : std::string(kAbsent);
}

}  // namespace

struct BRACKWELL_INTERNAL TvOFXAccountStatement::Elements {
    using Self = TvOFXAccountStatement;

    static void transactions(Self& self, const NodeRef& value) { self.readTransactions(value); }

    static constexpr auto kTransactionList = elementTable<Self>({
        {element("DTSTART"), date<&Self::transactionStartDateTime_>},
        {element("DTEND"), date<&Self::transactionEndDateTime_>},
        {element("STMTTRN"), transactions},
    });
    static constexpr auto kLedgerBalance = elementTable<Self>({
        {element("BALAMT"), amount<&Self::ledgerBalanceAmount_>},
        {element("DTASOF"), date<&Self::ledgerBalanceDateTime_>},
    });
    static constexpr auto kAvailableBalance = elementTable<Self>({
        {element("BALAMT"), amount<&Self::availableBalanceAmount_>},
        {element("DTASOF"), date<&Self::availableBalanceDateTime_>},
    });
    static constexpr auto kTable = elementTable<Self>({
        {element("CURDEF"), text<&Self::texts_, defaultCurrency_>},
        {element("BANKTRANLIST"), inner<kTransactionList>},
        {element("LEDGERBAL"), inner<kLedgerBalance>},
        {element("AVAILBAL"), inner<kAvailableBalance>},
    });
};

void TvOFXAccountStatement::parseDictionary(const std::optional<ParseDictionary>& node) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a formatter may replace it
    const std::optional<ParseDictionary> held = node;
    if (held) {
        const NodeRef statement = NodeRef::of(*held);
        // Memory may run out at any of the fields; then the statement is as it was before.
        Rollback before(texts_, transactionStartDateTime_, transactionEndDateTime_, statementTransactions_,
                        ledgerBalanceAmount_, ledgerBalanceDateTime_, availableBalanceAmount_,
                        availableBalanceDateTime_);
        Elements::kTable.read(*this, statement);
        const NodeRef account = statement[accountElement()];
        if (account.isDictionary()) readAccount(account.dictionary());
        before.keep();
    }
    TvOFXAggregate::parseDictionary(held);
}

void TvOFXAccountStatement::readTransactions(const NodeRef& list) {
    std::size_t count = 0;
    for (const NodeRef& element : list.elements())
        if (element.isDictionary()) ++count;
    if (count == 0) return;
    // One block for all of them, to which every pointer refers: an allocation for each transaction would take
    // more time than reading it.
    const auto block = makeSharedArray<TvOFXStatementTransaction>(count);
    statementTransactions_.reserve(statementTransactions_.size() + count);
    TvOFXStatementTransaction* transaction = block.get();
    for (const NodeRef& element : list.elements()) {
        if (!element.isDictionary()) continue;
        transaction->setHelperObject(helperObject());  // first: reading converts dates and amounts with it
        transaction->read(element);
        statementTransactions_.emplace_back(block, transaction++);
    }
}

std::string TvOFXAccountStatement::description() const {
    return std::string(className()) + ": [\nLedgerBalance: " + textOf(ledgerBalanceAmount_) +
           "\nAvailableBalance: " + textOf(availableBalanceAmount_) +
           "\nTransactions: " + std::to_string(statementTransactions_.size()) + "\n]";
}

}  // namespace brackwell
