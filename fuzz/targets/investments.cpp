// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include "support/investment_text.h"
#include "target.h"

/// \file
/// The investments of a document, all their getters, and their arithmetic.

namespace brackwell::fuzz {
namespace {

/// How many aggregates of this name there are in a statement, found by walking the tree another way.
std::size_t countIn(const ParseDictionary& root, std::string_view name) {
    std::size_t count = 0;
    std::vector<ParseValue> open{root};
    while (!open.empty()) {
        const ParseValue value = open.back();
        open.pop_back();
        for (const ParseValue& element : value.elements()) open.push_back(element);
        const auto dictionary = value.dictionary();
        if (!dictionary) continue;
        for (const auto& [key, entry] : *dictionary) {
            if (key == name && entry.dictionary()) ++count;
            if (key == name)
                for (const ParseValue& element : entry.elements())
                    if (element.dictionary()) ++count;
            open.push_back(entry);
        }
    }
    return count;
}

void requireSoundFields(const InvestmentRecord& object) {
    for (const InvestmentField& field : object.fields())
        require(object.text(field.name) == field.text, "a field is found by its name");
    if (const OptionalText text = object.originalText())
        require(text->starts_with("<" + std::string(object.elementName())), "the text is the aggregate's");
}

void requireSoundStatement(const InvestmentStatement& statement, const SecurityList& list) {
    requireSoundFields(statement);
    for (const InvestmentTransaction& transaction : statement.transactions()) {
        requireSoundFields(transaction);
        const bool isBank = transaction.kind() == InvestmentTransactionKind::bankTransaction;
        require(isBank || !transaction.bankTransaction(), "only bank transactions have one");
        const auto security = list.find(transaction);
        contradictingTotal(transaction, security ? &*security : nullptr);
    }
    for (const Position& position : statement.positions()) {
        requireSoundFields(position);
        const auto security = list.find(position);
        require(!security || security->id() == position.securityID(), "the security is the position's");
        contradictingMarketValue(position, security ? &*security : nullptr);
    }
}

}  // namespace

void tryBytes(std::string_view bytes) {
    TvOFXParser parser(Data::view(bytes));
    const auto result = parser.parseWithError();
    if (!result || !result->ofxData) return;
    const std::optional<ParseDictionary>& document = result->ofxData;
    const auto statements = investmentStatements(document);
    const SecurityList list(securities(document));
    for (const Security& security : list.all()) requireSoundFields(security);
    for (const InvestmentStatement& statement : statements) requireSoundStatement(statement, list);
    // Documents whose aggregates are in each other without end have getters that overlap.
    constexpr std::size_t most = 4000;
    if (bytes.size() < most)
        require(tests::investmentTextOf(document) == tests::investmentTextOf(document), "two readings agree");
    if (countIn(*document, "BANKTRANLIST") == 0)
        require(statements.size() >= countIn(*document, "INVSTMTRS"), "every statement is delivered");
}

}  // namespace brackwell::fuzz
