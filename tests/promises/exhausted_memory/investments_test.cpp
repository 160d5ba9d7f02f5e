// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include "support/investment_text.h"
#include "survival.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::optional<ParseDictionary> example() {
    return TvOFXParser(exampleData("investments.ofx")).parseWithError()->ofxData;
}

}  // namespace

TEST_CASE("reading investment statements survives exhausted memory at every allocation") {
    Tally tally("investment statements");
    const auto document = example();
    surviveMaking(
        tally, [&] { return investmentStatements(document); },
        [](const std::vector<InvestmentStatement>& statements) {
            std::string text;
            for (const InvestmentStatement& statement : statements) text += textOf(statement);
            return text;
        });
}

TEST_CASE("reading securities survives exhausted memory at every allocation") {
    Tally tally("securities");
    const auto document = example();
    surviveMaking(
        tally, [&] { return SecurityList(securities(document)); },
        [](const SecurityList& list) {
            std::string text;
            for (const Security& security : list.all()) text += textOf(security);
            return text;
        });
}

TEST_CASE("asking an investment statement survives exhausted memory at every allocation") {
    Tally tally("getters of investments");
    const auto document = example();
    const auto statements = investmentStatements(document);
    surviveMaking(
        tally, [&] { return textOf(statements.front()); }, [](const std::string& text) { return text; });
    surviveMaking(
        tally, [&] { return statements.front().transactions()[0].fields(); },
        [](const std::vector<InvestmentField>& fields) { return std::to_string(fields.size()); });
}
