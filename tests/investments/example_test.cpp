// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "investments/field_tables.h"
#include "investments/records.h"
#include "support/documents.h"
#include "support/investment_text.h"

/// \file
/// The document examples/investments.ofx has every kind of transaction, position and security and every
/// field once. What its getters must answer stands in example.txt.

using namespace brackwell;
using namespace brackwell::tests;
using investments::RecordType;

namespace {

std::optional<ParseDictionary> treeOf(const std::string& document) {
    TvOFXParser parser(Data::copy(document));
    const auto result = parser.parseWithError();
    REQUIRE(result);
    return result->ofxData;
}

std::string example() { return std::string(exampleData("investments.ofx").bytes()); }

/// The same document as OFX 1, whose leaves have no close tags.
std::string exampleOfVersion1() {
    std::istringstream lines(example());
    std::string document = "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\n\n";
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("<?")) continue;
        const std::size_t close = line.rfind("</");
        document.append(line.substr(0, close == 0 ? line.npos : close)).append("\n");
    }
    return document;
}

void compareLines(const std::string& found, const std::string& path) {
    std::istringstream foundLines(found);
    std::ifstream expectedLines(path);
    REQUIRE(expectedLines);
    std::string line;
    std::string expected;
    for (int number = 1; std::getline(expectedLines, expected); ++number) {
        CAPTURE(number);
        REQUIRE(std::getline(foundLines, line));
        REQUIRE(line == expected);
    }
    CHECK_FALSE(std::getline(foundLines, line));
}

/// The names of all fields that objects of a class have, and a check that each has a getter.
class FieldNames {
public:
    template <class Object>
    void add(RecordType type, const Object& object) {
        const std::string text = textOf(object);
        for (const InvestmentField& field : object.fields()) {
            CAPTURE(field.name);
            CHECK(text.find("\n  " + std::string(field.name) + " = ") != text.npos);
            CHECK(object.text(field.name) == field.text);
            CHECK(field.amount.has_value() == (field.kind == InvestmentField::Kind::amount));
            CHECK(field.date.has_value() == (field.kind == InvestmentField::Kind::date));
            names_[type].insert(field.name);
        }
    }
    template <class Object>
    void addAll(RecordType type, const std::vector<Object>& objects) {
        for (const Object& object : objects) add(type, object);
    }
    const std::set<std::string_view>& of(RecordType type) { return names_[type]; }

private:
    std::map<RecordType, std::set<std::string_view>> names_;
};

FieldNames fieldNamesOf(const std::optional<ParseDictionary>& tree) {
    FieldNames names;
    for (const auto& statement : investmentStatements(tree)) {
        names.add(RecordType::statement, statement);
        for (const auto& transaction : statement.transactions())
            names.add(RecordType::transaction, transaction);
        for (const auto& position : statement.positions()) names.add(RecordType::position, position);
        if (!statement.balance()) continue;
        names.add(RecordType::balance, *statement.balance());
        names.addAll(RecordType::listedBalance, statement.balance()->listed());
        names.add(RecordType::amounts, *statement.balance401k());
        names.add(RecordType::plan, *statement.plan401k());
        names.addAll(RecordType::loan, statement.plan401k()->loans());
        names.addAll(RecordType::period, statement.plan401k()->periods());
    }
    for (const auto& security : securities(tree)) {
        names.add(RecordType::security, security);
        names.addAll(RecordType::portion, security.assetPortions());
    }
    return names;
}

}  // namespace

TEST_CASE("every field of every kind is read from OFX 2") {
    compareLines(investmentTextOf(treeOf(example())), BRACKWELL_INVESTMENTS_EXPECTED);
}

TEST_CASE("every field of every kind is read from OFX 1") {
    compareLines(investmentTextOf(treeOf(exampleOfVersion1())), BRACKWELL_INVESTMENTS_EXPECTED);
}

TEST_CASE("the example has each kind of transaction, position and security") {
    const auto tree = treeOf(example());
    std::set<InvestmentTransactionKind> transactions;
    std::set<PositionKind> positions;
    std::set<SecurityKind> kinds;
    for (const auto& statement : investmentStatements(tree)) {
        for (const auto& transaction : statement.transactions()) transactions.insert(transaction.kind());
        for (const auto& position : statement.positions()) positions.insert(position.kind());
    }
    for (const auto& security : securities(tree)) kinds.insert(security.kind());
    CHECK(transactions.size() == 21);
    CHECK(positions.size() == 5);
    CHECK(kinds.size() == 5);
}

TEST_CASE("every row of the field tables has a getter of its name and stands in the example") {
    FieldNames names = fieldNamesOf(treeOf(example()));
    for (std::size_t i = 0; i < investments::kRecordTypes; ++i) {
        CAPTURE(i);
        const auto type = static_cast<RecordType>(i);
        std::set<std::string_view> rows;
        for (const investments::FieldRow& row : investments::fieldsOf(type).fields())
            if (row.rule <= investments::FieldRule::date) rows.insert(row.name);
        CHECK(names.of(type) == rows);
    }
}

TEST_CASE("the source text of each transaction and position stands in the document once") {
    for (const std::string& document : {example(), exampleOfVersion1()})
        for (const auto& statement : investmentStatements(treeOf(document))) {
            const auto check = [&](const auto& object) {
                const OptionalText text = object.originalText();
                REQUIRE(text);
                CAPTURE(std::string(*text));
                const std::string name(object.elementName());
                CHECK(text->starts_with("<" + name + ">"));
                CHECK(text->ends_with("</" + name + ">"));
                CHECK(document.find(*text) != document.npos);
                CHECK(text->find("<" + name + ">", 1) == text->npos);
            };
            for (const auto& transaction : statement.transactions()) check(transaction);
            for (const auto& position : statement.positions()) check(position);
        }
}

TEST_CASE("nothing in the example contradicts its own arithmetic") {
    const auto tree = treeOf(example());
    const SecurityList list(securities(tree));
    for (const auto& statement : investmentStatements(tree)) {
        for (const auto& transaction : statement.transactions()) {
            CAPTURE(std::string(transaction.elementName()));
            CHECK_FALSE(contradictingTotal(transaction));
        }
        for (const auto& position : statement.positions()) {
            CAPTURE(std::string(position.elementName()));
            const auto security = list.find(position);
            REQUIRE(security);
            CHECK_FALSE(contradictingMarketValue(position, &*security));
        }
    }
}
